#pragma once

#include "base/types.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

/// A description file as the program reads it, together with its lines, and the faults found in it.
/// The lines are taken apart here a second time so that a fault can name its line.
class TLintFile
{
public:
    struct Line
    {
        int number; ///< counted from 1
        QString key;
        QString type;
        QString value; ///< not trimmed
    };

    explicit TLintFile(const QString& path);

    const QList<Line>& lines() const { return m_lines; }
    QList<Line> lines(const QString& key) const { return m_byKey.value(key); }
    bool has(const QString& key) const { return m_data.contains(key); }
    /// The value as a number; a missing one is 0.
    qint64 number(const QString& key) const { return m_data.value(key).toLongLong(); }
    QString text(const QString& key) const { return m_data.value(key).toString(); }
    QStringList list(const QString& key) const { return m_data.value(key).toStringList(); }

    void fault(int line, const QString& text);
    /// A fault at the first line of the key, at line 1 when the file has none.
    void fault(const QString& key, const QString& text);
    /// The fault, unless good.
    void expect(bool good, const QString& key, const QString& text);
    /// "file:line: text", in the order of the lines.
    QStringList faults() const;

private:
    void takeLine(int number, const QString& line);
    void checkOnce();

    QString m_path;
    TData m_data;
    QList<Line> m_lines;
    QHash<QString, QList<Line>> m_byKey;
    QList<QPair<int, QString>> m_faults;
};
