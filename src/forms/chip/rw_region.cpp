#include "forms/chip/rw_region.h"

#include "forms/edits/TWgtEditHexDec64.h"

#include <QPair>

using TKeptCount = QPair<qint64, qint64>; ///< what is shown, and what was asked for
Q_DECLARE_METATYPE(TKeptCount)

void setAddressRange(TWgtEditHexDec64* field, const TRegion& region)
{
    field->setRange(region.begin, lastAddress(region.begin, region.size));
    field->setDefaultValue(region.begin);
    field->keepTyped();
}

void setCountRange(TWgtEditHexDec64* field, const TRegion& region, qint64 addr)
{
    const qint64 last = lastAddress(region.begin, region.size);
    const bool isInside = addr >= region.begin && addr <= last;
    field->setRange(1, isInside ? last - addr + 1 : region.size);
}

void fitCount(TWgtEditHexDec64* field, const TRegion& region, qint64 addr)
{
    setCountRange(field, region, addr);
    field->refit();
}

QVariant keptCount(qint64 count, qint64 wish)
{
    return wish == count ? QVariant() : QVariant::fromValue(TKeptCount(count, wish));
}

qint64 wishOfKept(const QVariant& kept, qint64 count)
{
    const auto pair = kept.value<TKeptCount>();
    return kept.isValid() && pair.first == count ? pair.second : count;
}
