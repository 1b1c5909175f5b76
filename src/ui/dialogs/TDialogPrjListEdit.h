#pragma once

#include "ui/dialogs/TDialogNameFile.h"

/// Edits the name and the file of one project list in the list of them. A file that is picked comes back
/// relative to the folder of projects. Neither of the two is empty when the dialog was accepted.
class TDialogPrjListEdit : public TDialogNameFile
{
    Q_OBJECT

public:
    TDialogPrjListEdit(const QString& title, const QString& name, const QString& file,
                       QWidget* parent = nullptr);

private:
    QString pathOf(const QString& file) const override;
};
