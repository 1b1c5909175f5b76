#include "formats/crc/TCRC.h"

namespace {

// The three loops. State is narrow on purpose: what a shift moves out of it is gone.

template <class State> State foldNarrow(State state, const State* table, const uchar* at, const uchar* end)
{
    for (; at != end; ++at)
        state = table[state ^ *at];
    return state;
}

template <class State> State foldReflected(State state, const State* table, const uchar* at, const uchar* end)
{
    for (; at != end; ++at)
        state = static_cast<State>(state >> 8 ^ table[(state ^ *at) & 0xFF]);
    return state;
}

template <class State>
inline State foldForward(State state, const State* table, int shift, const uchar* at, const uchar* end)
{
    for (; at != end; ++at)
        state = static_cast<State>(state << 8 ^ table[(state >> shift ^ *at) & 0xFF]);
    return state;
}

quint64 firstState(const TCrcParams& params)
{
    if (params.refIn)
        return crcReversed(params.init, params.width);
    return params.init << crcShift(params);
}

} // namespace

template <class State>
TCRC<State>::TCRC(const TCrcParams& params, const State* table)
    : m_state(static_cast<State>(firstState(params)))
    , m_params(params)
    , m_table(table)
{
}

template <class State> quint64 TCRC<State>::update(const char* data, qint64 size)
{
    if (size < 1)
        return m_state;
    const uchar* const begin = reinterpret_cast<const uchar*>(data);
    const uchar* const end = begin + size;
    constexpr int fullWidth = 8 * sizeof(State);
    if constexpr (sizeof(State) == 1)
        m_state = foldNarrow(m_state, m_table, begin, end);
    else if (m_params.refIn)
        m_state = foldReflected(m_state, m_table, begin, end);
    else if (m_params.width == fullWidth) // the same loop, with a shift that the compiler knows
        m_state = foldForward(m_state, m_table, fullWidth - 8, begin, end);
    else
        m_state = foldForward(m_state, m_table, m_params.width - 8, begin, end);
    return m_state;
}

template <class State> QByteArray TCRC<State>::result()
{
    const int width = m_params.width;
    quint64 value = static_cast<quint64>(m_state) >> crcShift(m_params) & crcMask(width);
    if (m_params.refOut != m_params.refIn)
        value = crcReversed(value, width);
    m_state = static_cast<State>(value ^ m_params.xorOut);
    return bigEndian(m_state, (width + 7) / 8);
}

template class TCRC<quint8>;
template class TCRC<quint16>;
template class TCRC<quint32>;
template class TCRC<quint64>;
