#pragma once

#include "link/TProgName.h"
#include "ui/TDialogBase.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

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
    void fillPorts(const QString& port);
    void fillTypes(const QStringList& types, const QString& type);

    QCheckBox* m_enabled;
    QLineEdit* m_alias;
    QComboBox* m_port;
    QComboBox* m_type;
};
