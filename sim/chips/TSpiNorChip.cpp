#include "chips/TSpiNorChip.h"

#include "text.h"

#include <algorithm>

namespace {

constexpr std::uint8_t writeEnableOp = 0x06;
constexpr std::uint8_t writeDisableOp = 0x04;
constexpr std::uint8_t chipEraseOps[] = {0xC7, 0x60};
constexpr std::uint8_t latchBit = 0x02;        ///< write enable latch in status register 1
constexpr std::uint8_t fixedStatusBits = 0x03; ///< busy and latch, not writable
constexpr std::size_t addressEnd = 4;          ///< an instruction byte and three address bytes
constexpr std::size_t registerSize = 256;
constexpr std::size_t usualPage = 256;
constexpr std::size_t uniqueIdSize = 8;
constexpr std::uint64_t greatestArea = 65536;

std::uint32_t addressOf(const Bytes& sent)
{
    return std::uint32_t(sent[1]) << 16 | std::uint32_t(sent[2]) << 8 | sent[3];
}

/// Every model of a chip has its own ID, the same at each start, so that runs can be compared.
Bytes uniqueIdOf(const std::string& name)
{
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const char c : name)
        hash = (hash ^ std::uint8_t(c)) * 0x100000001B3;
    Bytes id;
    for (std::size_t i = 0; i < uniqueIdSize; i++)
        id.push_back(std::uint8_t(hash >> 8 * i));
    return id;
}

/// The erases of the description, items of the form `op|bytes` with op in hexadecimal. The instructions that
/// erase the whole chip are no block erases, whatever the description says: they take no address.
std::vector<TEraseBlock> erasesOf(const TDescription& description, std::uint64_t memorySize)
{
    std::vector<std::string> items = description.list("erase_blocks");
    items.push_back(description.text("erase"));
    std::vector<TEraseBlock> erases;
    for (const std::string& item : items) {
        const auto fields = splitText(item, '|');
        if (fields.size() != 2)
            continue;
        const auto opcode = toNumber(fields[0], 16, 0xFF);
        const auto size = toNumber(fields[1], 10, memorySize);
        const bool whole =
            opcode && std::count(std::begin(chipEraseOps), std::end(chipEraseOps), *opcode) > 0;
        const bool known =
            opcode && std::any_of(erases.begin(), erases.end(),
                                  [&opcode](const TEraseBlock& erase) { return erase.opcode == *opcode; });
        if (opcode && size && *size > 0 && !whole && !known)
            erases.push_back({std::uint8_t(*opcode), std::uint32_t(*size)});
    }
    return erases;
}

/// Programming clears bits. The data goes through a buffer of one page (or register) that wraps, so that
/// only the last bytes of too long data count.
void programWrapped(Bytes& area, std::size_t base, std::size_t span, std::size_t offset, const Bytes& sent)
{
    Bytes buffer(span, 0xFF);
    for (std::size_t i = addressEnd; i < sent.size(); i++)
        buffer[(offset + i - addressEnd) % span] = sent[i];
    const std::size_t end = std::min(span, area.size() - base);
    for (std::size_t i = 0; i < end; i++)
        area[base + i] &= buffer[i];
}

std::size_t statusIndex(std::uint8_t opcode)
{
    switch (opcode) {
    case 0x35:
    case 0x31:
        return 1;
    case 0x15:
    case 0x11:
        return 2;
    default:
        return 0;
    }
}

} // namespace

/// An instruction that reads: how many bytes it takes before the answer begins.
struct TSpiNorChip::TRead
{
    std::uint8_t opcode;
    std::size_t head;
    void (TSpiNorChip::*fill)(const Bytes&, Bytes&) const;
};

/// An instruction that changes the chip: the bytes it must have, the instruction itself included.
struct TSpiNorChip::TWrite
{
    std::uint8_t opcode;
    std::size_t least;
    std::size_t most;
    void (TSpiNorChip::*run)(const Bytes&);
};

const TSpiNorChip::TRead TSpiNorChip::reads[] = {
    {0x9F, 1, &TSpiNorChip::readId},       {0x03, 4, &TSpiNorChip::readMemory},
    {0x0B, 5, &TSpiNorChip::readMemory},   {0x05, 1, &TSpiNorChip::readStatus},
    {0x35, 1, &TSpiNorChip::readStatus},   {0x15, 1, &TSpiNorChip::readStatus},
    {0x48, 5, &TSpiNorChip::readSecurity}, {0x4B, 5, &TSpiNorChip::readUniqueId},
    {0x5A, 5, &TSpiNorChip::readSfdp},
};

const TSpiNorChip::TWrite TSpiNorChip::writes[] = {
    {0x02, 5, SIZE_MAX, &TSpiNorChip::program},
    {0xC7, 1, 1, &TSpiNorChip::eraseAll},
    {0x60, 1, 1, &TSpiNorChip::eraseAll},
    {0x01, 2, 4, &TSpiNorChip::writeStatus},
    {0x31, 2, 2, &TSpiNorChip::writeStatus},
    {0x11, 2, 2, &TSpiNorChip::writeStatus},
    {0x42, 5, SIZE_MAX, &TSpiNorChip::programSecurity},
    {0x44, 4, 4, &TSpiNorChip::eraseSecurity},
};

