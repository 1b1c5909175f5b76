#include "link/lists/line_rules.h"

#include "base/helpers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

// Far above any real list; bounds what a wrong file name in a project can make the program read.
constexpr qint64 largestFile = 16LL * 1024 * 1024;

} // namespace

bool splitPair(const QString& line, QString& key, QString& value)
{
    const QString text = line.trimmed();
    const int border = text.indexOf(QLatin1Char('='));
    if (border < 0 || text.startsWith(QLatin1Char('#')))
        return false;
    key = text.left(border);
    value = text.mid(border + 1);
    return true;
}

QStringList readLines(const QString& file)
{
    QFile device(file);
    // A pipe or a terminal under that name would never end.
    if (!QFileInfo(file).isFile() || !device.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    const QByteArray bytes = device.read(largestFile + 1);
    if (bytes.size() > largestFile) {
        logError(QStringLiteral("Error"), QStringLiteral("%1: too large for a list").arg(file));
        return {};
    }
    // With its length: a NUL byte would end the text.
    return QString::fromUtf8(bytes.constData(), bytes.size()).split(QLatin1Char('\n'));
}

void readPairs(const QString& file, const std::function<bool(const QString& key, const QString& value)>& fn)
{
    QString key;
    QString value;
    for (const QString& line : readLines(file)) {
        if (splitPair(line, key, value) && !fn(key, value))
            return;
    }
}

QString deviceFolderFile(const QString& devices, const QString& name)
{
    const QString folder = QDir(devices).absolutePath();
    QString path = absFile(folder, name);
    if (!name.contains(QLatin1Char('\\')) || QFile::exists(path))
        return path;
    const QString portable = absFile(folder, QString(name).replace(QLatin1Char('\\'), QLatin1Char('/')));
    return QFile::exists(portable) ? portable : path;
}
