#pragma once

#include <QObject>

class TLineGate;
class TMainPanels;
class TPrjSession;
class TProgTask;
class TRunControl;
class TWgtConfig;
class TWgtPrj;

/// What the actions on runs do, and what the window does when one changes. Main thread.
class TRunActions : public QObject
{
    Q_OBJECT

public:
    /// All of them belong to the window.
    TRunActions(TMainPanels& panels, TPrjSession& session, TRunControl& runs, TLineGate& gate);
    ~TRunActions() override;

    void start(int id_cfg);
    /// Starts the current configuration after a question, or stops it, or lets it go on.
    void execute();
    void clearCurrent();
    void clearAll();
    void identify();
    void reset();
    /// The worker waits meanwhile.
    void statusChanged(int id_cfg, int status);

signals:
    void signalStop(int id_cfg);
    void signalPauseReset(int id_cfg);

private:
    void pressActive(TWgtConfig* tab, int id_cfg);
    void clearState(int id_cfg);
    void doTask(bool showsPage, bool (TProgTask::*work)());

    TMainPanels& m_panels;
    TPrjSession& m_session;
    TRunControl& m_runs;
    TLineGate& m_gate;
    TWgtPrj* const m_prj;
};
