#pragma once

#include "base/types.h"

#include <QList>
#include <QObject>

#include <functional>

class IRunView;
class QThread;
class TExec;

/// The runs of the open project: starts a configuration on a thread of its own, stops and resumes it,
/// keeps its status. Lives on the main thread, which it never blocks: a worker that reports waits for
/// the main thread, so the main thread must not wait for a worker.
class TRunControl : public QObject
{
    Q_OBJECT

public:
    /// Finds the view of a configuration, borrowed; null when it has none and so cannot be started.
    using ViewFinder = std::function<IRunView*(int id_cfg)>;

    explicit TRunControl(ViewFinder finder);
    /// Only when isIdle().
    ~TRunControl() override;

    /// A run of the configuration has not ended, or its thread is still winding down.
    bool isRunning(int id_cfg) const;
    /// No run and no thread is left: what the runs used may be deleted.
    bool isIdle() const;

public slots:
    /// Starts the configuration. Nothing when its status says that it is active or it has no view.
    void start(int id_cfg);
    /// Asks the run to end. The status changes when it has ended.
    void stop(int id_cfg);
    void stopAll();
    /// Lets a paused run go on; nothing at any other status.
    void resume(int id_cfg);

signals:
    // To the workers, which compare the number.
    void signalStop(int id_cfg);
    void signalPauseReset(int id_cfg);
    /// The status of a configuration has changed. Emitted while the worker waits, so a receiver is quick.
    void signalStatusChanged(int id_cfg, int status);
    /// The run is over and its thread has ended.
    void signalRunEnded(int id_cfg);
    /// isIdle() has become true.
    void signalIdle();

private slots:
    void slotExecuteFromCmd(int id_cfg);
    void slotPauseFromCmd(int id_cfg);
    void slotStatusFromCmd(int id_cfg, bool success);
    void slotExecFinished(int id_cfg);

private:
    struct Run
    {
        int idCfg;
        TExec* exec; ///< null once it has deleted itself
        QThread* thread;
        IRunView* view;
    };

    void connectRun(const Run& run);
    void threadEnded(QThread* thread);
    void setStatus(int id_cfg, int status);

    ViewFinder m_viewFinder;
    /// In the order of their start. One configuration may stand here twice for a moment: while a run
    /// that has told its result winds down, the next one may begin.
    QList<Run> m_runs;
};
