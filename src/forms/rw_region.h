#pragma once

#include "misc/TNormCmdParam.h"

class TWgtEditHexDec64;

/// Gives an address field the addresses of a memory, and its begin as the default.
void setAddressRange(TWgtEditHexDec64* field, const TRegion& region);
/// Gives a count field what fits between an address and the end of the memory.
void setCountRange(TWgtEditHexDec64* field, const TRegion& region, qint64 addr);
