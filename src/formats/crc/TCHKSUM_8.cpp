#include "formats/crc/TCHKSUM_8.h"

quint64 TCHKSUM_8::update(const char* data, qint64 size)
{
    quint8 state = m_state;
    for (qint64 i = 0; i < size; ++i)
        state = static_cast<quint8>(state - static_cast<uchar>(data[i]));
    m_state = state;
    return state;
}

QByteArray TCHKSUM_8::result()
{
    return bigEndian(m_state, 1);
}
