#pragma once

#include <string>
#include <vector>

/// What goes wrong with one frame; several faults may meet in one.
struct TFrameFaults
{
    bool silent = false;    ///< the request is carried out, no reply goes out
    bool cut = false;       ///< the reply stops half way
    bool checksum = false;  ///< the reply's checksum is wrong
    bool noise = false;     ///< bytes stand before the reply's sync
    int error = -1;         ///< the request is not carried out, the reply is an error with this code
    bool shortened = false; ///< the reply's payload lacks its last byte; nothing where there is no payload
    bool echo = false;      ///< a chip instruction (opcode 7) is answered with a wrong echo
    bool hangup = false;    ///< the line is closed in place of a reply, and the simulator ends
    bool flip = false;      ///< bit 5 of the last byte of the chip's answer (opcodes 1 to 7) is wrong
};

/// The faults that the user asked for, by the number of the request frame they meet. Frames count from 1
/// since the start; every frame that was received whole counts, one with a wrong checksum too.
class TFaults
{
public:
    /// Adds a fault given as `KIND@N`, N from 1 up, `error=CODE@N` for the error reply. False: not readable.
    [[nodiscard]] bool add(const std::string& text);
    /// What goes wrong with the frame of this number.
    [[nodiscard]] TFrameFaults at(unsigned long frame) const;

private:
    struct TFault
    {
        std::string kind;
        unsigned code;
        unsigned long frame;
    };

    std::vector<TFault> faults;
};
