#pragma once

#include "ui/main/main_actions.h"

#include <QFrame>

#include <array>

class TActionState;
class TButtonAction;
class TMainActions;
class TMainPanels;

/// The tool buttons above the panels of the main window. Main thread.
class TMainToolBar : public QFrame
{
    Q_OBJECT

public:
    TMainToolBar(const TMainActions& actions, const TMainPanels& panels);
    ~TMainToolBar() override;

    TButtonAction* button(TMainButton id) const { return m_buttons.at(id); }
    /// What is shown, and what the start button means.
    void refresh(const TActionState& state);
    /// The save button tells whether the project is changed.
    void setChanged(bool changed);

private:
    struct ButtonRow;

    TButtonAction* createButton(const ButtonRow& row);
    void refreshExecute();

    const TMainActions& m_actions;
    const TMainPanels& m_panels;
    std::array<TButtonAction*, mbCount> m_buttons{};
    QWidget* m_right = nullptr; ///< what is shown with a project only
    bool m_showsChange = false; ///< the save button has the icon of a changed project
};
