#pragma once

#include <QStringList>

/// The language table: the only source of user texts. Read-only while a run is active.
class TLang
{
public:
    virtual ~TLang() = default;

    /// Empties the table and reads a language file: UTF-8, one entry a line, lines that begin with "#"
    /// take no number, "\n" inside a line is a line break. A file that cannot be opened leaves the
    /// table empty.
    void load(const QString& file);
    /// Entry id, or "?????" for an id past the table or below 0.
    QString text(int id) const;
    int size() const { return count; }

private:
    QStringList list;
    int count = 0;
};

/// The language table. Read-only while a run is active.
TLang& lang();

/// Text id of the language table, "?????" past its end. Any thread.
QString langText(int id);
