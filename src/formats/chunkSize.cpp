#include "formats/chunkSize.h"

qint64 chunkSize(qint64 addr, qint64 addr_last, qint64 block)
{
    if (block < 1 || addr > addr_last)
        return 0;
    const qint64 toBorder = block - addr % block;
    const qint64 last = addr_last - addr; // no overflow at the end of the 64-bit range
    return last < toBorder ? last + 1 : toBorder;
}
