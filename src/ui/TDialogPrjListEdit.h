#pragma once

#include "ui/TDialogBase.h"

class QLineEdit;

/// Edits the name and the file of one project list in the list of them. A file that is picked comes back
/// relative to the folder of projects.
class TDialogPrjListEdit : public TDialogBase
{
    Q_OBJECT

public:
    TDialogPrjListEdit(const QString& title, const QString& name, const QString& file,
                       QWidget* parent = nullptr);

    /// Neither of them is empty when the dialog was accepted.
    QString name() const;
    QString file() const;

private:
    void browse();

    QLineEdit* m_name = nullptr;
    QLineEdit* m_file = nullptr;
};
