#pragma once

#include "base/types.h"

// Reading of what the folder of devices tells about chips and families. Any thread.

/// The keys of a description file; an unreadable file gives none.
TData readDescription(const QString& path);
/// Number of a family on the wire, from types.lst; 0 when it is missing.
int typeNumber(const QString& word);
