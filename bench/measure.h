#pragma once

#include <QElapsedTimer>
#include <QVector>

#include <algorithm>
#include <cstdio>
#include <ctime>

// Times of two ways to do the same, taken in turns, so that what else the machine does meets both.

/// On the clock: for work that other processes or the disk take part in.
template <class Work> double secondsOf(Work work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

/// Of this process's own work: what else the machine does matters less.
template <class Work> double cpuSecondsOf(Work work)
{
    const std::clock_t start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

struct TPair
{
    double ours;
    double reference;
};

/// The shortest time of each.
template <class Ours, class Reference> TPair measure(int rounds, Ours ours, Reference reference)
{
    TPair best{1e9, 1e9};
    for (int round = 0; round < rounds; ++round) {
        best.reference = std::min(best.reference, secondsOf(reference));
        best.ours = std::min(best.ours, secondsOf(ours));
    }
    return best;
}

template <class Ours, class Reference> TPair measureCpu(int rounds, Ours ours, Reference reference)
{
    TPair best{1e9, 1e9};
    for (int round = 0; round < rounds; ++round) {
        best.reference = std::min(best.reference, cpuSecondsOf(reference));
        best.ours = std::min(best.ours, cpuSecondsOf(ours));
    }
    return best;
}
