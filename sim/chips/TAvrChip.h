#pragma once

#include "TDescription.h"
#include "bytes.h"

#include <array>

/// An 8-bit AVR microcontroller in serial programming mode. Every instruction has four bytes, and while the
/// chip takes one byte it gives back the one before it; the last byte given is the result of an instruction
/// that reads. Flash programming only clears bits; with a page size it goes through the page buffer and a
/// commit. EEPROM bytes are erased as they are written. Fuses take any value, also one that ends serial
/// programming on a real chip: it is kept, and the chip goes on answering. A programmed lock bit stops
/// writes of flash, EEPROM and fuses, both of them stop reading too, until a chip erase. The chip erase
/// empties the EEPROM too (the bit that protects it there lies elsewhere on each part).
///
/// Flash addresses are byte addresses. The extended address is bits 23 to 16 of the byte address; the page
/// commit and the word instructions bring the low 16 bits.
class TAvrChip
{
public:
    using Instruction = std::array<std::uint8_t, 4>;

    explicit TAvrChip(const TDescription& description);

    /// Programming mode begins: the extended address is 0, the page buffer empty.
    void enterProgramming();
    /// Carries out an instruction; the result is the four bytes that the chip gave meanwhile.
    Instruction instruct(const Instruction& sent);
    /// The address of a byte whose low 16 bits are given, with the extended address.
    [[nodiscard]] std::uint32_t fullAddress(unsigned low) const { return extended << 16 | low; }
    [[nodiscard]] Bytes readFlash(std::uint32_t address, std::size_t count) const;
    /// A byte for the page buffer; on a part without page mode it is programmed at once.
    void loadFlash(std::uint32_t address, std::uint8_t value);
    [[nodiscard]] bool hasPages() const { return !buffer.empty(); }
    [[nodiscard]] Bytes readEeprom(std::uint32_t address, std::size_t count) const;
    void writeEeprom(std::uint32_t address, std::uint8_t value);
    /// The flash.
    [[nodiscard]] Bytes& memory() { return flash; }

private:
    struct TRow;
    static const TRow rows[];

    std::uint8_t enable(const Instruction& sent);
    std::uint8_t erase(const Instruction& sent);
    std::uint8_t writeConfiguration(const Instruction& sent);
    std::uint8_t readSignature(const Instruction& sent);
    std::uint8_t readCalibration(const Instruction& sent);
    std::uint8_t readLow(const Instruction& sent);
    std::uint8_t readHigh(const Instruction& sent);
    std::uint8_t loadLow(const Instruction& sent);
    std::uint8_t loadHigh(const Instruction& sent);
    std::uint8_t loadExtended(const Instruction& sent);
    std::uint8_t commit(const Instruction& sent);
    std::uint8_t readEepromByte(const Instruction& sent);
    std::uint8_t writeEepromByte(const Instruction& sent);
    std::uint8_t readLowOrExtendedFuse(const Instruction& sent);
    std::uint8_t readLockOrHighFuse(const Instruction& sent);
    std::uint8_t readReady(const Instruction& sent);

    [[nodiscard]] std::uint8_t fuse(std::size_t index) const;
    void setFuse(std::size_t index, std::uint8_t value);
    [[nodiscard]] std::uint32_t wordAt(const Instruction& sent) const;
    [[nodiscard]] bool isLocked() const;
    [[nodiscard]] Bytes readArea(const Bytes& area, std::uint32_t address, std::size_t count) const;

    Bytes flash;
    Bytes eeprom;
    Bytes buffer; ///< one page; empty on a part without page mode
    Bytes signature;
    Bytes fuses;
    Bytes calibration;
    std::uint8_t lock;
    std::uint8_t lockBit1; ///< mask of the lock bit that stops writing
    std::uint8_t lockBit2; ///< mask of the one that with the first stops reading
    unsigned fuseWriteForm;
    bool singleFuse;       ///< one fuse byte, read together with the lock bits
    bool lockInSecondByte; ///< a lock write carries its bits in the second instruction byte
    std::uint32_t extended = 0;
};
