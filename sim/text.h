#pragma once

#include "bytes.h"

#include <optional>
#include <string>
#include <vector>

/// Small text functions of the simulator; none of them depends on a locale.

/// `text` without white space at both ends.
std::string trimmed(const std::string& text);

/// The parts of `text` between the separators, at least one.
std::vector<std::string> splitText(const std::string& text, char separator);

/// The whole text as an unsigned number of the given base; nothing when it is none or above `most`.
std::optional<std::uint64_t> toNumber(const std::string& text, int base, std::uint64_t most);

/// The bytes that a text of hexadecimal digits stands for; white space is skipped, and the text ends for
/// this function at the first pair that is not hexadecimal.
Bytes bytesOfHex(const std::string& text);

/// The lines of a text file without line ends (LF or CR LF); nothing when it cannot be read.
std::optional<std::vector<std::string>> readLines(const std::string& path);
