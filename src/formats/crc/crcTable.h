#pragma once

#include <QtGlobal>

#include <array>
#include <type_traits>

// The parameters of a checksum algorithm and the table that the compiler makes from them.

/// An algorithm of 3 to 64 bits as the published catalogue writes it: polynomial, initial value and final
/// xor with the highest power first, whatever the order in which the bits of a byte come.
struct TCrcParams
{
    int width;
    quint64 poly;
    quint64 init;
    bool refIn;
    bool refOut;
    quint64 xorOut;
};

/// The narrowest state for a width.
template <int width>
using CrcState = std::conditional_t<
    (width <= 8), quint8,
    std::conditional_t<(width <= 16), quint16, std::conditional_t<(width <= 32), quint32, quint64>>>;

constexpr quint64 crcMask(int width)
{
    return ~quint64(0) >> (64 - width);
}

constexpr quint64 crcReversed(quint64 value, int width)
{
    quint64 reversed = 0;
    for (int bit = 0; bit < width; ++bit)
        reversed |= (value >> bit & 1) << (width - 1 - bit);
    return reversed;
}

/// How far the register of a narrow algorithm that takes the highest bit first is moved up, so that a whole
/// byte meets it in its 8 bits.
constexpr int crcShift(const TCrcParams& params)
{
    return !params.refIn && params.width < 8 ? 8 - params.width : 0;
}

/// What one byte makes of an empty register.
constexpr quint64 crcOfByte(const TCrcParams& params, quint64 byte)
{
    quint64 state = 0;
    if (params.refIn) {
        state = byte;
        const quint64 poly = crcReversed(params.poly, params.width);
        for (int bit = 0; bit < 8; ++bit)
            state = state >> 1 ^ ((state & 1) != 0 ? poly : 0);
        return state;
    }
    const int width = params.width + crcShift(params);
    const quint64 poly = params.poly << crcShift(params);
    state = byte << (width - 8);
    for (int bit = 0; bit < 8; ++bit)
        state = state << 1 ^ ((state >> (width - 1) & 1) != 0 ? poly : 0);
    return state & crcMask(width);
}

template <class State> constexpr std::array<State, 256> makeCrcTable(const TCrcParams& params)
{
    std::array<State, 256> table{};
    for (size_t byte = 0; byte < table.size(); ++byte)
        table[byte] = static_cast<State>(crcOfByte(params, byte));
    return table;
}
