#pragma once

#include "core/types.h"

#include <QList>
#include <QString>
#include <QStringList>

/// A description file as the program reads it, together with its lines, and the faults found in it.
/// The lines are taken apart here a second time so that a fault can name its line.
class DescriptionFile
{
public:
    struct Line
    {
        int number; ///< counted from 1
        QString key;
        QString type;
        QString value; ///< not trimmed
    };

    explicit DescriptionFile(const QString& path);

    const QList<Line>& lines() const { return m_lines; }
    QList<Line> lines(const QString& key) const;
    bool has(const QString& key) const { return m_data.contains(key); }
    qint64 number(const QString& key) const { return m_data.value(key).toLongLong(); }
    QString text(const QString& key) const { return m_data.value(key).toString(); }
    QStringList list(const QString& key) const { return m_data.value(key).toStringList(); }

    void fault(int line, const QString& text);
    /// A fault at the first line of the key.
    void fault(const QString& key, const QString& text);
    /// The fault, unless good.
    void expect(bool good, const QString& key, const QString& text);
    QString faults() const { return m_faults.join('\n'); }

private:
    QString m_path;
    TData m_data;
    QList<Line> m_lines;
    QStringList m_faults;
};
