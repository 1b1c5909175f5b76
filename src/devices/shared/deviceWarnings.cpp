#include "devices/shared/deviceWarnings.h"

#include "base/TLang.h"
#include "base/keys.h"

QStringList deviceWarnings(const TData& description)
{
    QStringList lines = description.value(key::warning).toStringList();
    for (QString& line : lines) {
        bool isNumber = false;
        const int number = line.toInt(&isNumber);
        if (isNumber)
            line = langText(number);
    }
    return lines;
}
