#pragma once

#include "chips/IChipFamily.h"

#include <memory>
#include <string>

/// Makes the family of a `gui_type` word. `socket` is the chip that is in the socket; null: no chip of this
/// family. Null result, with `error`: the word is not known, or the description makes no chip.
std::unique_ptr<IChipFamily> makeFamily(const std::string& word, const TSocket* socket, std::string& error);
