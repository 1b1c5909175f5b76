#include "base/platform.h"

#include "base/TLang.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
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

bool isWrittenInPlace(const QString& path)
{
    QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return true;
#ifdef Q_OS_UNIX
    // Such a link leads to the file by name, but whoever opened it would go on writing into the old one.
    constexpr int mostLinks = 40;
    for (int i = 0; i < mostLinks && info.isSymLink(); ++i) {
        const QString link = info.absoluteFilePath();
        if (link.startsWith(QLatin1String("/dev/")) || link.startsWith(QLatin1String("/proc/")))
            return true;
        info.setFile(info.symLinkTarget());
    }
#endif
    return false;
}

int openPipe(const QString& path, QString& reason)
{
#ifdef Q_OS_UNIX
    signal(SIGPIPE, SIG_IGN);
    const int descriptor = open(QFile::encodeName(path).constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor >= 0 && fcntl(descriptor, F_SETFL, 0) == 0)
        return descriptor;
    reason = errno == ENXIO ? langText(Text::PipeNobodyReads) : qt_error_string(errno);
    if (descriptor >= 0)
        close(descriptor);
#else
    Q_UNUSED(path)
    reason = langText(Text::PipeNotPlain);
#endif
    return -1;
}

bool awaitPipe(int descriptor, int ms)
{
#ifdef Q_OS_UNIX
    pollfd pipe{descriptor, POLLOUT, 0};
    const int ready = poll(&pipe, 1, ms);
    return ready > 0 || (ready < 0 && errno != EINTR);
#else
    Q_UNUSED(descriptor)
    Q_UNUSED(ms)
    return true;
#endif
}

void startToDisk(int descriptor)
{
#ifdef Q_OS_LINUX
    sync_file_range(descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
#else
    Q_UNUSED(descriptor)
#endif
}

} // namespace platform
