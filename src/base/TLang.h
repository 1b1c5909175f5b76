#pragma once

#include "base/texts.h"

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
    /// The entry of a text, or "?????" for a number past the table or below 0.
    QString text(Text id) const;
    int size() const { return count; }

private:
    QStringList list;
    int count = 0;
};

/// The language table. Read-only while a run is active.
TLang& lang();

/// The entry of a text, "?????" past the end of the table. Any thread.
QString langText(Text id);
/// A line of a file that may stand for a text by its number in the language files: that text, also where the
/// program has no name for it, "?????" past the end of the table. Any other line is the text itself. Any
/// thread.
QString wordsOrText(const QString& line);
