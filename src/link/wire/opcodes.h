#pragma once

#include <QtGlobal>

/// Command bytes of the programmer itself, one for each frame that it knows without a chip. 0x82 is not
/// used; the bytes from 1 to 7 belong to the chip families.
namespace opcode {
inline constexpr quint8 readInterface = 0x80; ///< reply: interface id, u16
inline constexpr quint8 readName = 0x81;      ///< reply: name, UTF-8
inline constexpr quint8 setStatus = 0x83;     ///< u8 state of the indicator
inline constexpr quint8 selectChip = 0x84;    ///< the family's block, possibly empty
inline constexpr quint8 closeLink = 0x85;
inline constexpr quint8 resetPulse = 0x86;  ///< s16 ms, the sign is the polarity
inline constexpr quint8 setFreq = 0x87;     ///< u32 Hz, u16 tenths of a percent
inline constexpr quint8 setPins = 0x88;     ///< u16 0, then one pin code for each pin
inline constexpr quint8 setVcc = 0x89;      ///< u8 tenths of a volt
inline constexpr quint8 setVpp = 0x8A;      ///< u8 tenths of a volt
inline constexpr quint8 setVccLimit = 0x8B; ///< u8 tenths of a volt, u32 microamperes, u8 protection
inline constexpr quint8 setVppLimit = 0x8C; ///< u8 tenths of a volt, u16 microamperes, u8 protection
} // namespace opcode
