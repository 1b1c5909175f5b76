#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

/// The 16-bit little-endian number at `at`. The caller has checked that two bytes stand there.
inline unsigned le16(const Bytes& bytes, std::size_t at)
{
    return bytes[at] | unsigned(bytes[at + 1]) << 8;
}

/// Copies `count` bytes that begin at `at` of the area to `out`; behind its last byte the area begins again.
/// The area is not empty and `at` lies in it.
inline void copyAround(const Bytes& area, std::size_t at, std::uint8_t* out, std::size_t count)
{
    while (count > 0) {
        const std::size_t part = std::min(count, area.size() - at);
        std::copy_n(area.data() + at, part, out);
        out += part;
        count -= part;
        at = 0;
    }
}
