#include "link/wire/TPatience.h"

namespace {

constexpr qint64 nsPerMs = 1000000;
constexpr qint64 longestSlice = 50 * nsPerMs;

} // namespace

TPatience::TPatience(qint64 ms)
    : m_left(ms * nsPerMs)
{
}

void TPatience::count()
{
    // Most exchanges wait once or not at all, and looking at the clock is a part of what they cost.
    if (!m_clock.isValid()) {
        m_clock.start();
        return;
    }
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
