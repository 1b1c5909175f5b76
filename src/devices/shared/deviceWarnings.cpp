#include "devices/deviceWarnings.h"

#include "core/globals.h"
#include "core/keys.h"

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
