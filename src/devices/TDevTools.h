#pragma once

#include "core/IDevice.h"

/// The commands that need no chip: flow of a run, other programs, checksums, and the opening of the
/// programmer's port.
class TDevTools : public IDevice
{
    Q_OBJECT

public:
    TDevTools(const QString& name, const TData& data);

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
