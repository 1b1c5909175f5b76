#include "TDescription.h"

#include "text.h"

#include <algorithm>

namespace {

struct TBase
{
    char type;
    int base;
};

const TBase bases[] = {{'d', 10}, {'D', 10}, {'u', 10}, {'U', 10}, {'x', 16}, {'X', 16},
                       {'b', 2},  {'B', 2},  {'o', 8},  {'O', 8},  {'s', 10}};

const std::string knownTypes = "sdDuUxXbBoOfFl";

int baseOf(char type)
{
    const auto* const found = std::find_if(std::begin(bases), std::end(bases),
                                           [type](const TBase& row) { return row.type == type; });
    return found == std::end(bases) ? 0 : found->base;
}

struct TLine
{
    std::string key;
    char type = 0;
    std::string value;
};

/// The three fields of a line; a type of 0 says that the line does not count.
TLine fieldsOf(const std::string& line)
{
    if (line.empty() || line[0] == '#')
        return {};
    const std::size_t equals = line.find('=');
    const std::size_t bar = equals == std::string::npos ? equals : line.find('|', equals);
    if (bar == std::string::npos)
        return {};
    const std::string type = trimmed(line.substr(equals + 1, bar - equals - 1));
    if (type.size() != 1 || knownTypes.find(type[0]) == std::string::npos)
        return {};
    return {trimmed(line.substr(0, equals)), type[0], line.substr(bar + 1)};
}

} // namespace

TDescription TDescription::fromLines(const std::vector<std::string>& lines)
{
    TDescription description;
    std::string listKey;
    std::vector<std::string> items;
    for (const std::string& line : lines) {
        const TLine fields = fieldsOf(line);
        if (fields.type == 'l') {
            if (!items.empty() && fields.key != listKey)
                description.closeList(listKey, items);
            listKey = fields.key;
            items.push_back(fields.value);
        } else if (fields.type != 0) {
            description.values[fields.key] = {fields.type, fields.value, {}};
        }
    }
    if (!items.empty())
        description.closeList(listKey, items);
    return description;
}

void TDescription::closeList(std::string& key, std::vector<std::string>& items)
{
    values[key] = {'l', {}, items};
    items.clear();
}

std::string TDescription::text(const std::string& key) const
{
    const auto found = values.find(key);
    return found == values.end() ? std::string() : found->second.text;
}

std::vector<std::string> TDescription::list(const std::string& key) const
{
    const auto found = values.find(key);
    return found == values.end() ? std::vector<std::string>() : found->second.items;
}

std::uint64_t TDescription::number(const std::string& key) const
{
    const auto found = values.find(key);
    if (found == values.end())
        return 0;
    const int base = baseOf(found->second.type);
    return base == 0 ? 0 : toNumber(found->second.text, base, UINT64_MAX).value_or(0);
}

Bytes TDescription::bytes(const std::string& key) const
{
    return bytesOfHex(text(key));
}
