#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

/// The 16-bit little-endian number at `at`. The caller has checked that two bytes stand there.
inline unsigned le16(const Bytes& bytes, std::size_t at)
{
    return bytes[at] | unsigned(bytes[at + 1]) << 8;
}
