#pragma once

#include "bytes.h"

#include <string>

/// The file that a chip's main memory is kept in between two runs of the simulator.
class TImage
{
public:
    explicit TImage(std::string file);

    /// Fills the beginning of the memory from the file; without a file the memory stays as it is. False, with
    /// `error`: the file cannot be read, or is larger than the memory (writing it back would cut it off).
    [[nodiscard]] bool load(Bytes& memory, std::string& error) const;
    /// Writes the whole memory. The file has its old contents or the new ones, never a part. False, with
    /// `error`: it could not be written.
    [[nodiscard]] bool save(const Bytes& memory, std::string& error) const;

private:
    std::string file;
};
