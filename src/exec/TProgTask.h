#pragma once

#include "base/types.h"

#include <QObject>

class TSerialPort;

/// What can be asked of a programmer outside a run: who it is, and a reset of the chip. Uses the link of
/// the nearest set_prog at or before a command, opened for this one job. Works on the calling thread until
/// the programmer has answered, and lets its events in meanwhile, all but what the user does: windows are
/// drawn and the lines of runs are taken. The caller sees to it that nothing else begins or closes the
/// project. Reports by signals, which a receiver on that thread takes directly.
class TProgTask : public QObject
{
    Q_OBJECT

public:
    /// id_cmd is the current command, whose programmer and chip are meant.
    explicit TProgTask(int id_cmd);

    /// Opens the link, identifies the programmer, lets its indicator show that. False when that failed.
    bool identify();
    /// Gives the chip its reset pulse, as long as the programmer's description says. False when that
    /// failed, also when there is no chip or no programmer.
    bool reset();

signals:
    void signalEventText(TCodeExec code, QString text1, QString text2 = QString());

private:
    [[nodiscard]] bool openLink(TSerialPort& port);
    [[nodiscard]] bool pulse(TSerialPort& port, int duration);
    bool finish(bool done);

    const int m_idCmd;
    QString m_errorText;
};
