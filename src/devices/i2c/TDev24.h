#pragma once

#include "devices/shared/TFamilyDevice.h"
#include "devices/shared/TFamilyRules.h"

/// Serial EEPROM on I2C: what its commands are. Its own is the address that its pins give it on the bus.
class TDev24 : public TFamilyDevice
{
    Q_OBJECT

public:
    TDev24(const QString& name, const TData& description);

    static const TCommandTable& commands();
    /// What its descriptions have to keep.
    static TFamilyRules rules();

    QString paramsText(const TData& data, QWidget* openForm) const override;
    TFormSpec formSpec(const TData& data) const override;
    /// The form of the address pins.
    TFormSpec deviceSpec(const TData& data) const override;
    TData normalizeParams(const TData& data) const override;
    bool checkParams(const TData& data) const override;
    bool checkDeviceParams(const TData& data) const override;
    bool setDeviceDefaults(TData& data) const override;
    QByteArray deviceParamBlock(const TData& data) const override;
    IDeviceExec* createExec(const TData& data) const override;

private:
    int pinMask() const;
};
