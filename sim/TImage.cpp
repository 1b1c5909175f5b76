#include "TImage.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

/// A file descriptor that is closed when it goes out of use.
class TFile
{
public:
    explicit TFile(int descriptor)
        : handle(descriptor)
    {
    }
    ~TFile()
    {
        if (handle >= 0)
            close(handle);
    }
    TFile(const TFile&) = delete;
    TFile& operator=(const TFile&) = delete;

    [[nodiscard]] int fd() const { return handle; }

private:
    int handle;
};

bool readAll(int fd, Bytes& bytes)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got = read(fd, bytes.data() + done, bytes.size() - done);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        done += std::size_t(got);
    }
    return true;
}

bool writeAll(int fd, const Bytes& bytes)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t put = write(fd, bytes.data() + done, bytes.size() - done);
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0)
            return false;
        done += std::size_t(put);
    }
    return fsync(fd) == 0;
}

/// The file behind symbolic links, so that renaming over it keeps the link.
std::string realTarget(const std::string& path)
{
    char* const resolved = realpath(path.c_str(), nullptr);
    std::string target = resolved == nullptr ? path : resolved;
    std::free(resolved);
    return target;
}

} // namespace

TImage::TImage(std::string path)
    : file(std::move(path))
{
}

bool TImage::load(Bytes& memory, std::string& error) const
{
    const TFile stream(open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (stream.fd() < 0 && errno == ENOENT)
        return true;
    struct stat info = {};
    if (stream.fd() < 0 || fstat(stream.fd(), &info) != 0) {
        error = "cannot read the image " + file + ": " + std::strerror(errno);
        return false;
    }
    if (!S_ISREG(info.st_mode) || std::size_t(info.st_size) > memory.size()) {
        error = "the image " + file + " is no file of at most " + std::to_string(memory.size()) + " bytes";
        return false;
    }
    Bytes contents(std::size_t(info.st_size));
    if (!readAll(stream.fd(), contents)) {
        error = "cannot read the image " + file;
        return false;
    }
    std::copy(contents.begin(), contents.end(), memory.begin());
    return true;
}

bool TImage::save(const Bytes& memory, std::string& error) const
{
    const std::string target = realTarget(file);
    const std::string part = target + "." + std::to_string(getpid()) + ".part";
    bool good = false;
    {
        const TFile stream(open(part.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
        good = stream.fd() >= 0 && writeAll(stream.fd(), memory);
    }
    if (good && rename(part.c_str(), target.c_str()) == 0)
        return true;
    error = "cannot write the image " + file + ": " + std::strerror(errno);
    unlink(part.c_str());
    return false;
}
