#pragma once

#include "bytes.h"

#include <utility>

/// Error codes of an error reply, as the protocol numbers them.
enum class ErrorCode {
    unspecified = 0,
    unknownCommand = 1,
    wrongLength = 2,
    wrongParameter = 3,
    badChecksum = 4,
    noDevice = 5,
    unsupportedDevice = 6,
    deviceSilent = 7
};

/// What the programmer has to say to one request: the payload of a good reply, or an error code.
struct TAnswer
{
    Bytes payload;
    int error = -1;      ///< code of the error reply, -1 for a good reply
    unsigned waitMs = 0; ///< milliseconds that the chip is busy before the reply can go out

    [[nodiscard]] bool refused() const { return error >= 0; }

    static TAnswer done(unsigned waitMs = 0) { return {{}, -1, waitMs}; }
    static TAnswer data(Bytes payload) { return {std::move(payload), -1, 0}; }
    static TAnswer refuse(ErrorCode code) { return {{}, int(code), 0}; }
};
