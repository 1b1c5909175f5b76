// Each form of checksum over 64 MiB against a bare loop of the same form, and the command Calc CRC over a
// file against the checksum alone. zlib's crc32 stands beside them for comparison.

#include "base/keys.h"
#include "devices/tools/CalcCrc.h"
#include "formats/crc/ICRC.h"
#include "formats/crc/createCRC.h"
#include "measure.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <zlib.h>

namespace {

constexpr int size = 64 << 20;
constexpr qint64 fileSize = 16 << 20;
constexpr int rounds = 5;

uint8_t table8[256];
uint16_t table16[256];
uint32_t table32[256];
uint64_t table64[256];

uint64_t bareNarrow(const uint8_t* at, const uint8_t* end)
{
    uint8_t state = 0;
    while (at != end)
        state = table8[state ^ *at++];
    return state;
}

template <class State>
uint64_t bareForward(const State* table, int width, const uint8_t* at, const uint8_t* end)
{
    State state = 0;
    while (at != end)
        state = static_cast<State>((state << 8) ^ table[((state >> (width - 8)) ^ *at++) & 0xFF]);
    return state;
}

template <class State> uint64_t bareReflected(const State* table, const uint8_t* at, const uint8_t* end)
{
    State state = 0;
    while (at != end)
        state = static_cast<State>((state >> 8) ^ table[(state ^ *at++) & 0xFF]);
    return state;
}

uint64_t bareBitwise(const uint8_t* at, const uint8_t* end)
{
    uint64_t high = 0;
    uint64_t low = 0;
    while (at != end) {
        low ^= *at++;
        for (int bit = 0; bit < 8; ++bit) {
            const bool taken = (low & 1) != 0;
            low = (low >> 1) | (high << 63);
            high >>= 1;
            if (taken) {
                low ^= 0x8A00A2022200C430;
                high ^= 0x22080;
            }
        }
    }
    return low ^ high;
}

uint64_t bareSum(const uint8_t* at, const uint8_t* end)
{
    uint8_t state = 0;
    while (at != end)
        state = static_cast<uint8_t>(state - *at++);
    return state;
}

/// Keeps the compiler from leaving a loop out whose result nobody wants.
volatile uint64_t sink;

void ours(const char* name, const QByteArray& data)
{
    const std::unique_ptr<ICRC> crc(createCRC(QLatin1String(name)));
    sink = crc->update(data.constData(), data.size());
}

template <class Bare> void compare(const char* form, const char* name, const QByteArray& data, Bare bare)
{
    const auto* const begin = reinterpret_cast<const uint8_t*>(data.constData());
    const TPair seconds = measureCpu(
        rounds, [&] { ours(name, data); }, [&] { sink = bare(begin, begin + data.size()); });
    const double megabytes = data.size() / 1e6;
    std::printf("%-22s %-18s %5.0f MB/s, bare loop %5.0f MB/s: %.2f of it (at least 0.9)\n", form, name,
                megabytes / seconds.ours, megabytes / seconds.reference, seconds.reference / seconds.ours);
}

void calcCrc(const QString& file)
{
    CalcCrc calc({{key::crc_name, QStringLiteral("CRC-32")},
                  {key::file, file},
                  {key::format, QStringLiteral("bin")},
                  {key::addr, 0},
                  {key::count, fileSize}});
    if (!calc.open() || !calc.run([](qint64, qint64) { return false; }) || !calc.close())
        std::exit(1);
    sink = static_cast<uint64_t>(calc.resultText().size());
}

void compareFile(const QByteArray& data)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("data.bin")));
    if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size())
        return;
    file.close();
    const TPair seconds = measureCpu(
        rounds, [&] { calcCrc(file.fileName()); }, [&] { ours("CRC-32", data); });
    std::printf("%-22s %-18s %.2f times the checksum alone (at most 1.5)\n", "16 MiB from a file", "CRC-32",
                seconds.ours / seconds.reference);
}

template <class State, size_t n> void fill(State (&table)[n])
{
    std::mt19937_64 random(2);
    for (State& entry : table)
        entry = static_cast<State>(random());
}

} // namespace

int main()
{
    std::mt19937 random(1);
    QByteArray data(size, '\0');
    for (char& byte : data)
        byte = static_cast<char>(random());
    fill(table8);
    fill(table16);
    fill(table32);
    fill(table64);
    using Place = const uint8_t*;
    compare("8 bits, left-aligned", "CRC-7/MMC", data, bareNarrow);
    compare("8 bits, right-aligned", "CRC-8/MAXIM-DOW", data, bareNarrow);
    compare("wide, 16 bits", "CRC-16/XMODEM", data,
            [](Place at, Place end) { return bareForward(table16, 16, at, end); });
    compare("wide, 32 bits", "CRC-24", data,
            [](Place at, Place end) { return bareForward(table32, 24, at, end); });
    compare("wide, 64 bits", "CRC-64", data,
            [](Place at, Place end) { return bareForward(table64, 64, at, end); });
    compare("reflected, 16 bits", "CRC-16/ARC", data,
            [](Place at, Place end) { return bareReflected(table16, at, end); });
    compare("reflected, 32 bits", "CRC-32", data,
            [](Place at, Place end) { return bareReflected(table32, at, end); });
    compare("reflected, 64 bits", "CRC-64/XZ", data,
            [](Place at, Place end) { return bareReflected(table64, at, end); });
    compare("82 bits", "CRC-82/DARC", data, bareBitwise);
    compare("sum", "CHKSUM-8/HEX", data, bareSum);
    const double zlib =
        cpuSecondsOf([&] { sink = crc32(0, reinterpret_cast<const Bytef*>(data.constData()), uInt(size)); });
    std::printf("%-22s %-18s %5.0f MB/s\n", "zlib, for comparison", "crc32", size / 1e6 / zlib);
    compareFile(data.left(int(fileSize)));
    return 0;
}
