#pragma once

#include "core/TLang.h"
#include "core/globals.h"
#include "support/TestDir.h"

/// A language table in which every entry is its number behind the prefix, "@424"; those in withPlace
/// have a place for a text, "@417 %1".
inline void loadNumberedTexts(const QByteArray& prefix, const QList<int>& withPlace)
{
    const TestDir dir(TestDir::Empty);
    QByteArray lines;
    for (int id = 0; id < 600; ++id)
        lines += prefix + QByteArray::number(id) + (withPlace.contains(id) ? " %1\n" : "\n");
    lang().load(dir.write(QStringLiteral("numbers.lng"), lines));
}
