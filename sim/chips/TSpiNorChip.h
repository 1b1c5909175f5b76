#pragma once

#include "TDescription.h"
#include "bytes.h"
#include "chips/sfdpTable.h"

#include <string>

/// A serial NOR flash chip as its pins show it: one transfer is one low phase of chip select. Size, page,
/// erases, signature, registers and areas come from the description. Programming only clears bits and wraps
/// inside its page; an erase sets its own block to 0xFF; every change needs a write enable before it, which
/// it uses up. Instructions that the chip does not know, or that have the wrong length, do nothing and read
/// 0xFF. Bits of the status registers are kept and read back but protect nothing, since which bit protects
/// what differs from maker to maker.
class TSpiNorChip
{
public:
    TSpiNorChip(const std::string& name, const TDescription& description);

    /// Sends the bytes (at least one) and reads `count` bytes back.
    Bytes transfer(const Bytes& sent, std::size_t count);
    /// The main memory.
    [[nodiscard]] Bytes& memory() { return cells; }

private:
    struct TRead;
    struct TWrite;
    static const TRead reads[];
    static const TWrite writes[];

    Bytes read(const TRead& instruction, const Bytes& sent, std::size_t count) const;
    void write(const Bytes& sent);
    void readId(const Bytes& sent, Bytes& out) const;
    void readMemory(const Bytes& sent, Bytes& out) const;
    void readStatus(const Bytes& sent, Bytes& out) const;
    void readSecurity(const Bytes& sent, Bytes& out) const;
    void readUniqueId(const Bytes& sent, Bytes& out) const;
    void readSfdp(const Bytes& sent, Bytes& out) const;
    void program(const Bytes& sent);
    void eraseAll(const Bytes& sent);
    void writeStatus(const Bytes& sent);
    void programSecurity(const Bytes& sent);
    void eraseSecurity(const Bytes& sent);
    void eraseBlock(const TEraseBlock& block, const Bytes& sent);
    [[nodiscard]] bool securityOffset(std::uint32_t address, std::size_t& offset) const;

    Bytes cells;
    Bytes signature;
    Bytes status;   ///< registers 1, 2, 3 as far as the chip has them
    Bytes security; ///< all registers, 256 bytes each
    Bytes uniqueId;
    Bytes sfdp;
    std::size_t pageSize;
    std::vector<TEraseBlock> erases;
    bool writeEnabled = false;
};
