#pragma once

#include "base/TLang.h"
#include "support/TestDir.h"

/// A language table in which every entry is its number behind the prefix, "@424"; those in withPlace
/// have a place for a text, "@417 %1", and as many as they are named there.
inline void loadNumberedTexts(const QByteArray& prefix, const QList<int>& withPlace)
{
    const TestDir dir(TestDir::Empty);
    QByteArray lines;
    for (int id = 0; id < 600; ++id) {
        lines += prefix + QByteArray::number(id);
        for (int place = 1; place <= withPlace.count(id); ++place)
            lines += " %" + QByteArray::number(place);
        lines += '\n';
    }
    lang().load(dir.write(QStringLiteral("numbers.lng"), lines));
}
