#pragma once

class TMainPanels;
class TPrjSession;
class TWgtPrjList;

/// What the actions on the list of projects do. Main thread.
class TPrjListActions
{
public:
    /// Both belong to the window.
    TPrjListActions(TMainPanels& panels, TPrjSession& session);

    void create();
    void load();
    /// From the list of lists.
    void select();
    void reload();
    void saveAs();
    void openFolder();
    /// The tree lets nodes be moved, from now on and after the next start.
    void setDragDrop(bool on);

private:
    TMainPanels& m_panels;
    TPrjSession& m_session;
    TWgtPrjList* const m_prjList;
};
