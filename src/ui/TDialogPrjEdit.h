#pragma once

#include "ui/TDialogBase.h"

class QLineEdit;

/// Edits the name and the file of a project. A file that is picked comes back relative to the folder of
/// the list; an empty file makes a group.
class TDialogPrjEdit : public TDialogBase
{
    Q_OBJECT

public:
    TDialogPrjEdit(const QString& title, const QString& name, const QString& file, const QString& folder,
                   QWidget* parent = nullptr);

    QString name() const;
    QString file() const;

private:
    void browse();

    QLineEdit* m_name = nullptr;
    QLineEdit* m_file = nullptr;
    const QString m_folder;
};
