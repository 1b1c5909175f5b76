#pragma once

#include <QDialog>

/// Name, version and date of the program.
class TDialogAbout : public QDialog
{
    Q_OBJECT

public:
    explicit TDialogAbout(QWidget* parent = nullptr);
};
