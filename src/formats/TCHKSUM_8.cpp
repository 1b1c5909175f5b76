#include "formats/TCHKSUM_8.h"

quint64 TCHKSUM_8::update(const char* data, qint64 size)
{
    uint sum = 0; // wraps; only its low byte counts
    for (qint64 i = 0; i < size; ++i)
        sum += static_cast<uchar>(data[i]);
    m_state = static_cast<quint8>(m_state - sum);
    return m_state;
}

QByteArray TCHKSUM_8::result()
{
    return bigEndian(m_state, 1);
}
