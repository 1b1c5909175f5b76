#pragma once

#include <QFrame>

/// A line that separates two parts of a form.
class TWgtLine : public QFrame
{
    Q_OBJECT

public:
    explicit TWgtLine(QWidget* parent = nullptr);
};
