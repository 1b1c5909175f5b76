#include "core/platform.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#ifdef Q_OS_UNIX
#include <climits>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace platform {

QString executablePath(const char* argv0)
{
#ifdef Q_OS_LINUX
    // The process's own link: argv[0] is only what the caller typed.
    char buffer[PATH_MAX];
    const ssize_t n = readlink("/proc/self/exe", buffer, sizeof buffer);
    if (n > 0)
        return QFile::decodeName(QByteArray(buffer, static_cast<int>(n)));
#endif
    return QFileInfo(QString::fromLocal8Bit(argv0)).absoluteFilePath();
}

void setPluginPath(const char* argv0)
{
#ifdef Q_OS_WIN
    QString path = QString::fromLocal8Bit(argv0);
    path.truncate(path.lastIndexOf(QLatin1Char('\\')));
    QCoreApplication::setLibraryPaths({path + QLatin1String("\\platforms")});
#else
    // The system's plug-ins stay in the list; the application adds "platforms" to each folder itself.
    const QString folder = QFileInfo(executablePath(argv0)).path();
    if (QDir(folder + QLatin1String("/platforms")).exists())
        QCoreApplication::addLibraryPath(folder);
#endif
}

bool showFolder(const QString& folder)
{
    if (!QDir(folder).exists())
        return false;
#ifdef Q_OS_WIN
    return QProcess::startDetached(QStringLiteral("explorer.exe"), {QDir::toNativeSeparators(folder)});
#else
    return QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
#endif
}

bool isPipe(const QString& path)
{
#ifdef Q_OS_UNIX
    struct stat info = {};
    return stat(QFile::encodeName(path).constData(), &info) == 0 &&
           (S_ISFIFO(info.st_mode) || S_ISSOCK(info.st_mode));
#else
    Q_UNUSED(path)
    return false;
#endif
}

} // namespace platform
