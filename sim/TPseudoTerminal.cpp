#include "TPseudoTerminal.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace {

const std::string terminals = "/dev/pts/";

std::string reason()
{
    return std::strerror(errno);
}

/// A running simulator keeps a record lock on its terminal, at a place that its link gives. The lock goes
/// with the process, so that a link left by a crash is told from one in use even when the terminal's number
/// has been given to somebody else, another simulator among them.
struct flock lockFor(const std::string& link)
{
    namespace fs = std::filesystem;
    constexpr std::size_t places = std::size_t(1) << 30;
    std::error_code ignored;
    const fs::path path = fs::absolute(link, ignored);
    const fs::path whole = fs::weakly_canonical(path.parent_path(), ignored) / path.filename();
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = off_t(std::hash<std::string>()(whole.string()) % places);
    lock.l_len = 1;
    return lock;
}

bool isInUse(const std::string& link)
{
    const int fd = open(link.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return errno == EBUSY;
    struct flock lock = lockFor(link);
    const bool locked = fcntl(fd, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    close(fd);
    return locked;
}

std::string targetOf(const std::string& link)
{
    std::array<char, PATH_MAX> buffer{};
    const ssize_t size = readlink(link.c_str(), buffer.data(), buffer.size());
    return size < 0 ? std::string() : std::string(buffer.data(), std::size_t(size));
}

/// What may be replaced is a link that leads nowhere, or to a terminal that no simulator keeps any more.
bool mayReplace(const std::string& path, std::string& error)
{
    struct stat info = {};
    if (lstat(path.c_str(), &info) != 0)
        return true;
    const bool toTerminal =
        S_ISLNK(info.st_mode) && targetOf(path).compare(0, terminals.size(), terminals) == 0;
    const bool toNothing = S_ISLNK(info.st_mode) && stat(path.c_str(), &info) != 0;
    if (!toTerminal && !toNothing)
        error = path + " is there and is no link of a simulator; it stays as it is";
    else if (isInUse(path))
        error = path + " is in use by another simulator or program";
    return error.empty();
}

bool makeRaw(int fd)
{
    termios mode{};
    if (tcgetattr(fd, &mode) != 0)
        return false;
    cfmakeraw(&mode);
    return tcsetattr(fd, TCSANOW, &mode) == 0;
}

bool hasUnread(int fd)
{
    int count = 0;
    return ioctl(fd, FIONREAD, &count) == 0 && count > 0;
}

constexpr int mostFlushes = 100;
constexpr useconds_t refillTime = 1000; ///< microseconds until the kernel hands on what it holds

} // namespace

TPseudoTerminal::~TPseudoTerminal()
{
    close();
}

bool TPseudoTerminal::open(std::string& error)
{
    master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
    std::array<char, PATH_MAX> name{};
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0 ||
        ptsname_r(master, name.data(), name.size()) != 0) {
        error = "cannot make a pseudo-terminal: " + reason();
        return false;
    }
    terminal = name.data();
    slave = ::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (slave < 0 || !makeRaw(slave)) {
        error = "cannot set up the terminal " + terminal + ": " + reason();
        return false;
    }
    return true;
}

bool TPseudoTerminal::makeLink(const std::string& path, std::string& error)
{
    if (!mayReplace(path, error))
        return false;
    const std::string fresh = path + "." + std::to_string(getpid()) + ".part";
    struct flock lock = lockFor(path);
    if (fcntl(slave, F_SETLK, &lock) != 0 || symlink(terminal.c_str(), fresh.c_str()) != 0 ||
        rename(fresh.c_str(), path.c_str()) != 0) {
        error = "cannot make the link " + path + ": " + reason();
        unlink(fresh.c_str());
        return false;
    }
    link = path;
    return true;
}

void TPseudoTerminal::dropUnread() const
{
    for (int i = 0; i < mostFlushes; i++) {
        tcflush(slave, TCIFLUSH);
        usleep(refillTime);
        if (!hasUnread(slave))
            return;
    }
}

void TPseudoTerminal::close()
{
    if (!link.empty() && targetOf(link) == terminal)
        unlink(link.c_str());
    link.clear();
    for (int* const end : {&slave, &master}) {
        if (*end >= 0)
            ::close(*end);
        *end = -1;
    }
}
