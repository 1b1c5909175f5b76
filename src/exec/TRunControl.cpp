#include "exec/TRunControl.h"

#include "core/model/TDataPrj.h"
#include "exec/IRunView.h"
#include "exec/TExec.h"

#include <QThread>

#include <algorithm>

TRunControl::TRunControl(ViewFinder finder)
    : m_viewFinder(std::move(finder))
{
}

TRunControl::~TRunControl() = default;

bool TRunControl::isRunning(int id_cfg) const
{
    return std::any_of(m_runs.begin(), m_runs.end(), [=](const Run& run) { return run.idCfg == id_cfg; });
}

bool TRunControl::isIdle() const
{
    return m_runs.isEmpty();
}

void TRunControl::start(int id_cfg)
{
    if (isActive(project().cfgStatus(id_cfg)))
        return;
    IRunView* view = m_viewFinder(id_cfg);
    if (!view)
        return;
    view->runBegins();
    setStatus(id_cfg, csRun);

    const Run run{id_cfg, new TExec(id_cfg), new QThread, view};
    m_runs.append(run);
    connectRun(run);
    run.exec->moveToThread(run.thread);
    run.thread->start(QThread::NormalPriority);
}

void TRunControl::connectRun(const Run& run)
{
    QObject* receiver = run.view->receiver();
    QThread* thread = run.thread;
    connect(this, &TRunControl::signalPauseReset, run.exec, &TExec::slotPauseReset);
    connect(this, &TRunControl::signalStop, run.exec, &TExec::slotStop);
    connect(thread, &QThread::started, run.exec, &TExec::slotStart);
    connect(thread, &QThread::finished, this, [this, thread] { threadEnded(thread); });
    // The worker waits until each of these has been handled, so a line is on the screen before it goes on.
    connect(run.exec, SIGNAL(signalEventText(TCodeExec, QString, QString)), receiver,
            SLOT(slotExecEventText(TCodeExec, QString, QString)), Qt::BlockingQueuedConnection);
    connect(run.exec, SIGNAL(signalEventProc(int)), receiver, SLOT(slotExecEventProc(int)),
            Qt::BlockingQueuedConnection);
    connect(
        run.exec, &TExec::signalStopped, receiver, [view = run.view] { view->runStopped(); },
        Qt::BlockingQueuedConnection);
    connect(run.exec, &TExec::signalFinished, thread, &QThread::quit);
    connect(run.exec, &TExec::signalExecuteFromCmd, this, &TRunControl::slotExecuteFromCmd,
            Qt::BlockingQueuedConnection);
    connect(run.exec, &TExec::signalPauseFromCmd, this, &TRunControl::slotPauseFromCmd,
            Qt::BlockingQueuedConnection);
    connect(run.exec, &TExec::signalStatusFromCmd, this, &TRunControl::slotStatusFromCmd,
            Qt::BlockingQueuedConnection);
    connect(run.exec, &TExec::signalFinished, run.exec, &TExec::deleteLater);
    connect(run.exec, &TExec::signalDestroy, this, &TRunControl::slotExecFinished);
}

void TRunControl::stop(int id_cfg)
{
    emit signalStop(id_cfg);
}

void TRunControl::stopAll()
{
    const QList<Run> runs = m_runs;
    for (const Run& run : runs)
        stop(run.idCfg);
}

void TRunControl::resume(int id_cfg)
{
    if (project().cfgStatus(id_cfg) != csPause)
        return;
    setStatus(id_cfg, csRun);
    emit signalPauseReset(id_cfg);
}

void TRunControl::slotExecuteFromCmd(int id_cfg)
{
    start(id_cfg);
}

void TRunControl::slotPauseFromCmd(int id_cfg)
{
    setStatus(id_cfg, csPause);
}

void TRunControl::slotStatusFromCmd(int id_cfg, bool success)
{
    setStatus(id_cfg, success ? csDone : csFailed);
}

void TRunControl::slotExecFinished(int id_cfg)
{
    const auto run =
        std::find_if(m_runs.begin(), m_runs.end(), [=](const Run& r) { return r.idCfg == id_cfg && r.exec; });
    if (run != m_runs.end())
        run->exec = nullptr;
}

void TRunControl::threadEnded(QThread* thread)
{
    const auto run =
        std::find_if(m_runs.begin(), m_runs.end(), [=](const Run& r) { return r.thread == thread; });
    if (run == m_runs.end())
        return;
    const Run ended = *run;
    m_runs.erase(run);
    // finished() is emitted by the thread itself; what is left of it now takes no time and reports nothing.
    thread->wait();
    thread->deleteLater();
    if (!isRunning(ended.idCfg))
        ended.view->runEnded();
    emit signalRunEnded(ended.idCfg);
    if (m_runs.isEmpty())
        emit signalIdle();
}

void TRunControl::setStatus(int id_cfg, int status)
{
    if (project().indexCfg(id_cfg) < 0)
        return;
    project().setCfgStatus(id_cfg, status);
    emit signalStatusChanged(id_cfg, status);
}
