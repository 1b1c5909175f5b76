#pragma once

#include "ui/main/TMainActionRow.h"

class TCmdClipboard;
class TMainPanels;

/// What holds at a moment in the main window, and which actions are on then. Main thread.
class TActionState
{
public:
    /// What holds now.
    TActionState(const TMainPanels& panels, const TCmdClipboard& clipboard, bool isFree);

    /// All of these conditions hold, as TMainActionRow names them.
    bool holds(quint32 conditions) const { return (m_holding & conditions) == conditions; }
    bool isOn(TMainAction id) const { return holds(TMainActionRow::of(id).needs); }

private:
    void addIf(TMainActionRow::Condition condition, bool holds);
    void addCmd(const TMainPanels& panels);
    void addRuns(const TMainPanels& panels);

    quint32 m_holding = 0;
};
