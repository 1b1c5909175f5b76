#pragma once

#include "misc/TNormCmdParam.h"

#include <QVariant>

class TWgtEditHexDec64;

/// Gives an address field the addresses of a memory, and its begin as the default. An address outside that
/// the user types is marked and kept: another one in its place would be written without anybody's wish.
void setAddressRange(TWgtEditHexDec64* field, const TRegion& region);
/// Gives a count field what fits between an address and the end of the memory; with an address outside, what
/// the memory has.
void setCountRange(TWgtEditHexDec64* field, const TRegion& region, qint64 addr);
/// The same after a change of the address by the user: what the field asks for is cut, and grows back as far
/// as there is room again.
void fitCount(TWgtEditHexDec64* field, const TRegion& region, qint64 addr);

/// For TFormCommand::kept: what a count was before it was cut; invalid when it was not.
QVariant keptCount(qint64 count, qint64 wish);
/// What the count that was kept asked for; count itself if it is no longer the one that was cut.
qint64 wishOfKept(const QVariant& kept, qint64 count);
