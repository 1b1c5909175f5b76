#include "chips/TAvrChip.h"

#include "chips/IChipFamily.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr std::uint8_t programmingByte = 0xAC;

/// The fuse write instructions by number: AC with the fuse bits in the second byte (numbers 0 and 1, one
/// fuse byte), or an instruction a byte with the value in the fourth (number 2).
struct TFuseForm
{
    unsigned form;
    std::uint8_t mask;  ///< bits of the second byte that tell the instruction
    std::uint8_t match; ///< their value
    std::size_t index;  ///< fuse byte: 0 low or the only one, 1 high, 2 extended
};

const TFuseForm fuseForms[] = {
    {0, 0xFE, 0xBE, 0}, {1, 0xE0, 0xA0, 0}, {2, 0xFF, 0xA0, 0}, {2, 0xFF, 0xA8, 1}, {2, 0xFF, 0xA4, 2}};
constexpr unsigned byteForm = 2;

/// Fuse bits that the joint read of fuse and lock bits shows: bit 0 and the serial programming bit.
constexpr std::uint8_t jointFuseBits = 0x21;
constexpr std::uint8_t highSelect = 0x08;
/// No part leaves the factory with the value that a description has as its default; bytes count on from here.
constexpr std::uint8_t firstCalibration = 0x9C;

std::size_t cut(std::uint64_t size)
{
    return std::size_t(std::min(size, greatestMemory));
}

} // namespace

/// An instruction: its first byte, and what tells it by its second.
struct TAvrChip::TRow
{
    std::uint8_t first;
    std::uint8_t mask;
    std::uint8_t second;
    std::uint8_t (TAvrChip::*run)(const Instruction&);
};

const TAvrChip::TRow TAvrChip::rows[] = {
    {programmingByte, 0xFF, 0x53, &TAvrChip::enable},
    {programmingByte, 0xE0, 0x80, &TAvrChip::erase},
    {programmingByte, 0x00, 0x00, &TAvrChip::writeConfiguration},
    {0x20, 0, 0, &TAvrChip::readLow},
    {0x28, 0, 0, &TAvrChip::readHigh},
    {0x30, 0, 0, &TAvrChip::readSignature},
    {0x38, 0, 0, &TAvrChip::readCalibration},
    {0x40, 0, 0, &TAvrChip::loadLow},
    {0x48, 0, 0, &TAvrChip::loadHigh},
    {0x4C, 0, 0, &TAvrChip::commit},
    {0x4D, 0, 0, &TAvrChip::loadExtended},
    {0x50, 0, 0, &TAvrChip::readLowOrExtendedFuse},
    {0x58, 0, 0, &TAvrChip::readLockOrHighFuse},
    {0xA0, 0, 0, &TAvrChip::readEepromByte},
    {0xC0, 0, 0, &TAvrChip::writeEepromByte},
    {0xF0, 0, 0, &TAvrChip::readReady},
};

TAvrChip::TAvrChip(const TDescription& description)
    : flash(cut(description.number("flash_size")), 0xFF)
    , eeprom(cut(description.number("eeprom_size")), 0xFF)
    , buffer(std::min<std::uint64_t>(description.number("flash_page_size"), flash.size()), 0xFF)
    , signature(description.bytes("signature"))
    , fuses(description.bytes("fuse_def"))
    , calibration(description.bytes("osccal_def").size())
    , fuseWriteForm(unsigned(description.number("alg_fuse_write")))
    , singleFuse(description.number("alg_fuse_read") == 0)
    , lockInSecondByte(description.number("alg_lock_write") == 0)
{
    std::iota(calibration.begin(), calibration.end(), firstCalibration);
    const Bytes shipped = description.bytes("lock_def");
    lock = shipped.empty() ? 0xFF : shipped[0];
    lockBit1 = lockInSecondByte ? 0x02 : 0x01;
    lockBit2 = lockInSecondByte ? 0x04 : 0x02;
}

void TAvrChip::enterProgramming()
{
    extended = 0;
    std::fill(buffer.begin(), buffer.end(), std::uint8_t(0xFF));
}

TAvrChip::Instruction TAvrChip::instruct(const Instruction& sent)
{
    const auto* const row = std::find_if(std::begin(rows), std::end(rows), [&sent](const TRow& known) {
        return known.first == sent[0] && (sent[1] & known.mask) == known.second;
    });
    const std::uint8_t result = row == std::end(rows) ? sent[2] : (this->*row->run)(sent);
    return {0, sent[0], sent[1], result};
}

bool TAvrChip::isLocked() const
{
    return (lock & (lockBit1 | lockBit2)) != (lockBit1 | lockBit2);
}

Bytes TAvrChip::readArea(const Bytes& area, std::uint32_t address, std::size_t count) const
{
    Bytes data(count, 0xFF);
    const bool hidden = (lock & (lockBit1 | lockBit2)) == 0;
    // What a locked part gives instead of its contents is in no data sheet; parts have been seen to count.
    for (std::size_t i = 0; i < count && hidden; i++)
        data[i] = std::uint8_t((address + i) / 2);
    if (!hidden && !area.empty())
        copyAround(area, address % area.size(), data.data(), count);
    return data;
}

