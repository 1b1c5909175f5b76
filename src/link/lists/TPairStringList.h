#pragma once

#include <QList>
#include <QPair>
#include <QString>

/// Keys and values in order: the routes of an auto_detect command, or the chips of a signature list.
class TPairStringList
{
public:
    TPairStringList() = default;
    virtual ~TPairStringList() = default;

    /// Routes "key=value|key=value": empty parts, parts that begin with "#" and parts without "=" are
    /// left out.
    static TPairStringList fromText(const QString& text);
    /// One pair a line; a file that is missing gives an empty list.
    static TPairStringList fromFile(const QString& file);
    /// The text that fromText reads.
    QString toText() const;

    int count() const;
    /// Empty for a row that does not exist.
    QString key(int row) const;
    QString value(int row) const;
    /// Row of the first pair with that key, -1 if there is none.
    int find(const QString& key) const;
    bool contains(const QString& key) const;
    /// Value of the first pair with that key; empty if there is none.
    QString value(const QString& key) const;

    void append(const QString& key, const QString& value);
    /// Nothing for a row that does not exist.
    void setValue(int row, const QString& value);
    void clear();

private:
    QList<QPair<QString, QString>> m_pairs;
};
