#pragma once

#include "devices/shared/TFamilyDevice.h"

/// Microwire EEPROM: what its commands are. No class word leads here yet, so no description selects it.
class TDev93C : public TFamilyDevice
{
    Q_OBJECT

public:
    TDev93C(const QString& name, const TData& description);

    TFormSpec formSpec(const TData& data) const override;
    /// Empty: the family selects no chip by the programmer's opcode 0x84.
    QByteArray deviceParamBlock(const TData& data) const override;
    IDeviceExec* createExec(const TData& data) const override;
};
