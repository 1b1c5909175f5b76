#pragma once

#include "base/TLang.h"
#include "support/TestDir.h"

/// What texts.def says of a text.
struct NamedText
{
    const char* name;
    Text text;
    int places; ///< %1, %2, ... that the program fills in
};

inline constexpr NamedText namedTexts[] = {
#define VM_TEXT(name, number, places) {#name, Text::name, places},
#include "base/texts.def"
};

/// The text of that name; none for any other.
inline Text textNamed(const QString& name)
{
    for (const NamedText& row : namedTexts) {
        if (name == QLatin1String(row.name))
            return row.text;
    }
    return Text::None;
}

/// A language table in which every text is its name and its places, "@FileNotFound %1".
inline void loadNamedTexts()
{
    QVector<QByteArray> lines(1 + int(std::end(namedTexts)[-1].text));
    for (const NamedText& row : namedTexts) {
        lines[int(row.text)] = '@' + QByteArray(row.name);
        for (int place = 1; place <= row.places; ++place)
            lines[int(row.text)] += " %" + QByteArray::number(place);
    }
    lang().load(TestDir(TestDir::Empty).write(QStringLiteral("names.lng"), lines.toList().join('\n')));
}
