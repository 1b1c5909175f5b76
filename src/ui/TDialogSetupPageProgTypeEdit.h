#pragma once

#include "ui/TDialogBase.h"

class QLineEdit;

/// Edits one programmer model: its name, and its description file, relative to the folder of programmers
/// where that is possible.
class TDialogSetupPageProgTypeEdit : public TDialogBase
{
    Q_OBJECT

public:
    /// taken are the names of the other types: none of them is accepted, nor anything empty.
    TDialogSetupPageProgTypeEdit(const QString& title, const QString& type, const QString& file,
                                 const QStringList& taken, QWidget* parent = nullptr);

    QString type() const;
    QString file() const;

private:
    void browse();

    QLineEdit* m_type;
    QLineEdit* m_file = nullptr;
};
