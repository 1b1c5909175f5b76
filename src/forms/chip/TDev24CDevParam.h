#pragma once

#include "base/types.h"

#include <QWidget>

class IDevice;
struct TFormSpec;

/// A family's part of the form of set_device: the clock, and below it a generated form, such as that of the
/// address that the pins of an I2C EEPROM give.
class TDev24CDevParam : public QWidget
{
    Q_OBJECT

public:
    TDev24CDevParam(const IDevice& device, const TData& params, const TFormSpec& spec);
    ~TDev24CDevParam() override;

signals:
    void signalChangedCmdParam(TData params);

public slots:
    void slotChangedAddr(const TData& params);

private:
    const QString m_key; ///< of the parameter that keeps the value of the generated form
};
