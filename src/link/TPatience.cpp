#include "link/TPatience.h"

namespace {

constexpr qint64 nsPerMs = 1000000;
constexpr qint64 longestSlice = 50 * nsPerMs;

} // namespace

TPatience::TPatience(qint64 ms)
    : m_left(ms * nsPerMs)
{
    m_clock.start();
}

void TPatience::count()
{
    const qint64 now = m_clock.nsecsElapsed();
    m_left -= qMin(now - m_counted, longestSlice);
    m_counted = now;
}

int TPatience::slice()
{
    count();
    // Rounded up: a wait of 0 ms for the last part of one would be no wait.
    return m_left <= 0 ? 0 : static_cast<int>((qMin(m_left, longestSlice) + nsPerMs - 1) / nsPerMs);
}

bool TPatience::isOver()
{
    count();
    return m_left <= 0;
}

void TPatience::extend(qint64 ms)
{
    m_left += ms * nsPerMs;
}
