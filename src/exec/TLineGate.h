#pragma once

#include <QList>
#include <QObject>

#include <functional>

/// Lets the events of the window in between the log lines of its runs, and holds back meanwhile what must
/// not begin within a line. One for a window; it outlives all that it is handed to. Main thread.
class TLineGate : public QObject
{
    Q_OBJECT

public:
    TLineGate();
    ~TLineGate() override;

    /// Keeps the window alive during a burst of lines: processes events, unless it stands in the line of
    /// another run. The caller may be gone afterwards.
    void letEventsIn();
    /// Does work that lets events in by itself. Within it, as within a line, lines let nothing in, and what
    /// must not begin waits for its end.
    void holdWhile(const std::function<void()>& work);
    /// Does step at once or, inside a line that a run is writing to a log, as soon as that line is done:
    /// a box or a dialog that opens within a line would hold its run up. Nothing when receiver has gone.
    void betweenLines(QObject* receiver, const std::function<void()>& step);

private:
    void doWaiting();

    /// Events are being let in within a line.
    bool m_isLetIn = false;
    /// What the user has asked for within a line, to be done behind it.
    QList<std::function<void()>> m_waiting;
};
