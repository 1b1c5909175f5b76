#pragma once

#include "ui/dialogs/TDialogNameFile.h"

/// Edits one programmer model: its name, and its description file, relative to the folder of programmers
/// where that is possible.
class TDialogSetupPageProgTypeEdit : public TDialogNameFile
{
    Q_OBJECT

public:
    /// taken are the names of the other types: none of them is accepted, nor anything empty.
    TDialogSetupPageProgTypeEdit(const QString& title, const QString& type, const QString& file,
                                 const QStringList& taken, QWidget* parent = nullptr);
};
