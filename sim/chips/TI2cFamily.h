#pragma once

#include "chips/IChipFamily.h"
#include "chips/TI2cChip.h"

#include <optional>

/// Serial EEPROMs on I2C: control bits (opcode 3), write (4) and read (5). The firmware adds the control bits
/// of the chip's address pins to every control byte; where no chip acknowledges, the device does not answer.
class TI2cFamily : public IChipFamily
{
public:
    explicit TI2cFamily(const TSocket* socket);

    [[nodiscard]] std::size_t blockSize() const override { return 9; }
    void select(const Bytes& block) override;
    [[nodiscard]] TAnswer answer(std::uint8_t opcode, const Bytes& payload) override;
    [[nodiscard]] Bytes* mainMemory() override { return chip ? &chip->memory() : nullptr; }

private:
    TAnswer setControlBits(const Bytes& payload);
    TAnswer write(const Bytes& payload);
    TAnswer read(const Bytes& payload);
    [[nodiscard]] std::uint8_t withPins(std::uint8_t control) const;

    std::optional<TI2cChip> chip;
    std::uint8_t controlBits = 0;
    unsigned writeWait = 0; ///< milliseconds that a write takes
};
