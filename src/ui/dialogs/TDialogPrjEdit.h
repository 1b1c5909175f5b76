#pragma once

#include "ui/dialogs/TDialogNameFile.h"

/// Edits the name and the file of a project. A file that is picked comes back relative to the folder of
/// the list; an empty file makes a group. With mustExist only a file that is there can be picked.
class TDialogPrjEdit : public TDialogNameFile
{
    Q_OBJECT

public:
    TDialogPrjEdit(const QString& title, const QString& name, const QString& file, const QString& folder,
                   QWidget* parent = nullptr, bool mustExist = false);
};