TSpiNorChip::TSpiNorChip(const std::string& name, const TDescription& description)
    : cells(description.number("size"), 0xFF)
    , signature(description.bytes("signature"))
    , status(description.bytes("status_reg_def"))
    , security(std::min(description.number("security_reg_size"), greatestArea) / registerSize * registerSize,
               0xFF)
    , uniqueId(uniqueIdOf(name))
    , pageSize(description.number("page_size"))
    , erases(erasesOf(description, cells.size()))
{
    status.resize(std::clamp<std::size_t>(status.size(), 1, 3));
    status[0] &= std::uint8_t(~fixedStatusBits);
    if (pageSize == 0 || pageSize > cells.size())
        pageSize = std::min(usualPage, cells.size());
    sfdp = sfdpTable(cells.size(), erases, std::min(description.number("sfdp_reg_size"), greatestArea));
}

Bytes TSpiNorChip::transfer(const Bytes& sent, std::size_t count)
{
    const auto* const found = std::find_if(std::begin(reads), std::end(reads),
                                           [&sent](const TRead& row) { return row.opcode == sent[0]; });
    if (found != std::end(reads))
        return read(*found, sent, count);
    // Clocks behind the last data bit are further data: a change takes place only when chip select rises
    // right after the bytes that were meant for it.
    if (count == 0)
        write(sent);
    return Bytes(count, 0xFF);
}

Bytes TSpiNorChip::read(const TRead& instruction, const Bytes& sent, std::size_t count) const
{
    if (sent.size() < instruction.head)
        return Bytes(count, 0xFF);
    const std::size_t passed = sent.size() - instruction.head;
    Bytes out(passed + count, 0xFF);
    (this->*instruction.fill)(sent, out);
    out.erase(out.begin(), out.begin() + std::ptrdiff_t(passed));
    return out;
}

void TSpiNorChip::write(const Bytes& sent)
{
    if (sent[0] == writeEnableOp || sent[0] == writeDisableOp) {
        writeEnabled = sent[0] == writeEnableOp && sent.size() == 1;
        return;
    }
    if (!writeEnabled)
        return;
    const auto block = std::find_if(erases.begin(), erases.end(),
                                    [&sent](const TEraseBlock& erase) { return erase.opcode == sent[0]; });
    if (block != erases.end())
        eraseBlock(*block, sent);
    for (const TWrite& row : writes) {
        if (row.opcode == sent[0] && sent.size() >= row.least && sent.size() <= row.most)
            (this->*row.run)(sent);
    }
    writeEnabled = false;
}

void TSpiNorChip::readId(const Bytes& /*sent*/, Bytes& out) const
{
    for (std::size_t i = 0; i < out.size() && !signature.empty(); i++)
        out[i] = signature[i % signature.size()];
}

void TSpiNorChip::readMemory(const Bytes& sent, Bytes& out) const
{
    copyAround(cells, addressOf(sent) % cells.size(), out.data(), out.size());
}

void TSpiNorChip::readStatus(const Bytes& sent, Bytes& out) const
{
    const std::size_t index = statusIndex(sent[0]);
    if (index >= status.size())
        return;
    const std::uint8_t latch = index == 0 && writeEnabled ? latchBit : 0;
    std::fill(out.begin(), out.end(), std::uint8_t(status[index] | latch));
}

bool TSpiNorChip::securityOffset(std::uint32_t address, std::size_t& offset) const
{
    const std::uint32_t number = address >> 12;
    if (number == 0 || number > security.size() / registerSize)
        return false;
    offset = (number - 1) * registerSize;
    return true;
}

void TSpiNorChip::readSecurity(const Bytes& sent, Bytes& out) const
{
    std::size_t offset = 0;
    if (!securityOffset(addressOf(sent), offset))
        return;
    for (std::size_t i = 0; i < out.size(); i++)
        out[i] = security[offset + (sent[3] + i) % registerSize];
}

void TSpiNorChip::readUniqueId(const Bytes& /*sent*/, Bytes& out) const
{
    for (std::size_t i = 0; i < out.size(); i++)
        out[i] = uniqueId[i % uniqueId.size()];
}

void TSpiNorChip::readSfdp(const Bytes& sent, Bytes& out) const
{
    const std::size_t address = addressOf(sent);
    for (std::size_t i = 0; i < out.size() && address + i < sfdp.size(); i++)
        out[i] = sfdp[address + i];
}

void TSpiNorChip::program(const Bytes& sent)
{
    const std::size_t address = addressOf(sent) % cells.size();
    const std::size_t offset = address % pageSize;
    programWrapped(cells, address - offset, pageSize, offset, sent);
}

void TSpiNorChip::eraseBlock(const TEraseBlock& block, const Bytes& sent)
{
    if (sent.size() != addressEnd)
        return;
    const std::size_t address = addressOf(sent) % cells.size();
    const std::size_t begin = address - address % block.size;
    const std::size_t size = std::min<std::size_t>(block.size, cells.size() - begin);
    std::fill_n(cells.begin() + std::ptrdiff_t(begin), size, std::uint8_t(0xFF));
}

void TSpiNorChip::eraseAll(const Bytes& /*sent*/)
{
    std::fill(cells.begin(), cells.end(), std::uint8_t(0xFF));
}

void TSpiNorChip::writeStatus(const Bytes& sent)
{
    const std::size_t first = statusIndex(sent[0]);
    for (std::size_t i = 1; i < sent.size() && first + i - 1 < status.size(); i++)
        status[first + i - 1] = sent[i];
    status[0] &= std::uint8_t(~fixedStatusBits);
}

void TSpiNorChip::programSecurity(const Bytes& sent)
{
    std::size_t offset = 0;
    if (securityOffset(addressOf(sent), offset))
        programWrapped(security, offset, registerSize, sent[3], sent);
}

void TSpiNorChip::eraseSecurity(const Bytes& sent)
{
    std::size_t offset = 0;
    if (securityOffset(addressOf(sent), offset))
        std::fill_n(security.begin() + std::ptrdiff_t(offset), registerSize, std::uint8_t(0xFF));
}
