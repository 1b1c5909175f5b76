#pragma once

#include "TAnswer.h"
#include "TDescription.h"

#include <string>

/// What is in the socket.
struct TSocket
{
    std::string name;         ///< name of the chip
    TDescription description; ///< its description file
    unsigned address = 0;     ///< level of its address pins, A2 in bit 2
};

/// The part of the programmer's firmware that drives one chip family, together with the chip of that family
/// in the socket, if there is one. A further family is a class of its own and a row in families.cpp.
class IChipFamily
{
public:
    IChipFamily() = default;
    virtual ~IChipFamily();
    IChipFamily(const IChipFamily&) = delete;
    IChipFamily& operator=(const IChipFamily&) = delete;

    /// Bytes of the block that selects a chip of this family: number of the family (two bytes, low first),
    /// hardware configuration, then the family's own.
    [[nodiscard]] virtual std::size_t blockSize() const = 0;
    /// A chip of this family was selected; the block has blockSize() bytes.
    virtual void select(const Bytes& block);
    /// Carries out an opcode from 3 up; the first two are the same for all families.
    [[nodiscard]] virtual TAnswer answer(std::uint8_t opcode, const Bytes& payload) = 0;
    /// The main memory of the chip in the socket; null without a chip.
    [[nodiscard]] virtual Bytes* mainMemory() = 0;
};

/// Greatest memory that is modelled; a description that says more is wrong.
constexpr std::uint64_t greatestMemory = std::uint64_t(256) << 20;
