#pragma once

#include <QStringList>

class IDevice;
class TDataCmd;
class TProg;

/// A command and what it is bound to, taken in one step. All borrowed: they stay valid objects until the
/// project is cleared. All null for a command that is not there; each but the command null where nothing
/// of it is in force.
struct TBinding
{
    TDataCmd* command = nullptr;
    IDevice* device = nullptr; ///< class that implements the command: tools, programmer or family
    IDevice* family = nullptr; ///< the chip in force
    TProg* prog = nullptr;     ///< the programmer in force

    explicit operator bool() const { return command != nullptr; }
    /// Words of the chip's own commands; empty without a chip.
    QStringList familyCommands() const;
    /// Words of the programmer's commands that its description allows; empty without a programmer.
    QStringList progCommands() const;
};
