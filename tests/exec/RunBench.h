#pragma once

#include "core/model/TDataPrj.h"
#include "exec/IRunView.h"
#include "exec/TRunControl.h"
#include "settings/TAppData.h"
#include "support/TestDir.h"

#include <qtestsupport_core.h>

#include <functional>
#include <map>
#include <memory>

/// One line of a run's log, as a view gets it.
struct LogEvent
{
    int idCfg;
    TCodeExec code;
    QString text1;
    QString text2;
};

/// A view that writes down what it gets.
class RecordingView : public QObject, public IRunView
{
    Q_OBJECT

public:
    using Hook = std::function<void(const LogEvent&)>;

    RecordingView(int id_cfg, QList<LogEvent>* log, const Hook* hook)
        : m_idCfg(id_cfg)
        , m_log(log)
        , m_hook(hook)
    {
    }

    QObject* receiver() override { return this; }
    void runBegins() override { ++begun; }
    void runStopped() override { ++stopped; }
    void runEnded() override { ++ended; }

    int begun = 0;
    int stopped = 0;
    int ended = 0;
    QList<int> percents;

public slots:
    void slotExecEventText(TCodeExec code, QString text1, QString text2)
    {
        m_log->append({m_idCfg, code, text1, text2});
        if (*m_hook)
            (*m_hook)(m_log->last());
    }

    void slotExecEventProc(int procent) { percents.append(procent); }

private:
    const int m_idCfg;
    QList<LogEvent>* m_log;
    const Hook* m_hook;
};

/// A project in memory, its run control and the record of what the runs told. The process-wide project
/// and settings are put back to empty by each new object.
class RunBench
{
public:
    /// The programmer's patience is the shipped one; a test that meets silence asks for a short one, so that
    /// it costs no seconds.
    explicit RunBench(bool isSilent = false);
    ~RunBench();

    /// A programmer at a port, described by the simulator's file.
    void addProgrammer(const QString& alias, const QString& port)
    {
        appData().progNames.append(alias, true, port, "Simulator");
    }

    int addCfg(const QString& name) { return project().addCfg(name, {}, -1); }
    /// A checked command "word key=value ..." at the end of a configuration, with further parameters as key,
    /// value, key, value...
    int addCmd(int id_cfg, const QString& text, const QVariantList& keyValues = {});
    /// set_prog, and set_device if a chip is named.
    void addLink(int id_cfg, const QString& alias, const QString& chip = QString());
    /// Binds and checks all commands as opening a project does.
    void bind();

    TRunControl& control() { return *m_control; }
    /// Starts the configurations and lets the event loop go on until no run is left; false after timeout ms.
    bool run(const QList<int>& ids, int timeoutMs = 20000);
    bool waitIdle(int timeoutMs = 20000)
    {
        return QTest::qWaitFor([this] { return m_control->isIdle(); }, timeoutMs);
    }

    RecordingView& view(int id_cfg);

    /// Called on the main thread with each event, while the worker waits.
    void onEvent(RecordingView::Hook hook) { m_hook = std::move(hook); }
    const QList<LogEvent>& log() const { return m_log; }
    /// The texts of one kind, in their order.
    QStringList texts(TCodeExec code) const;
    /// The last event of all.
    LogEvent last() const { return m_log.isEmpty() ? LogEvent{-1, ceText, {}, {}} : m_log.last(); }

    /// The project's folder, for data files; it goes away with the object.
    const TestDir& dir() const { return m_dir; }

private:
    TestDir m_dir{TestDir::Empty};
    QList<LogEvent> m_log;
    RecordingView::Hook m_hook;
    std::map<int, std::unique_ptr<RecordingView>> m_views;
    std::unique_ptr<TRunControl> m_control;
};
