#pragma once

#include <QObject>

class QSocketNotifier;

/// Turns SIGINT, SIGTERM and SIGHUP into a Qt signal. The first is announced once; another one that comes
/// more than two seconds later ends the process at once with code 130, the way out of a run that its
/// line holds. Nearer ones are the same wish, sent to the process and to its group. One object at a
/// time, main thread; the handlers stay when it is gone.
class TInterrupt : public QObject
{
    Q_OBJECT

public:
    TInterrupt();
    ~TInterrupt() override;

    static constexpr int exitCode = 130;

signals:
    void signalInterrupted();

private:
    void slotReadable();

    QSocketNotifier* m_notifier = nullptr;
};
