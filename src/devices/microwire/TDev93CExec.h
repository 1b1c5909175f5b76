#pragma once

#include "devices/shared/IDeviceExec.h"

/// Runs set_clk and erase of Microwire EEPROMs. The programmer's firmware has no more for this family, so
/// every other command fails without a reason and without an exchange.
class TDev93CExec : public IDeviceExec
{
    Q_OBJECT

public:
    explicit TDev93CExec(const TData& data);

    [[nodiscard]] bool execute(TSerialPort* port, bool& exit, int& cur_cfg, int& cur_cmd) override;
};
