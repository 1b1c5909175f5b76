#pragma once

#include "bytes.h"

#include <deque>

/// One frame of the wire protocol as it was received.
struct TFrame
{
    Bytes raw;          ///< all bytes, sync and checksum included
    bool sound = false; ///< the checksum is right

    [[nodiscard]] std::uint8_t command() const { return raw[1]; }
    [[nodiscard]] Bytes payload() const { return Bytes(raw.begin() + 4, raw.end() - 1); }
};

/// Makes a frame: sync 0xC0, command, payload length (16 bits, low byte first), payload, checksum. The
/// payload has at most 65535 bytes.
Bytes makeFrame(std::uint8_t command, const Bytes& payload);

/// Cuts the bytes of the line into frames. Bytes before a sync are dropped. A frame that stops half way is
/// given up by reset(), which the owner calls after a silence.
class TFrameReceiver
{
public:
    /// Takes bytes from the line; the frames that they complete can be taken afterwards.
    void feed(const std::uint8_t* data, std::size_t size);
    /// Takes the oldest complete frame. False: there is none.
    [[nodiscard]] bool take(TFrame& frame);
    /// A frame has begun and is not complete.
    [[nodiscard]] bool isMidFrame() const { return !current.empty(); }
    /// Drops a frame that is not complete.
    void reset() { current.clear(); }

private:
    [[nodiscard]] std::size_t missing() const;

    Bytes current;
    std::deque<TFrame> complete;
};
