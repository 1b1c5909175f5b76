#include "devices/shared/deviceWarnings.h"

#include "base/TLang.h"
#include "base/keys.h"

QStringList deviceWarnings(const TData& description)
{
    QStringList lines = description.value(key::warning).toStringList();
    for (QString& line : lines)
        line = wordsOrText(line);
    return lines;
}
