#pragma once

#include "bytes.h"

#include <chrono>

using Clock = std::chrono::steady_clock;

/// Puts replies on the line: at once, or at the pace of a baud rate (10 bits a byte). What a program does
/// not take yet waits for it: it may be held up.
class TReplySender
{
public:
    /// `baud` 0: no pace.
    explicit TReplySender(unsigned baud);

    /// The time that this many bytes take on the line; none without a pace.
    [[nodiscard]] Clock::duration timeOf(std::size_t bytes) const;
    /// Takes the bytes of a reply of which the first may begin at `from`. Only while idle().
    void queue(Bytes reply, Clock::time_point from);
    /// Nothing is left to send.
    [[nodiscard]] bool isIdle() const { return sent == bytes.size(); }
    /// Writes what is due to the line. False: the line is broken.
    [[nodiscard]] bool send(int descriptor, Clock::time_point now);
    /// Gives up what is left to send.
    void drop();
    /// The last reply was given up in part.
    [[nodiscard]] bool wasDropped() const { return dropped; }
    /// When to call send() again, while not idle and not blocked.
    [[nodiscard]] Clock::time_point nextDue() const;
    /// The line did not take what was due: it must become writable first.
    [[nodiscard]] bool isBlocked() const { return blocked; }
    /// When the line took bytes last.
    [[nodiscard]] Clock::time_point lastTaken() const { return lastTake; }

private:
    [[nodiscard]] std::size_t dueCount(Clock::time_point now) const;

    unsigned baud;
    Bytes bytes;
    std::size_t sent = 0;
    Clock::time_point start;
    Clock::time_point lastTake;
    bool blocked = false;
    bool dropped = false;
};
