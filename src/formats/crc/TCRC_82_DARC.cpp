#include "formats/crc/TCRC_82_DARC.h"

namespace {

// The polynomial 0x0308C0111011401440411 with its bits reversed.
constexpr quint64 polyHigh = 0x22080;
constexpr quint64 polyLow = 0x8A00A2022200C430;

} // namespace

quint64 TCRC_82_DARC::update(const char* data, qint64 size)
{
    quint64 high = m_high;
    quint64 low = m_low;
    for (qint64 i = 0; i < size; ++i) {
        low ^= static_cast<uchar>(data[i]);
        for (int bit = 0; bit < 8; ++bit) {
            const quint64 taken = 0 - (low & 1); // all bits or none
            low = (low >> 1 | high << 63) ^ (polyLow & taken);
            high = high >> 1 ^ (polyHigh & taken);
        }
    }
    m_high = high;
    m_low = low;
    return low;
}

QByteArray TCRC_82_DARC::result()
{
    return bigEndian(m_high, 3) + bigEndian(m_low, 8);
}
