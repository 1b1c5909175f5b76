#include "base/TLang.h"
#include "core/model/TDataPrj.h"
#include "exec/TProgTask.h"
#include "settings/TAppData.h"
#include "ui/main/TMainWindow.h"
#include "ui/panels/TWgtLogExec.h"
#include "ui/panels/TWgtPrj.h"
#include "ui/window_helpers.h"

#include <QApplication>

void TMainWindow::slotExecuteFromCmd(int id_cfg)
{
    m_runs.start(id_cfg);
}

// The worker waits while this runs: no boxes, no events.
void TMainWindow::slotStatusChanged(int id_cfg, int status)
{
    // A run that another one has started behind the stop.
    if (isWaitingForRuns() && status == csRun)
        QMetaObject::invokeMethod(
            this, [this, id_cfg] { emit signalStop(id_cfg); }, Qt::QueuedConnection);
    updateState();
}

void TMainWindow::slotExecFinished(int)
{
    updateState();
}

void TMainWindow::slotExecCfg()
{
    TWgtConfig* tab = m_prj->current();
    if (!tab)
        return;
    const int id_cfg = tab->idCfg();
    if (isActive(project().cfgStatus(id_cfg))) {
        pressActive(tab, id_cfg);
    } else {
        const QString question =
            project().cfgList().size() == 1 ? langText(384) : langText(385).arg(project().cfgName(id_cfg));
        if (!appData().ConfirmExecConfig || msgAsk(question, this)) {
            if (appData().ExecShowProgExec)
                slotSetViewParamExec();
            slotExecuteFromCmd(id_cfg);
        }
    }
    updateState();
}

/// The start button while the configuration runs or pauses. With Ctrl a pause ends the run.
void TMainWindow::pressActive(TWgtConfig* tab, int id_cfg)
{
    if (appData().ExecShowProgExec)
        slotSetViewParamExec();
    if (project().cfgStatus(id_cfg) == csPause) {
        tab->logExec()->lock(true);
        if (QApplication::keyboardModifiers() != Qt::ControlModifier) {
            emit signalPauseReset(id_cfg);
            return;
        }
    }
    emit signalStop(id_cfg);
}

void TMainWindow::slotExecClearState()
{
    clearState(m_prj->currentCfg());
    updateState();
}

void TMainWindow::slotExecClearAllState()
{
    for (int i = m_prj->count() - 1; i >= 0; --i)
        clearState(m_prj->tabAt(i)->idCfg());
    updateState();
}

void TMainWindow::clearState(int id_cfg)
{
    if (!isActive(project().cfgStatus(id_cfg)))
        project().setCfgStatus(id_cfg, csIdle);
}

void TMainWindow::slotExecIDProg()
{
    doTask(appData().ExecShowProgIDProg, &TProgTask::identify);
}

void TMainWindow::slotExecReset()
{
    if (appData().ConfirmExecReset && !msgAsk(langText(383), this))
        return;
    doTask(appData().ExecShowProgReset, &TProgTask::reset);
}

/// Holds the window up for as long as the programmer takes to answer.
void TMainWindow::doTask(bool showsPage, bool (TProgTask::*work)())
{
    TWgtConfig* tab = m_prj->current();
    if (!tab)
        return;
    if (appData().ExecClearWindow)
        tab->logExec()->clear();
    if (showsPage)
        slotSetViewParamExec();
    TProgTask task(m_prj->currentCmd());
    // Past the tab's slot, which lets events in: a click must not reach this window in the middle.
    connect(&task, &TProgTask::signalEventText, tab->logExec(),
            [log = tab->logExec()](TCodeExec code, const QString& text1, const QString& text2) {
                log->addEvent(code, text1, text2);
                log->repaint();
            });
    QApplication::setOverrideCursor(Qt::WaitCursor);
    (task.*work)();
    QApplication::restoreOverrideCursor();
    updateState();
}
