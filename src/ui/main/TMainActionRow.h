#pragma once

#include "base/texts.h"
#include "ui/main/main_actions.h"

#include <QtGlobal>

class TMainWindow;

/// One action of the main window: what it is called, what it does, when it is on.
struct TMainActionRow
{
    /// What an action may need; it is on while all that it needs holds.
    enum Condition : quint32 {
        Always = 0,
        ListLoaded = 1 << 0,  ///< the project list is loaded
        HasNode = 1 << 1,     ///< the tree has a current node
        HasSubNodes = 1 << 2, ///< the current node has children
        PrjOpen = 1 << 3,     ///< a project is open
        PrjCopied = 1 << 4,   ///< a project has been copied
        CfgCopied = 1 << 5,   ///< a configuration has been copied
        CmdsCopied = 1 << 6,  ///< commands have been copied
        HasCmd = 1 << 7,      ///< a command is current
        HasCmds = 1 << 8,     ///< the current configuration has commands
        SeveralCfgs = 1 << 9, ///< more than one configuration
        NotFirst = 1 << 10,   ///< the current row is not row 0
        NotLast = 1 << 11,    ///< the current row is not the last one
        CanAsk = 1 << 12,     ///< the current command has a programmer, and nothing runs here
        CanReset = 1 << 13,   ///< the current command has a chip with a reset line, and nothing runs here
        Free = 1 << 14,       ///< nothing waits for runs to end
        HasCfg = 1 << 15,     ///< a configuration is shown
    };
    enum Flag : quint8 {
        Plain = 0,
        Check = 1,    ///< checkable
        Focus = 2,    ///< only while the command table has the keyboard focus
        NoRepeat = 4, ///< a held key does it once
    };

    TMainAction id;
    Text text; ///< a text of its own with None
    void (TMainWindow::*slot)();
    const char* hotKey; ///< key in the group of hot keys; null for none
    quint32 needs;
    quint8 flags;

    static const TMainActionRow& of(TMainAction id);
};
