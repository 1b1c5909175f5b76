#include "ui/language_files.h"

#include "base/qt_versions.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

namespace {

/// Empty when the file cannot be opened.
QString entryOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QTextStream stream(&file);
    setUtf8(stream);
    QStringList titles;
    QString line;
    while (titles.size() < 2 && stream.readLineInto(&line)) {
        if (!line.startsWith(QLatin1Char('#')))
            titles.append(line);
    }
    return QStringLiteral("%1 (%2)").arg(titles.value(0), titles.value(1));
}

} // namespace

QMap<QString, QString> languageFiles(const QString& folder)
{
    QMap<QString, QString> files;
    const QDir dir(folder);
    for (const QString& file : dir.entryList({QStringLiteral("*.lng")}, QDir::Files)) {
        const QString entry = entryOf(dir.filePath(file));
        if (!entry.isEmpty())
            files.insert(entry, file);
    }
    return files;
}
