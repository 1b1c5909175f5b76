#include "chips/sfdpTable.h"

#include <algorithm>

namespace {

constexpr std::size_t tableAt = 0x10;
constexpr std::size_t tableWords = 9;
constexpr std::uint32_t smallErase = 4096;
constexpr std::ptrdiff_t eraseTypes = 4;

void put32(Bytes& area, std::size_t word, std::uint32_t value)
{
    for (unsigned i = 0; i < 4; i++)
        area[tableAt + word * 4 + i] = std::uint8_t(value >> 8 * i);
}

std::uint8_t exponentOf(std::uint32_t size)
{
    std::uint8_t exponent = 0;
    while (exponent < 31 && size >> exponent != 1)
        exponent++;
    return (size & (size - 1)) == 0 ? exponent : 0;
}

/// First double word: write granularity of 64 bytes and more, three address bytes, the 4 KiB erase.
std::uint32_t firstWord(const std::vector<TEraseBlock>& erases)
{
    const auto small = std::find_if(erases.begin(), erases.end(),
                                    [](const TEraseBlock& erase) { return erase.size == smallErase; });
    const bool has = small != erases.end();
    return 0xFF8000E4U | (has ? 1U : 3U) | std::uint32_t(has ? small->opcode : 0xFF) << 8;
}

void putErases(Bytes& area, const std::vector<TEraseBlock>& erases)
{
    std::ptrdiff_t row = 0;
    constexpr std::size_t at = tableAt + std::size_t(7) * 4;
    std::fill_n(area.begin() + at, eraseTypes * 2, std::uint8_t(0));
    for (const TEraseBlock& erase : erases) {
        const std::uint8_t exponent = exponentOf(erase.size);
        if (exponent == 0 || row == eraseTypes)
            continue;
        area[at + std::size_t(row) * 2] = exponent;
        area[at + std::size_t(row) * 2 + 1] = erase.opcode;
        row++;
    }
}

} // namespace

Bytes sfdpTable(std::uint64_t memorySize, const std::vector<TEraseBlock>& erases, std::size_t areaSize)
{
    const Bytes head = {'S',  'F',  'D',  'P',        0x00,    0x01, 0x00, 0xFF,
                        0x00, 0x00, 0x01, tableWords, tableAt, 0x00, 0x00, 0xFF};
    Bytes area(std::max(areaSize, tableAt + tableWords * 4), 0xFF);
    std::copy(head.begin(), head.end(), area.begin());
    put32(area, 0, firstWord(erases));
    put32(area, 1, std::uint32_t(memorySize * 8 - 1));
    put32(area, 2, 0);
    put32(area, 3, 0);
    put32(area, 4, 0xFFFFFFEE);
    put32(area, 5, 0x0000FFFF);
    put32(area, 6, 0x0000FFFF);
    putErases(area, erases);
    area.resize(areaSize);
    return area;
}
