#pragma once

#include "link/lists/TProgName.h"
#include "ui/TDialogBase.h"

class QCheckBox;
class QLineEdit;
class TComboBox;
class TPortBox;

/// Edits one programmer: enabled, alias, port, type.
class TDialogSetupPageProgAliasEdit : public TDialogBase
{
    Q_OBJECT

public:
    /// taken are the aliases of the other programmers: none of them is accepted, nor an empty one. A type
    /// that is not among types can stay, but not be chosen anew.
    TDialogSetupPageProgAliasEdit(const QString& title, const QString& alias, const TProgRecord& record,
                                  const QStringList& types, const QStringList& taken,
                                  QWidget* parent = nullptr);

    QString alias() const;
    TProgRecord record() const;

private:
    void fillTypes(const QStringList& types, const QString& type);

    QCheckBox* m_enabled;
    QLineEdit* m_alias;
    TPortBox* m_port;
    TComboBox* m_type;
};
