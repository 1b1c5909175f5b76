#pragma once

#include "chips/IChipFamily.h"
#include "chips/TSpiNorChip.h"

#include <optional>

/// Serial NOR flash. Opcode 3 sends bytes to the chip and reads bytes back, opcode 4 is the write transfer:
/// the firmware enables writing before it and waits until the chip is ready after it.
class TSpiFlashFamily : public IChipFamily
{
public:
    explicit TSpiFlashFamily(const TSocket* socket);

    [[nodiscard]] std::size_t blockSize() const override { return 7; }
    [[nodiscard]] TAnswer answer(std::uint8_t opcode, const Bytes& payload) override;
    [[nodiscard]] Bytes* mainMemory() override { return chip ? &chip->memory() : nullptr; }

private:
    TAnswer read(const Bytes& payload);
    TAnswer write(const Bytes& payload);

    std::optional<TSpiNorChip> chip;
};
