#include "TCatalogue.h"

#include "text.h"

#include <algorithm>
#include <utility>

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

Pairs readPairs(const std::string& path)
{
    Pairs pairs;
    for (const std::string& raw : readLines(path).value_or(std::vector<std::string>())) {
        const std::string line = trimmed(raw);
        const std::size_t equals = line.find('=');
        if (!line.empty() && line[0] != '#' && equals != std::string::npos)
            pairs.emplace_back(line.substr(0, equals), line.substr(equals + 1));
    }
    return pairs;
}

/// Lists that were written under Windows separate folders by a backslash.
std::optional<std::vector<std::string>> readDescription(const std::string& folder, std::string file)
{
    const std::string path = !file.empty() && file[0] == '/' ? file : folder + '/' + file;
    if (auto lines = readLines(path))
        return lines;
    std::replace(file.begin(), file.end(), '\\', '/');
    return readLines(folder + '/' + file);
}

} // namespace

TCatalogue::TCatalogue(std::string path)
    : folder(std::move(path))
{
    for (const auto& [name, file] : readPairs(folder + "/devices.lst"))
        files[name] = file;
    for (const auto& [word, number] : readPairs(folder + "/types.lst"))
        numbers.emplace(word, unsigned(toNumber(number, 10, 0xFFFF).value_or(0)));
}

std::optional<TDescription> TCatalogue::chip(const std::string& name) const
{
    const auto found = files.find(name);
    if (found == files.end())
        return {};
    const auto lines = readDescription(folder, found->second);
    if (!lines)
        return {};
    return TDescription::fromLines(*lines);
}

unsigned TCatalogue::typeNumber(const TDescription& description) const
{
    const auto found = numbers.find(description.text("prg_type"));
    return found == numbers.end() ? 0 : found->second;
}

const std::string& TCatalogue::familyOf(unsigned number)
{
    static const std::string none;
    if (!familiesRead)
        readFamilies();
    const auto found = families.find(number);
    return number == 0 || found == families.end() ? none : found->second;
}

void TCatalogue::readFamilies()
{
    familiesRead = true;
    for (const auto& entry : files) {
        if (const auto description = chip(entry.first))
            families.emplace(typeNumber(*description), description->text("gui_type"));
    }
}
