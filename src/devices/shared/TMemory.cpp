#include "devices/shared/TMemory.h"

#include "base/chunkSize.h"

qint64 TPieces::at(qint64 addr, qint64 last) const
{
    return qMin(chunkSize(addr, last, chunk), chunkSize(addr, last, border));
}

qint64 TMemory::last() const
{
    return lastAddress(region.begin, region.size);
}

qint64 TMemory::lastWritable() const
{
    return qMin(last(), reach - 1);
}

bool TMemory::canWrite(qint64 first, qint64 lastAddr) const
{
    return first >= qMax<qint64>(region.begin, 0) && lastAddr <= lastWritable();
}
