#pragma once

#include "base/types.h"

#include <QObject>

class IDeviceExec;
class TSerialPort;
struct TRunStep;

/// One run of one configuration. Lives on its own worker thread, where slotStart is the whole run; all
/// that it reports leaves by signals, signalFinished last, on every path. The stop flag is touched on
/// the worker thread only: slotStop arrives as a queued call when the run processes events.
class TExec : public QObject
{
    Q_OBJECT

public:
    /// id_cfg is the configuration that is started; a jump into another one does not change it.
    explicit TExec(int id_cfg);
    ~TExec() override;

public slots:
    /// The run, from the first command to the closed port. Returns when it is over.
    void slotStart();
    /// Asks the run of that configuration to end after the piece of work in hand.
    void slotStop(int id_cfg);
    /// Lets a pause of that configuration go on.
    void slotPauseReset(int id_cfg);

private slots:
    void slotPauseBegun();

signals:
    void signalEventText(TCodeExec code, QString text1, QString text = QString());
    /// Progress of the current command, 0 to 100.
    void signalEventProc(int procent);
    void signalFinished();
    void signalDestroy(int id_cfg);
    /// To the current executor.
    void signalStop();
    void signalPauseReset();
    /// A command asks to start another configuration.
    void signalExecuteFromCmd(int id_cfg);
    /// A pause has begun in the run of this configuration.
    void signalPauseFromCmd(int id_cfg);
    /// The run ends well because it was stopped; the closing line follows.
    void signalStopped();
    /// Final result of the run.
    void signalStatusFromCmd(int id_cfg, bool status);

private:
    struct Run;

    [[nodiscard]] bool runCommands(Run& run);
    [[nodiscard]] bool runCommand(Run& run, const TRunStep& step);
    [[nodiscard]] bool leaveProgrammer(Run& run);
    /// Sends the closing frame; where it fails and nothing else has, that is the reason of the failure.
    [[nodiscard]] bool closeLink(Run& run);
    [[nodiscard]] bool reportInvalid(Run& run, const TRunStep& step, const QString& title);
    void connectExec(IDeviceExec* exec, const QString& word);
    void finish(Run& run, bool result);

    const int m_idCfg;
    bool m_stop = false;
};
