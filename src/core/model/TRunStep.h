#pragma once

#include "base/types.h"

class IDevice;

/// What a worker needs of its next command, taken in one step under the project's lock.
struct TRunStep
{
    /// Whether there is a next command; Gone: the command before it, or the configuration, was deleted
    /// meanwhile, so that nobody knows what comes next.
    enum class State { End, Found, Gone };

    State state = State::End;
    TData data;                ///< the whole command
    IDevice* device = nullptr; ///< class that implements it; null without a chip before it
    bool validDev = false;
    bool validParam = false;
};
