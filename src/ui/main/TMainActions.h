#pragma once

#include "base/texts.h"
#include "ui/main/main_actions.h"

#include <QObject>

#include <array>

class QAction;
class TActionState;
class TCmdClipboard;
class TLineGate;
class TMainPanels;
class TMainWindow;

/// The actions of the main window with their texts and keys. Main thread.
class TMainActions : public QObject
{
    Q_OBJECT

public:
    /// Makes the actions, which the window owns. One that is triggered waits for the line that a run is
    /// writing, and does not begin within another one.
    TMainActions(TMainWindow& window, TMainPanels& panels, TLineGate& gate);
    ~TMainActions() override;

    QAction* at(TMainAction id) const { return m_actions.at(id); }
    /// What is on, and texts that tell what would be deleted or pasted.
    void refresh(const TActionState& state, const TCmdClipboard& clipboard);
    /// The check marks of what is a setting.
    void takeSettings();

private:
    QAction* create(TMainAction id);
    void trigger(TMainAction id);
    void refreshDeleteTexts();
    void refreshPasteTexts(const TCmdClipboard& clipboard);
    /// The action's own text with the name of what would be pasted; nothing without a name.
    void setPasteText(TMainAction id, Text text, const QString& name);

    TMainWindow& m_window;
    TMainPanels& m_panels;
    TLineGate& m_gate;
    std::array<QAction*, maCount> m_actions{};
};
