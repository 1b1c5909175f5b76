#pragma once

#include <string>

/// The pseudo-terminal that stands for the serial line, and the symbolic link that programs open it by. The
/// terminal is raw and stays open on the program's side too, so that the line outlives each program that
/// uses it.
class TPseudoTerminal
{
public:
    TPseudoTerminal() = default;
    ~TPseudoTerminal();
    TPseudoTerminal(const TPseudoTerminal&) = delete;
    TPseudoTerminal& operator=(const TPseudoTerminal&) = delete;

    /// Makes the terminal. False, with `error`.
    [[nodiscard]] bool open(std::string& error);
    /// Makes the link. A link to a terminal that is there is replaced, unless a running simulator answers
    /// behind it; a file or a link to anything else stays. False, with `error`.
    [[nodiscard]] bool makeLink(const std::string& path, std::string& error);
    /// Closes the line and removes the link, if it still leads here.
    void close();
    /// Throws away what the program has not taken of an answer, in some milliseconds. A program that clears
    /// its input before a request reaches only the first 4 KiB of it; the kernel holds more behind them.
    void dropUnread() const;
    /// The programmer's end, non-blocking; -1 while closed.
    [[nodiscard]] int descriptor() const { return master; }

private:
    int master = -1;
    int slave = -1;
    std::string terminal;
    std::string link;
};
