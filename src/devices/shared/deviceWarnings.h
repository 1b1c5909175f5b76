#pragma once

#include "base/types.h"

#include <QStringList>

/// What a chip's description warns of, in the words of the language table where the description gives the
/// number of a text. Empty for most chips.
QStringList deviceWarnings(const TData& description);
