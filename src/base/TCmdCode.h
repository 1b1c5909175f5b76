#pragma once

#include <QHash>
#include <QStringList>

/// The catalogue of command words with their display names. Display names are constants of the
/// program and not in the language table.
class TCmdCode
{
public:
    TCmdCode();
    virtual ~TCmdCode() = default;

    /// Display name; empty for a word that is no command.
    QString name(const QString& key) const;
    int count() const { return m_names.size(); }

    /// The words of the flow and tool commands, in their order, "separator" among them.
    static QStringList toolsKeys();
    /// The words of the programmer's own commands, in their order.
    static QStringList progKeys();
    static bool isTools(const QString& key);
    static bool isProg(const QString& key);

private:
    QHash<QString, QString> m_names;
};

/// The catalogue of command words. Never changes.
TCmdCode& cmdCode();
