#pragma once

#include "bytes.h"

#include <map>
#include <string>
#include <vector>

/// The keys of one chip description file: lines of the form `key = type | value`. A line that is empty,
/// begins with "#", lacks "=" or "|", or has an unknown type is skipped; a repeated key overwrites. The
/// value is all that stands behind the first "|", untrimmed. Lines of type `l` with one key in turn make a
/// list.
class TDescription
{
public:
    /// Reads the lines of a description file.
    static TDescription fromLines(const std::vector<std::string>& lines);

    /// The value as it stands; empty when the key is missing or a list.
    [[nodiscard]] std::string text(const std::string& key) const;
    /// The items of a list; empty when the key is missing or no list.
    [[nodiscard]] std::vector<std::string> list(const std::string& key) const;
    /// The value as a number, read in the base of its type. Missing, negative, or not a number: 0.
    [[nodiscard]] std::uint64_t number(const std::string& key) const;
    /// The value of hexadecimal digits as bytes.
    [[nodiscard]] Bytes bytes(const std::string& key) const;

private:
    struct TValue
    {
        char type = 's';
        std::string text;
        std::vector<std::string> items;
    };

    void closeList(std::string& key, std::vector<std::string>& items);

    std::map<std::string, TValue> values;
};
