#pragma once

#include "console/TArguments.h"
#include "console/TInterrupt.h"
#include "console/TPauseInput.h"
#include "console/TRunOutput.h"
#include "console/TRunView.h"
#include "exec/TRunControl.h"

#include <QObject>

#include <map>
#include <memory>

/// The word "run": opens the project, runs the wanted configurations side by side, answers pauses and
/// signals, tells how it went. Main thread, whose event loop runs all the time.
class TRunSession : public QObject
{
    Q_OBJECT

public:
    explicit TRunSession(const TArguments& arguments);
    ~TRunSession() override;

    /// The exit code of the program.
    int run();

private:
    [[nodiscard]] bool setPorts() const;
    [[nodiscard]] bool open();
    bool findConfigs();
    void startAll();
    IRunView* viewOf(int id_cfg);
    void statusChanged(int id_cfg, int status);
    void paused(int id_cfg);
    void interrupted();
    QList<int> pausedConfigs() const;
    void resumePaused();
    void stopPaused();
    void stopLater(int id_cfg);
    int finish();

    const TArguments m_arguments;
    TRunOutput m_output;
    /// From the moment that there is a run to end well: until then a signal ends the process as usual.
    std::unique_ptr<TInterrupt> m_interrupt;
    TPauseInput m_input;
    std::map<int, std::unique_ptr<TRunView>> m_views;
    TRunControl m_control;
    QList<int> m_configs; ///< to be started
    bool m_failed = false;
    bool m_interrupted = false;
};
