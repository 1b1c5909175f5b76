#pragma once

#include "bytes.h"

/// A block erase that a chip knows.
struct TEraseBlock
{
    std::uint8_t opcode;
    std::uint32_t size; ///< bytes
};

/// The SFDP area of a chip, `areaSize` bytes: header, one parameter header and the basic flash parameter
/// table of nine double words (JESD216), unused bytes 0xFF. It tells the size of the memory, the erases
/// whose size is a power of two (the first four) and that there are three address bytes and no multi-wire
/// reads. An area of less than 52 bytes is cut off.
Bytes sfdpTable(std::uint64_t memorySize, const std::vector<TEraseBlock>& erases, std::size_t areaSize);
