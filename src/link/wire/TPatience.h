#pragma once

#include <QElapsedTimer>

/// How long a wait on the line may go on. It is waited for in slices, and of each at most a slice is
/// counted: while the whole machine stands still, neither the programmer could answer nor this process see
/// its answer, and an answer that comes right behind the standstill is not late. Used by one thread.
class TPatience
{
public:
    /// Begins with the first question to it and lasts ms; 0 means that nothing is waited for.
    explicit TPatience(qint64 ms);

    /// Longest next wait in ms, 0 when the time is over.
    int slice();
    bool isOver();
    /// Goes on for so many ms more.
    void extend(qint64 ms);

private:
    void count();

    QElapsedTimer m_clock;
    qint64 m_counted = 0; ///< the clock when the time was counted last, ns
    qint64 m_left;        ///< ns
};
