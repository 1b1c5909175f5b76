#pragma once

class QObject;

/// Where the log and the progress of a configuration's run go: a tab of the window, or the console.
/// Main thread.
class IRunView
{
public:
    virtual ~IRunView() = default;

    /// The object that receives the run's events, on the main thread. It has the slots
    /// slotExecEventText(TCodeExec, QString, QString) and slotExecEventProc(int). It must live until
    /// runEnded().
    virtual QObject* receiver() = 0;
    /// A run begins: the log is locked against selection and follows the output.
    virtual void runBegins() = 0;
    /// The run ends because the user asked for it: its closing line, which follows, is no success.
    virtual void runStopped() = 0;
    /// The run is over and will send nothing more.
    virtual void runEnded() = 0;
};
