#pragma once

#include "TFaults.h"
#include "TFrameReceiver.h"
#include "TOptions.h"
#include "TProgrammer.h"
#include "TPseudoTerminal.h"
#include "TReplySender.h"
#include "TTrace.h"

#include <csignal>

/// The loop between the line and the programmer: one thread, which sleeps until bytes arrive, a reply is due
/// or a signal ends it.
class TSimulator
{
public:
    /// The references must outlive the object; the terminal is open.
    TSimulator(const TOptions& options, TProgrammer& programmer, TPseudoTerminal& terminal, TTrace& trace);

    /// Works until `stop` is set by a signal handler, or a fault hangs up. `waiting` is the signal mask while
    /// it sleeps; the signals that set `stop` must be blocked otherwise. False: the line broke.
    [[nodiscard]] bool run(const volatile std::sig_atomic_t& stop, const sigset_t& waiting);

private:
    void receive(Clock::time_point now);
    void handle(const TFrame& frame);
    [[nodiscard]] TAnswer answerTo(const TFrame& frame, const TFrameFaults& faults);
    void sleep(const sigset_t& waiting);

    const TOptions& options;
    TProgrammer& programmer;
    TPseudoTerminal& terminal;
    TTrace& trace;
    TFrameReceiver receiver;
    TReplySender sender;
    Clock::time_point lineFree; ///< when the bytes received so far are through on the line
    unsigned silentWaits = 0;   ///< without a byte, since the last one
    unsigned long frames = 0;
    bool readable = false;
    bool hungUp = false;
};
