#pragma once

#include "devices/shared/TFamilyDevice.h"
#include "devices/shared/TFamilyRules.h"

/// Serial NOR flash on SPI: what its commands are. All that differs between chips is in their descriptions.
class TDev25 : public TFamilyDevice
{
    Q_OBJECT

public:
    TDev25(const QString& name, const TData& description);

    /// The family's commands.
    static const TCommandTable& commands();
    /// What its descriptions have to keep.
    static TFamilyRules rules();
    /// Bytes of a security register.
    static constexpr int registerSize = 256;
    /// Number of security registers that a description gives.
    static int securityRegisters(const TData& description);

    void setDefaultParams(TData& data) const override;
    QString paramsText(const TData& data, QWidget* openForm) const override;
    TFormSpec formSpec(const TData& data) const override;
    TData normalizeParams(const TData& data) const override;
    QByteArray deviceParamBlock(const TData& data) const override;
    IDeviceExec* createExec(const TData& data) const override;

private:
    TFormSpec blocksSpec() const;
    TFormSpec securitySpec(const TData& data) const;
};
