#include "devices/TMemory.h"

#include "formats/chunkSize.h"

qint64 TPieces::at(qint64 addr, qint64 last) const
{
    return qMin(chunkSize(addr, last, chunk), chunkSize(addr, last, border));
}

qint64 TMemory::last() const
{
    constexpr qint64 max = std::numeric_limits<qint64>::max();
    if (region.size < 1)
        return -1;
    return region.begin > max - region.size ? max : region.begin + region.size - 1;
}

qint64 TMemory::lastWritable() const
{
    return qMin(last(), reach - 1);
}

bool TMemory::canWrite(qint64 first, qint64 lastAddr) const
{
    return first >= qMax<qint64>(region.begin, 0) && lastAddr <= lastWritable();
}
