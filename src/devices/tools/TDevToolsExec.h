#pragma once

#include "devices/shared/IDeviceExec.h"

class TProg;

/// Runs one flow or tool command.
class TDevToolsExec : public IDeviceExec
{
    Q_OBJECT

public:
    explicit TDevToolsExec(const TData& data);

    bool execute(TSerialPort* port, bool& exit, int& cur_cfg, int& cur_cmd) override;

    /// How a counter goes on.
    enum class Count { GoesOn, Arrived, OutOfRange };
    /// One round of a counter. value, a number from 0 to 0x7FFFFFFF in a valid command, comes back as it
    /// is to be stored. A limit of 0 counts as 0x7FFFFFFF on the way up.
    static Count countRound(qint64& value, qint64 limit, qint32 delta);

public slots:
    /// Ends a pause.
    void slotPauseReset();

signals:
    void signalExecuteFromCmd(int id_cfg);
    void signalPauseFromCmd(int id_cfg);

private:
    /// What a routine may use and change of the run.
    struct Run
    {
        TSerialPort* port;
        bool& exit;
        int& cur_cfg;
        int& cur_cmd;
    };
    struct Routine;

    bool runProcess(Run& run);
    bool runJamp(Run& run);
    bool runCounter(Run& run);
    bool runDelay(Run& run);
    bool runPause(Run& run);
    bool runStop(Run& run);
    bool runExecute(Run& run);
    bool runSetProg(Run& run);
    bool runCalcCRC(Run& run);

    void waitShort(qint64 ms);
    void waitLong(qint64 ms);
    [[nodiscard]] bool openPort(TSerialPort* port, const TProg& prog);
    bool identify(TSerialPort* port, int& interfaceId);

    bool m_pause = false;
};
