#pragma once

#include "TAnswer.h"
#include "TCatalogue.h"
#include "TOptions.h"
#include "chips/IChipFamily.h"

#include <map>
#include <memory>
#include <optional>
#include <string>

/// The firmware of the programmer without the line: it carries out one request after the other and keeps
/// what they set. Which chip is in the socket is fixed when it is made.
class TProgrammer
{
public:
    /// `options` and `catalogue` must outlive the object.
    TProgrammer(const TOptions& options, TCatalogue& catalogue);

    /// Puts the chip of the options into the socket; none there: the socket stays empty. False, with `error`:
    /// the chip is not known or cannot be modelled.
    [[nodiscard]] bool insertChip(std::string& error);
    /// Carries out the request of an opcode.
    [[nodiscard]] TAnswer answer(std::uint8_t opcode, const Bytes& payload);
    /// The main memory of the chip in the socket; null when the socket is empty.
    [[nodiscard]] Bytes* mainMemory();

private:
    struct TCommand;
    static const TCommand commands[];

    static const TCommand* find(std::uint8_t opcode);
    TAnswer accept(const Bytes& payload);
    TAnswer interfaceId(const Bytes& payload);
    TAnswer name(const Bytes& payload);
    TAnswer status(const Bytes& payload);
    TAnswer select(const Bytes& payload);
    TAnswer closeLink(const Bytes& payload);
    TAnswer reset(const Bytes& payload);
    TAnswer frequency(const Bytes& payload);
    TAnswer pins(const Bytes& payload);
    TAnswer limited(const Bytes& payload);
    IChipFamily* familyFor(unsigned number);

    const TOptions& options;
    TCatalogue& catalogue;
    std::unique_ptr<IChipFamily> socket;
    unsigned socketNumber = 0;
    std::map<unsigned, std::unique_ptr<IChipFamily>> others; ///< families whose chip is not in the socket
    IChipFamily* selected = nullptr;
};
