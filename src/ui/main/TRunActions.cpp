#include "ui/main/TRunActions.h"

#include "base/TLang.h"
#include "core/model/TDataPrj.h"
#include "exec/TLineGate.h"
#include "exec/TProgTask.h"
#include "exec/TRunControl.h"
#include "settings/TAppData.h"
#include "ui/main/TMainPanels.h"
#include "ui/main/TPrjSession.h"
#include "ui/panels/TWgtLogExec.h"
#include "ui/panels/TWgtPrj.h"
#include "ui/window_helpers.h"

#include <QApplication>

TRunActions::TRunActions(TMainPanels& panels, TPrjSession& session, TRunControl& runs, TLineGate& gate)
    : m_panels(panels)
    , m_session(session)
    , m_runs(runs)
    , m_gate(gate)
    , m_prj(panels.prj())
{
}

TRunActions::~TRunActions() = default;

void TRunActions::start(int id_cfg)
{
    m_runs.start(id_cfg);
}

// The worker waits while this runs: no boxes, no events.
void TRunActions::statusChanged(int id_cfg, int status)
{
    // A run that another one has started behind the stop.
    if (m_session.isWaitingForRuns() && status == csRun)
        QMetaObject::invokeMethod(
            this, [this, id_cfg] { emit signalStop(id_cfg); }, Qt::QueuedConnection);
    m_panels.updateState();
}

void TRunActions::execute()
{
    TWgtConfig* tab = m_prj->current();
    if (!tab)
        return;
    const int id_cfg = tab->idCfg();
    if (isActive(project().cfgStatus(id_cfg))) {
        pressActive(tab, id_cfg);
    } else {
        const QString question = project().cfgList().size() == 1
                                     ? langText(Text::AskExecute)
                                     : langText(Text::AskExecuteCfg).arg(project().cfgName(id_cfg));
        if (!appData().ConfirmExecConfig || msgAsk(question, m_panels.window())) {
            if (appData().ExecShowProgExec)
                m_panels.setPage(TWgtConfig::PageExec);
            start(id_cfg);
        }
    }
    m_panels.updateState();
}

/// The start button while the configuration runs or pauses. With Ctrl a pause ends the run.
void TRunActions::pressActive(TWgtConfig* tab, int id_cfg)
{
    if (appData().ExecShowProgExec)
        m_panels.setPage(TWgtConfig::PageExec);
    if (project().cfgStatus(id_cfg) == csPause) {
        tab->logExec()->lock(true);
        if (QApplication::keyboardModifiers() != Qt::ControlModifier) {
            emit signalPauseReset(id_cfg);
            return;
        }
    }
    emit signalStop(id_cfg);
}

void TRunActions::clearCurrent()
{
    clearState(m_prj->currentCfg());
    m_panels.updateState();
}

void TRunActions::clearAll()
{
    for (int i = m_prj->count() - 1; i >= 0; --i)
        clearState(m_prj->tabAt(i)->idCfg());
    m_panels.updateState();
}

void TRunActions::clearState(int id_cfg)
{
    if (!isActive(project().cfgStatus(id_cfg)))
        project().setCfgStatus(id_cfg, csIdle);
}

void TRunActions::identify()
{
    doTask(appData().ExecShowProgIDProg, &TProgTask::identify);
}

void TRunActions::reset()
{
    if (appData().ConfirmExecReset && !msgAsk(langText(Text::AskReset), m_panels.window()))
        return;
    doTask(appData().ExecShowProgReset, &TProgTask::reset);
}

/// Takes as long as the programmer takes to answer. The window is drawn meanwhile and runs go on; what the
/// user does waits.
void TRunActions::doTask(bool showsPage, bool (TProgTask::*work)())
{
    TWgtConfig* tab = m_prj->current();
    if (!tab)
        return;
    if (appData().ExecClearWindow)
        tab->logExec()->clear();
    if (showsPage)
        m_panels.setPage(TWgtConfig::PageExec);
    TProgTask task(m_prj->currentCmd());
    // Past the tab's slot, which lets events in: a click must not reach this window in the middle.
    connect(&task, &TProgTask::signalEventText, tab->logExec(),
            [log = tab->logExec()](TCodeExec code, const QString& text1, const QString& text2) {
                log->addEvent(code, text1, text2);
                log->repaint();
            });
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_gate.holdWhile([&] { (task.*work)(); });
    QApplication::restoreOverrideCursor();
    m_panels.updateState();
}
