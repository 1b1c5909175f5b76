#pragma once

#include <QtGlobal>

class TSerialPort;

// Frames to the programmer itself that belong to no command. Each is one exchange on the thread of the
// port; false when the port is closed, else the result of the exchange.

/// States of the programmer's indicator.
enum TProgState : quint8 { progIdle = 0, progBusy = 1, progFailure = 2, progIdentify = 3 };

[[nodiscard]] bool progSetStatus(TSerialPort* port, TProgState state);
/// The programmer may let go of the chip.
[[nodiscard]] bool progCloseLink(TSerialPort* port);
/// duration in ms; its sign is the polarity of the pulse.
[[nodiscard]] bool progResetPulse(TSerialPort* port, int duration);
