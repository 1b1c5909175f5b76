#include "base/TLang.h"

#include "base/qt_versions.h"

#include <QFile>
#include <QTextStream>

void TLang::load(const QString& file)
{
    list.clear();
    count = 0;
    QFile device(file);
    if (!device.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    QTextStream stream(&device);
    setUtf8(stream);
    QString line;
    while (stream.readLineInto(&line)) {
        if (line.startsWith(QLatin1Char('#')))
            continue;
        list.append(line.replace(QLatin1String("\\n"), QLatin1String("\n")));
    }
    count = list.size();
}

QString TLang::text(Text id) const
{
    const int number = static_cast<int>(id);
    // Unsigned, so that -1 is past the end too.
    if (static_cast<uint>(number) < static_cast<uint>(count))
        return list.at(number);
    return QStringLiteral("?????");
}

QString wordsOrText(const QString& line)
{
    bool isNumber = false;
    const int number = line.toInt(&isNumber);
    return isNumber ? langText(static_cast<Text>(number)) : line;
}
