#pragma once

#include <QHash>
#include <QStringList>

/// What is known of one physical programmer.
struct TProgRecord
{
    bool enabled = false;
    QString port; ///< serial port, as the user typed it
    QString type; ///< a type name of TProgType
};

/// The programmers that the user has: alias to port and type. In TAppData.
class TProgName
{
public:
    virtual ~TProgName() = default;

    int count() const;
    /// Empty for a row that does not exist.
    QString name(int row) const;
    /// Empty for an alias or row that does not exist.
    TProgRecord record(const QString& name) const;
    TProgRecord record(int row) const;
    bool contains(const QString& name) const;
    /// A repeated alias replaces the record of the first.
    void append(const QString& name, bool enabled, const QString& port, const QString& type);
    void clear();

private:
    QStringList m_names;
    QHash<QString, TProgRecord> m_records;
};
