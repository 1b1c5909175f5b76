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

QString TLang::text(int id) const
{
    // Unsigned, so that -1 is past the end too.
    if (static_cast<uint>(id) < static_cast<uint>(count))
        return list.at(id);
    return QStringLiteral("?????");
}
