#include "text.h"

#include <fstream>

namespace {

int digitValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'z')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'Z')
        return c - 'A' + 10;
    return 99;
}

bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace

std::string trimmed(const std::string& text)
{
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && isSpace(text[begin]))
        begin++;
    while (end > begin && isSpace(text[end - 1]))
        end--;
    return text.substr(begin, end - begin);
}

std::vector<std::string> splitText(const std::string& text, char separator)
{
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == separator)
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

std::optional<std::uint64_t> toNumber(const std::string& text, int base, std::uint64_t most)
{
    std::string digits = trimmed(text);
    if (base == 16 && digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X'))
        digits.erase(0, 2);
    if (digits.empty())
        return {};
    std::uint64_t value = 0;
    for (const char c : digits) {
        const int digit = digitValue(c);
        if (digit >= base || unsigned(digit) > most || value > (most - unsigned(digit)) / unsigned(base))
            return {};
        value = value * unsigned(base) + unsigned(digit);
    }
    return value;
}

Bytes bytesOfHex(const std::string& text)
{
    std::string digits;
    for (const char c : text) {
        if (!isSpace(c))
            digits += c;
    }
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        const int high = digitValue(digits[i]);
        const int low = digitValue(digits[i + 1]);
        if (high > 15 || low > 15)
            break;
        bytes.push_back(std::uint8_t(high * 16 + low));
    }
    return bytes;
}

std::optional<std::vector<std::string>> readLines(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return {};
    std::vector<std::string> lines;
    std::string line;
    while (std::getline(file, line)) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        lines.push_back(line);
    }
    if (file.bad())
        return {};
    return lines;
}
