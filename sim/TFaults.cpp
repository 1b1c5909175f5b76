#include "TFaults.h"

#include "text.h"

#include <algorithm>

namespace {

struct TKind
{
    const char* word;
    bool TFrameFaults::*flag;
};

const TKind kinds[] = {{"silent", &TFrameFaults::silent},     {"cut", &TFrameFaults::cut},
                       {"checksum", &TFrameFaults::checksum}, {"noise", &TFrameFaults::noise},
                       {"short", &TFrameFaults::shortened},   {"echo", &TFrameFaults::echo},
                       {"hangup", &TFrameFaults::hangup},     {"flip", &TFrameFaults::flip}};

const std::string errorPrefix = "error=";

const TKind* kindOf(const std::string& word)
{
    const auto* const found = std::find_if(std::begin(kinds), std::end(kinds),
                                           [&word](const TKind& kind) { return word == kind.word; });
    return found == std::end(kinds) ? nullptr : found;
}

} // namespace

bool TFaults::add(const std::string& text)
{
    const std::size_t at = text.rfind('@');
    if (at == std::string::npos)
        return false;
    const auto frame = toNumber(text.substr(at + 1), 10, 0x7FFFFFFF);
    const std::string kind = text.substr(0, at);
    if (!frame || *frame == 0)
        return false;
    if (kind.compare(0, errorPrefix.size(), errorPrefix) == 0) {
        const auto code = toNumber(kind.substr(errorPrefix.size()), 10, 0xFFFF);
        if (code)
            faults.push_back({"error", unsigned(*code), *frame});
        return code.has_value();
    }
    if (kindOf(kind) == nullptr)
        return false;
    faults.push_back({kind, 0, *frame});
    return true;
}

TFrameFaults TFaults::at(unsigned long frame) const
{
    TFrameFaults result;
    for (const TFault& fault : faults) {
        if (fault.frame != frame)
            continue;
        if (const TKind* const kind = kindOf(fault.kind))
            result.*(kind->flag) = true;
        else
            result.error = int(fault.code);
    }
    return result;
}
