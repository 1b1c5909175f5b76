#pragma once

#include "core/IDevice.h"

/// The commands of the programmer itself: choice of the chip, supplies, pins, frequency, reset pulse.
class TDevProg : public IDevice
{
    Q_OBJECT

public:
    TDevProg(const QString& name, const TData& data);

    bool hasCommand(const QString& key) const override;
    QStringList commandKeys() const override;
    void setDefaultParams(TData& data) const override;
    QString commandTitle(const TData& data) const override;
    QString paramsText(const TData& data, QWidget* openForm) const override;
    QWidget* createForm(const TData& data) const override;
    TData normalizeParams(const TData& data) const override;
    bool refreshParams(TData& data) const override;
    bool checkParams(const TData& data) const override;
    bool checkDeviceParams(const TData& data) const override;
    bool setDeviceDefaults(TData& data) const override;
    QWidget* createDeviceForm(const TData& data) const override;
    QByteArray deviceParamBlock(const TData& data) const override;
    IDeviceExec* createExec(const TData& data) const override;
};
