// Any bytes as an Intel HEX file: read to the end of a range, every piece within what a file can address.

#include "formats/data/TFormat.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

namespace {

constexpr qint64 lastAddress = 0xFFFFFF;
constexpr qint64 piece = 256;

/// A file on the disk with these bytes; one for the whole process, overwritten each time.
QString fileWith(const uint8_t* data, size_t size)
{
    static const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("input.hex"));
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        std::abort();
    file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    return name;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    TFormat format(QStringLiteral("hex"), fileWith(data, size), 0, 0, lastAddress, piece);
    if (!format.open(0))
        return 0;
    QByteArray bytes;
    qint64 next = 0;
    for (qint64 addr = 0; format.read(addr, bytes) && !bytes.isEmpty(); addr = next) {
        next = addr + bytes.size();
        // Record addresses have 32 bits, so no byte may stand above them.
        if (addr < 0 || next > 0x100000000LL || bytes.size() > 65536)
            std::abort();
    }
    if (format.leftOut() < 0)
        std::abort();
    if (!format.close())
        std::abort();
    return 0;
}
