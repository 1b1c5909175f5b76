#include "forms/rw_region.h"

#include "forms/TWgtEditHexDec64.h"

void setAddressRange(TWgtEditHexDec64* field, const TRegion& region)
{
    field->setRange(region.begin, lastAddress(region.begin, region.size));
    field->setDefaultValue(region.begin);
}

void setCountRange(TWgtEditHexDec64* field, const TRegion& region, qint64 addr)
{
    // An address that lies outside, as a damaged project may have it, leaves room for one byte.
    const qint64 last = lastAddress(region.begin, region.size);
    const bool isInside = addr >= region.begin && addr <= last;
    field->setRange(1, isInside ? last - addr + 1 : 1);
}
