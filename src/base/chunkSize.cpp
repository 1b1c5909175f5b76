#include "base/chunkSize.h"

qint64 chunkSize(qint64 addr, qint64 addr_last, qint64 block)
{
    if (block < 1 || addr > addr_last)
        return 0;
    const qint64 inside = addr % block;
    const qint64 toBorder = block - (inside < 0 ? inside + block : inside);
    // Unsigned, so that no pair of addresses overflows.
    const quint64 last = static_cast<quint64>(addr_last) - static_cast<quint64>(addr);
    return last < static_cast<quint64>(toBorder) ? static_cast<qint64>(last) + 1 : toBorder;
}
