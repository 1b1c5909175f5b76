#pragma once

#include "bytes.h"

#include <cstdio>
#include <memory>
#include <string>

/// The file of all frames, a line each: time of day with microseconds, ">" for a frame to the programmer or
/// "<" for one from it, and its bytes in hexadecimal as they were on the line. Every line is written at once.
class TTrace
{
public:
    /// Starts a new file. False: it cannot be written.
    [[nodiscard]] bool open(const std::string& path);
    /// A frame that arrived; nothing happens without a file.
    void request(const Bytes& frame) { write('>', frame); }
    /// The bytes of a reply; nothing happens without a file.
    void reply(const Bytes& frame) { write('<', frame); }

private:
    struct TClose
    {
        void operator()(std::FILE* stream) const { std::fclose(stream); }
    };

    void write(char direction, const Bytes& frame);

    std::unique_ptr<std::FILE, TClose> file;
};
