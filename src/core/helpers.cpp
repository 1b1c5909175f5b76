#include "core/helpers.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace {

bool writeInPlace(const QString& file, const QByteArray& bytes, QString& error)
{
    QFile device(file);
    if (!device.open(QIODevice::WriteOnly) || device.write(bytes) != bytes.size() || !device.flush()) {
        error = device.errorString();
        return false;
    }
    return true;
}

} // namespace

QString fileInAppDir(const QString& suffix)
{
    const QFileInfo exe(QCoreApplication::applicationFilePath());
    return QStringLiteral("%1/%2.%3").arg(QCoreApplication::applicationDirPath(), exe.baseName(), suffix);
}

QIcon iconPath(int set, const QString& name)
{
    return QIcon(QStringLiteral(":/images/%1/%2.png").arg(QString::number(set), name));
}

QString absFile(const QString& base, const QString& path)
{
    return QFileInfo(path).isAbsolute() ? path : QFileInfo(QDir(base), path).absoluteFilePath();
}

QString absDir(const QString& path)
{
    return QFileInfo(path).absolutePath();
}

QString dirOf(const QString& base, const QString& path)
{
    return absDir(absFile(base, path.isEmpty() ? QStringLiteral("empty") : path));
}

QString relToDir(const QString& base, const QString& path)
{
    const QDir dir(base);
    const QString absolute = dir.absoluteFilePath(path);
    const QString relative = dir.relativeFilePath(path);
    // A file on another drive has no relative form: QDir then gives the absolute one.
    return relative.contains(absolute) ? absolute : relative;
}

QString relToApp(const QString& path)
{
    return relToDir(QCoreApplication::applicationDirPath(), path);
}

QString encodeText(const QString& s)
{
    QString text = s;
    text.replace(QLatin1Char('\n'), QLatin1String("|n"));
    return text.replace(QLatin1Char('"'), QLatin1String("|w"));
}

QString decodeText(const QString& s)
{
    QString text = s;
    text.replace(QLatin1String("|n"), QLatin1String("\n"));
    return text.replace(QLatin1String("|w"), QLatin1String("\""));
}

void logError(const QString& text1, const QString& text2)
{
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("dd.MM.yyyy hh:mm:ss"));
    QFile file(fileInAppDir(QStringLiteral("log")));
    // Unbuffered append of the whole line in one call, so that lines of several threads never mix.
    if (file.open(QIODevice::Append | QIODevice::Unbuffered))
        file.write(QStringLiteral("%1 %2 %3\n").arg(time, text1, text2).toUtf8());
}

QString desktopDir()
{
    return QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) + QLatin1Char('/');
}

bool writeFileSafely(const QString& file, const QByteArray& bytes, QString& error)
{
    const QFileInfo info(file);
    // A device or a pipe is written to; putting a plain file in its place would destroy it.
    if (info.exists() && !info.isFile())
        return writeInPlace(file, bytes, error);
    QSaveFile device(file);
    device.setDirectWriteFallback(true);
    if (!device.open(QIODevice::WriteOnly) || device.write(bytes) != bytes.size() || !device.commit()) {
        error = device.errorString();
        return false;
    }
    return true;
}
