#pragma once

#include "devices/shared/TFamilyDevice.h"
#include "devices/shared/TFamilyRules.h"

/// 8-bit AVR microcontrollers, programmed through their serial interface: what their commands are.
class TDevAVR8_SPI : public TFamilyDevice
{
    Q_OBJECT

public:
    TDevAVR8_SPI(const QString& name, const TData& description);

    /// The family's commands; a chip has those that its cfg_cmd_list leaves.
    static const TCommandTable& commands();
    /// What its descriptions have to keep.
    static TFamilyRules rules();
    /// How the programmer waits for the end of a write: 0xFF polls the chip, else milliseconds.
    static quint8 pace(const TData& description, QLatin1String polling, QLatin1String delay);

    QByteArray deviceParamBlock(const TData& data) const override;
    IDeviceExec* createExec(const TData& data) const override;
};
