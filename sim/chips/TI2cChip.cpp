#include "chips/TI2cChip.h"

#include <algorithm>

namespace {

constexpr unsigned pinBits = 3;
constexpr unsigned allPins = 7;

unsigned pinsOf(std::uint8_t control)
{
    return control >> 1U & allPins;
}

} // namespace

TI2cChip::TI2cChip(const TDescription& description, unsigned pins)
    : cells(description.number("size"), 0xFF)
    , pageSize(std::max<std::size_t>(description.number("page_size"), 1))
    , readBlock(description.number("read_block"))
    , addressBytes(description.number("addr_size") == 2 ? 2 : 1)
    , pinMask(unsigned(description.number("addr_mask")) & allPins)
    , pinLevel(pins & pinMask)
{
    pageSize = std::min(pageSize, cells.size());
    if (readBlock == 0 || cells.size() % readBlock != 0)
        readBlock = cells.size();
}

bool TI2cChip::acknowledges(std::uint8_t control) const
{
    return (control & 0xF0) == 0xA0 && (pinsOf(control) & pinMask) == pinLevel;
}

std::size_t TI2cChip::blockOf(std::uint8_t control) const
{
    std::size_t block = 0;
    unsigned next = 0;
    for (unsigned bit = 0; bit < pinBits; bit++) {
        if ((pinMask >> bit & 1U) == 0)
            block |= std::size_t(pinsOf(control) >> bit & 1U) << next++;
    }
    return block;
}

std::size_t TI2cChip::write(std::uint8_t control, const Bytes& bytes, std::size_t begin)
{
    if (bytes.size() - begin < addressBytes)
        return 0;
    std::size_t address = blockOf(control);
    for (std::size_t i = 0; i < addressBytes; i++)
        address = address << 8 | bytes[begin + i];
    cursor = address % cells.size();
    const std::size_t page = cursor - cursor % pageSize;
    const std::size_t first = begin + addressBytes;
    for (std::size_t i = first; i < bytes.size(); i++) {
        cells[page + cursor % pageSize] = bytes[i];
        cursor = page + (cursor + 1 - page) % pageSize;
    }
    return bytes.size() - first;
}

Bytes TI2cChip::read(std::size_t count)
{
    Bytes data(count);
    const std::size_t begin = cursor - cursor % readBlock;
    for (std::uint8_t& byte : data) {
        byte = cells[cursor];
        cursor = begin + (cursor + 1 - begin) % readBlock;
    }
    return data;
}
