#pragma once

#include "TDescription.h"
#include "bytes.h"

/// A serial EEPROM on an I2C bus. It acknowledges a control byte 1010 whose pin bits (those of `addr_mask`)
/// are the levels of its own pins; the other bits beside them are address bits above the address bytes.
/// A write wraps inside its page; a read counts on through the whole memory, or begins again at the border of
/// its `read_block`.
class TI2cChip
{
public:
    /// `pins`: level of the pins, A2 in bit 2.
    TI2cChip(const TDescription& description, unsigned pins);

    /// The chip is meant by this control byte.
    [[nodiscard]] bool acknowledges(std::uint8_t control) const;
    /// A write transfer: the address bytes, then data from `begin` of `bytes` on. The result says how many
    /// data bytes were written.
    std::size_t write(std::uint8_t control, const Bytes& bytes, std::size_t begin);
    /// Reads on from the address of the last transfer.
    Bytes read(std::size_t count);
    /// Address bytes that follow the control byte, 1 or 2.
    [[nodiscard]] std::size_t addressSize() const { return addressBytes; }
    /// The memory.
    [[nodiscard]] Bytes& memory() { return cells; }

private:
    [[nodiscard]] std::size_t blockOf(std::uint8_t control) const;

    Bytes cells;
    std::size_t pageSize;
    std::size_t readBlock;
    std::size_t addressBytes;
    unsigned pinMask;
    unsigned pinLevel;
    std::size_t cursor = 0;
};
