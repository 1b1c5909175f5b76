#include "formats/crc/createCRC.h"

#include "formats/crc/TCHKSUM_8.h"
#include "formats/crc/TCRC_82_DARC.h"
#include "formats/crc/crcClasses.h"
#include "formats/data/TLineReader.h"

#include <QCoreApplication>
#include <QFile>

namespace {

constexpr int mostNames = 7;

struct TEntry
{
    const char* names[mostNames]; // null behind the last
    ICRC* (*make)();
};

template <class Class> ICRC* make()
{
    return new Class;
}

constexpr TEntry registry[] = {
#define CRC_ALGORITHM(Class, width, poly, init, refIn, refOut, xorOut, check, ...)                           \
    {{__VA_ARGS__}, make<Class>},
#include "formats/crc/crcAlgorithms.def"
#undef CRC_ALGORITHM
    {{"CRC-82/DARC"}, make<TCRC_82_DARC>},
    {{"CHKSUM-8/HEX", "CHKSUM-8/MODBUS"}, make<TCHKSUM_8>},
};

/// The name in a line NAME=1; empty for a comment, a line without "=" and any other value.
QString offeredName(const QByteArray& line)
{
    const int equals = line.indexOf('=');
    if (line.startsWith('#') || equals < 0 || line.mid(equals + 1).trimmed() != "1")
        return QString();
    return QString::fromUtf8(line.left(equals));
}

} // namespace

ICRC* createCRC(const QString& name)
{
    for (const TEntry& entry : registry) {
        for (const char* accepted : entry.names) {
            if (accepted && name == QLatin1String(accepted))
                return entry.make();
        }
    }
    return nullptr;
}

QStringList crcNames()
{
    QStringList names;
    QFile file(QCoreApplication::applicationDirPath() + QLatin1String("/crc.lst"));
    if (!file.open(QIODevice::ReadOnly))
        return names;
    TLineReader lines(file);
    const char* line = nullptr;
    int length = 0;
    while (lines.next(line, length) == TLineReader::Line) {
        const QString name = offeredName(QByteArray(line, length).trimmed());
        if (!name.isEmpty())
            names.append(name);
    }
    return names;
}
