#pragma once

#include <poll.h>
#include <termios.h>
#include <unistd.h>

// The bare way to speak on a terminal, as a C program would: the reference of the exchanges.

inline bool makeRaw(int line)
{
    termios mode{};
    if (tcgetattr(line, &mode) != 0)
        return false;
    cfmakeraw(&mode);
    return tcsetattr(line, TCSANOW, &mode) == 0;
}

inline bool putAll(int line, const char* bytes, ssize_t size)
{
    for (ssize_t done = 0; done < size;) {
        const ssize_t put = write(line, bytes + done, static_cast<size_t>(size - done));
        if (put <= 0)
            return false;
        done += put;
    }
    return true;
}

inline bool getAll(int line, char* bytes, ssize_t size)
{
    for (ssize_t done = 0; done < size;) {
        pollfd wait{line, POLLIN, 0};
        if (poll(&wait, 1, 5000) <= 0)
            return false;
        const ssize_t got = read(line, bytes + done, static_cast<size_t>(size - done));
        if (got <= 0)
            return false;
        done += got;
    }
    return true;
}
