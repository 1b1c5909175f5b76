#include "base/helpers.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <unistd.h>
#endif

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

// Not by comparing QFileInfo: any two files that are not there are equal to it.
bool isSameFile(const QString& a, const QString& b)
{
    const QFileInfo first(a);
    const QFileInfo second(b);
    return first.exists() ? first.canonicalFilePath() == second.canonicalFilePath()
                          : !second.exists() && QDir::cleanPath(first.absoluteFilePath()) ==
                                                    QDir::cleanPath(second.absoluteFilePath());
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

namespace {

bool failWith(const QFileDevice& device, QString& error)
{
    error = device.errorString();
    return false;
}

/// For a folder that takes no second file. The old content comes back when the new one does not fit.
bool writeInPlace(const QString& file, const QByteArray& bytes, QString& error)
{
    QFile device(file);
    if (!device.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return failWith(device, error);
    const bool isRegular = QFileInfo(file).isFile();
    const QByteArray old = isRegular ? device.readAll() : QByteArray();
    const auto put = [&](const QByteArray& content) {
        return (!isRegular || device.seek(0)) && device.write(content) == content.size() &&
               (!isRegular || device.resize(content.size()));
    };
    if (put(bytes))
        return true;
    failWith(device, error);
    if (isRegular)
        put(old);
    return false;
}

} // namespace

bool writeFileSafely(const QString& file, const QByteArray& bytes, QString& error)
{
    // Which folder would have to take the second file is known only behind the links.
    const QString real = QFileInfo(file).canonicalFilePath();
    const QString target = real.isEmpty() ? file : real;
    const QFileInfo info(target);
    const bool takesSecondFile = QFileInfo(info.absolutePath()).isWritable();
    if (info.exists() && (!info.isFile() || !takesSecondFile))
        return writeInPlace(target, bytes, error);
    QSaveFile device(target);
    if (!device.open(QIODevice::WriteOnly) || device.write(bytes) != bytes.size())
        return failWith(device, error);
    return putInPlace(device, error);
}

bool putInPlace(QSaveFile& device, QString& error)
{
    if (!device.flush())
        return failWith(device, error);
#ifdef Q_OS_UNIX
    // What is on its way to the disk when the rename is reached would be lost with the power.
    if (::fsync(device.handle()) != 0) {
        error = qt_error_string(errno);
        return false;
    }
#endif
    return device.commit() || failWith(device, error);
}
