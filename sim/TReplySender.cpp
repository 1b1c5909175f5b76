#include "TReplySender.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>
#include <utility>

namespace {

/// Bytes of a fast line go out in lots of this length, since no timer is finer.
constexpr auto lot = std::chrono::milliseconds(1);
constexpr std::uint64_t bitsPerByte = 10;

} // namespace

TReplySender::TReplySender(unsigned rate)
    : baud(rate)
{
}

Clock::duration TReplySender::timeOf(std::size_t count) const
{
    if (baud == 0)
        return Clock::duration::zero();
    return std::chrono::nanoseconds(std::uint64_t(count) * bitsPerByte * 1000000000U / baud);
}

void TReplySender::queue(Bytes reply, Clock::time_point from)
{
    bytes = std::move(reply);
    sent = 0;
    start = from;
    lastTake = from;
    blocked = false;
    dropped = false;
}

void TReplySender::drop()
{
    sent = bytes.size();
    dropped = true;
}

std::size_t TReplySender::dueCount(Clock::time_point now) const
{
    if (now < start)
        return 0;
    if (baud == 0 || now - start >= timeOf(bytes.size()))
        return bytes.size();
    const auto passed = std::chrono::duration_cast<std::chrono::microseconds>(now - start).count();
    return std::size_t(std::uint64_t(passed) * baud / (bitsPerByte * 1000000U));
}

bool TReplySender::send(int descriptor, Clock::time_point now)
{
    blocked = false;
    const std::size_t due = std::min(dueCount(now), bytes.size());
    while (sent < due) {
        const ssize_t put = write(descriptor, bytes.data() + sent, due - sent);
        if (put < 0 && errno == EINTR)
            continue;
        if (put < 0 && errno != EAGAIN)
            return false;
        if (put <= 0) {
            blocked = true;
            break;
        }
        sent += std::size_t(put);
        lastTake = now;
    }
    return true;
}

Clock::time_point TReplySender::nextDue() const
{
    const Clock::time_point byte = start + timeOf(sent + 1);
    const Clock::time_point end = start + timeOf(bytes.size());
    return std::min(end, byte + lot);
}
