#include "formats/crc/ICRC.h"

ICRC::ICRC() = default;

ICRC::~ICRC() = default;

QByteArray ICRC::bigEndian(quint64 value, int count)
{
    QByteArray bytes;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes.append(static_cast<char>(value >> shift));
    return bytes;
}
