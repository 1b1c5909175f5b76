#include "TFrameReceiver.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <utility>

namespace {

constexpr std::uint8_t sync = 0xC0;
constexpr std::size_t headSize = 4;

std::uint8_t sumOf(const Bytes& bytes)
{
    return std::accumulate(bytes.begin(), bytes.end(), std::uint8_t(0),
                           [](std::uint8_t sum, std::uint8_t byte) { return std::uint8_t(sum + byte); });
}

} // namespace

Bytes makeFrame(std::uint8_t command, const Bytes& payload)
{
    Bytes frame;
    frame.reserve(payload.size() + headSize + 1);
    frame = {sync, command, std::uint8_t(payload.size()), std::uint8_t(payload.size() >> 8)};
    frame.insert(frame.end(), payload.begin(), payload.end());
    frame.push_back(std::uint8_t(-sumOf(frame)));
    return frame;
}

std::size_t TFrameReceiver::missing() const
{
    if (current.size() < headSize)
        return headSize - current.size();
    return le16(current, 2) + headSize + 1 - current.size();
}

void TFrameReceiver::feed(const std::uint8_t* data, std::size_t size)
{
    while (size > 0) {
        if (current.empty()) {
            const auto* const start = static_cast<const std::uint8_t*>(std::memchr(data, sync, size));
            if (start == nullptr)
                return;
            size -= std::size_t(start - data);
            data = start;
        }
        const std::size_t part = std::min(missing(), size);
        current.insert(current.end(), data, data + part);
        data += part;
        size -= part;
        if (missing() == 0) {
            const bool sound = sumOf(current) == 0;
            complete.push_back({std::exchange(current, {}), sound});
        }
    }
}

bool TFrameReceiver::take(TFrame& frame)
{
    if (complete.empty())
        return false;
    frame = std::move(complete.front());
    complete.pop_front();
    return true;
}
