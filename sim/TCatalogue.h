#pragma once

#include "TDescription.h"

#include <map>
#include <optional>
#include <string>

/// The folder of the description files: which chips there are, what stands in their files, and which family
/// is meant by the number that a host sends when it selects a chip.
class TCatalogue
{
public:
    /// Reads `devices.lst` and `types.lst` of the folder; a missing one counts as empty.
    explicit TCatalogue(std::string folder);

    /// The description of a chip of `devices.lst`; nothing when the name or its file is not there.
    [[nodiscard]] std::optional<TDescription> chip(const std::string& name) const;

    /// The number in `types.lst` of the description's `prg_type`, 0 without one.
    [[nodiscard]] unsigned typeNumber(const TDescription& description) const;

    /// The family word (`gui_type`) of the chips with this number; empty when no chip has it. The first call
    /// reads the description files of all chips.
    [[nodiscard]] const std::string& familyOf(unsigned number);

private:
    void readFamilies();

    std::string folder;
    std::map<std::string, std::string> files; ///< chip name to file
    std::map<std::string, unsigned> numbers;  ///< word of a type to its number
    std::map<unsigned, std::string> families; ///< number to family word
    bool familiesRead = false;
};
