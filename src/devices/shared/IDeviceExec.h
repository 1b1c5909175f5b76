#pragma once

#include "base/types.h"

#include <QElapsedTimer>
#include <QObject>

class TSerialPort;

/// Does the work of one command on one worker thread. Built by IDevice::createExec for a command and
/// deleted when it has run.
class IDeviceExec : public QObject
{
    Q_OBJECT

public:
    explicit IDeviceExec(const TData& data);
    ~IDeviceExec() override;

    /// Runs the command. True when the run may go on, false with the reason in errorText().
    /// exit set to true ends the run behind this command; cur_cfg and cur_cmd changed make it jump.
    [[nodiscard]] virtual bool execute(TSerialPort* port, bool& exit, int& cur_cfg, int& cur_cmd) = 0;
    /// Reads the chip's identification. The body given here returns true and leaves id as it is.
    [[nodiscard]] virtual bool readChipId(TSerialPort* port, QString& id);

    /// Reason of the last failure; empty when there is none to tell.
    QString errorText() const;

public slots:
    /// Asks the running command to end; the worker sees it at its next progress report.
    void slotStop();

signals:
    void signalEventText(TCodeExec code, QString text1, QString text2 = QString());
    void signalEventProc(int procent);

protected:
    /// Where a routine stands in reporting its percent.
    struct TProgress
    {
        int tick = 0;
        int percent = -1;        ///< last one reported; none yet
        QElapsedTimer sinceLook; ///< runs since requests were let in last
    };

    /// The port is open; otherwise false with the reason stored. Every routine calls it first.
    [[nodiscard]] bool portGuard(const TSerialPort* port);
    /// One exchange; payload is the request's on entry and the reply's on success. On failure the
    /// port's text is stored.
    [[nodiscard]] bool sendChecked(TSerialPort* port, quint8 opcode, QByteArray& payload);
    /// Reports pos of total as percent, when it has changed, and lets a stop request in: but for isStopAsked
    /// the only place in a routine that does. True when the routine has to end.
    [[nodiscard]] bool reportProgress(TProgress& progress, qint64 pos, qint64 total);
    /// For a wait for anything but the programmer: lets a stop request in. True when the routine has to end.
    [[nodiscard]] bool isStopAsked();
    /// Puts the text that was read into the command's parameter data and tells it in the log.
    void storeResult(const QString& text);
    /// Stores the reason, possibly empty, and gives false.
    [[nodiscard]] bool fail(const QString& reason = QString());

    /// A detached copy of the command's parameters.
    const TData m_cmdData;
    QString m_errorText;
    bool m_stopRequested = false;

private:
    void letRequestsIn(TProgress& progress);
};
