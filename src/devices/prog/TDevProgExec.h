#pragma once

#include "devices/shared/IDeviceExec.h"

class IDevice;

/// Runs one command of the programmer.
class TDevProgExec : public IDeviceExec
{
    Q_OBJECT

public:
    explicit TDevProgExec(const TData& data);

    bool execute(TSerialPort* port, bool& exit, int& cur_cfg, int& cur_cmd) override;

signals:
    void signalExecuteFromCmd(int id_cfg);

private:
    /// One exchange whose reply does not matter.
    bool send(TSerialPort* port, quint8 command, QByteArray payload);

    bool runSetDevice(TSerialPort* port);
    bool runAutoDetect(TSerialPort* port, int& cur_cfg, int& cur_cmd);
    bool detectChip(TSerialPort* port, const IDevice& family, bool stops, QString& id);
    bool takeRoute(TSerialPort* port, int cfg, int& cur_cfg, int& cur_cmd);
};
