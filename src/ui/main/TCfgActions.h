#pragma once

class TCmdClipboard;
class TMainPanels;
class TPrjSession;
class TWgtPrj;

/// What the actions on the configurations of the open project do. Main thread.
class TCfgActions
{
public:
    /// All of them belong to the window.
    TCfgActions(TMainPanels& panels, TPrjSession& session, TCmdClipboard& clipboard);

    void create();
    void copy();
    void paste();
    void edit();
    void remove();

private:
    void showNew(int id_cfg, int row);
    void removeCfg(int id_cfg);

    TMainPanels& m_panels;
    TPrjSession& m_session;
    TCmdClipboard& m_clipboard;
    TWgtPrj* const m_prj;
};