Bytes TAvrChip::readFlash(std::uint32_t address, std::size_t count) const
{
    return readArea(flash, address, count);
}

Bytes TAvrChip::readEeprom(std::uint32_t address, std::size_t count) const
{
    return readArea(eeprom, address, count);
}

void TAvrChip::loadFlash(std::uint32_t address, std::uint8_t value)
{
    if (hasPages())
        buffer[address % buffer.size()] &= value;
    else if (!isLocked())
        flash[address % flash.size()] &= value;
}

void TAvrChip::writeEeprom(std::uint32_t address, std::uint8_t value)
{
    if (!eeprom.empty() && !isLocked())
        eeprom[address % eeprom.size()] = value;
}

std::uint32_t TAvrChip::wordAt(const Instruction& sent) const
{
    return fullAddress((unsigned(sent[1]) << 9 | unsigned(sent[2]) << 1) & 0xFFFFU);
}

std::uint8_t TAvrChip::enable(const Instruction& sent)
{
    return sent[2];
}

std::uint8_t TAvrChip::erase(const Instruction& sent)
{
    std::fill(flash.begin(), flash.end(), std::uint8_t(0xFF));
    std::fill(eeprom.begin(), eeprom.end(), std::uint8_t(0xFF));
    std::fill(buffer.begin(), buffer.end(), std::uint8_t(0xFF));
    lock = 0xFF;
    return sent[2];
}

std::uint8_t TAvrChip::writeConfiguration(const Instruction& sent)
{
    if ((sent[1] & 0xE0) == 0xE0)
        lock &= lockInSecondByte ? sent[1] : sent[3];
    for (const TFuseForm& form : fuseForms) {
        if (form.form != fuseWriteForm || (sent[1] & form.mask) != form.match)
            continue;
        const std::uint8_t kept = form.mask;
        const std::uint8_t old = fuse(form.index);
        setFuse(form.index,
                fuseWriteForm == byteForm ? sent[3] : std::uint8_t((old & kept) | (sent[1] & ~kept)));
    }
    return sent[2];
}

std::uint8_t TAvrChip::fuse(std::size_t index) const
{
    return index < fuses.size() ? fuses[index] : 0xFF;
}

void TAvrChip::setFuse(std::size_t index, std::uint8_t value)
{
    if (index < fuses.size() && !isLocked())
        fuses[index] = value;
}

std::uint8_t TAvrChip::readSignature(const Instruction& sent)
{
    const std::size_t index = sent[2] & 3U;
    return index < signature.size() ? signature[index] : 0xFF;
}

std::uint8_t TAvrChip::readCalibration(const Instruction& sent)
{
    return sent[2] < calibration.size() ? calibration[sent[2]] : 0xFF;
}

std::uint8_t TAvrChip::readLow(const Instruction& sent)
{
    return readFlash(wordAt(sent), 1)[0];
}

std::uint8_t TAvrChip::readHigh(const Instruction& sent)
{
    return readFlash(wordAt(sent) + 1, 1)[0];
}

std::uint8_t TAvrChip::loadLow(const Instruction& sent)
{
    loadFlash(wordAt(sent), sent[3]);
    return sent[2];
}

std::uint8_t TAvrChip::loadHigh(const Instruction& sent)
{
    loadFlash(wordAt(sent) + 1, sent[3]);
    return sent[2];
}

std::uint8_t TAvrChip::loadExtended(const Instruction& sent)
{
    extended = sent[2];
    return sent[2];
}

std::uint8_t TAvrChip::commit(const Instruction& sent)
{
    if (!hasPages())
        return sent[2];
    const std::size_t page = wordAt(sent) % flash.size() / buffer.size() * buffer.size();
    for (std::size_t i = 0; i < buffer.size() && page + i < flash.size() && !isLocked(); i++)
        flash[page + i] &= buffer[i];
    std::fill(buffer.begin(), buffer.end(), std::uint8_t(0xFF));
    return sent[2];
}

std::uint8_t TAvrChip::readEepromByte(const Instruction& sent)
{
    return readEeprom(unsigned(sent[1]) << 8 | sent[2], 1)[0];
}

std::uint8_t TAvrChip::writeEepromByte(const Instruction& sent)
{
    writeEeprom(unsigned(sent[1]) << 8 | sent[2], sent[3]);
    return sent[2];
}

std::uint8_t TAvrChip::readLowOrExtendedFuse(const Instruction& sent)
{
    return fuse((sent[1] & highSelect) != 0 ? 2 : 0);
}

std::uint8_t TAvrChip::readLockOrHighFuse(const Instruction& sent)
{
    if ((sent[1] & highSelect) != 0)
        return fuse(1);
    if (!singleFuse)
        return lock;
    // The old parts answer "12Sx xxxF": both lock bits, the serial programming bit, one fuse bit.
    const int lockBits = ((lock & lockBit1) != 0 ? 0x80 : 0) | ((lock & lockBit2) != 0 ? 0x40 : 0);
    return std::uint8_t(lockBits | (fuse(0) & jointFuseBits) | 0x1E);
}

std::uint8_t TAvrChip::readReady(const Instruction& /*sent*/)
{
    return 0;
}
