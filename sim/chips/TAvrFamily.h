#pragma once

#include "chips/IChipFamily.h"
#include "chips/TAvrChip.h"

#include <optional>

/// AVR microcontrollers in serial programming mode: flash and EEPROM by address (opcodes 3 to 6) and single
/// chip instructions (opcode 7). An empty socket reads 0xFF everywhere, in place of an instruction's echo
/// too.
class TAvrFamily : public IChipFamily
{
public:
    explicit TAvrFamily(const TSocket* socket);

    [[nodiscard]] std::size_t blockSize() const override { return 9; }
    void select(const Bytes& block) override;
    [[nodiscard]] TAnswer answer(std::uint8_t opcode, const Bytes& payload) override;
    [[nodiscard]] Bytes* mainMemory() override { return chip ? &chip->memory() : nullptr; }

private:
    TAnswer readFlash(const Bytes& payload);
    TAnswer writeFlash(const Bytes& payload);
    TAnswer readEeprom(const Bytes& payload);
    TAnswer writeEeprom(const Bytes& payload);
    TAnswer instruction(const Bytes& payload);

    std::optional<TAvrChip> chip;
    unsigned flashWait = 0;  ///< milliseconds a word, on a part without page mode
    unsigned eepromWait = 0; ///< milliseconds a byte
};
