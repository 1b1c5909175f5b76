#pragma once

#include "base/types.h"

#include <QWidget>

class TDev24;

/// The I2C family's part of the form of set_device: the clock, and the address that the pins give.
class TDev24CDevParam : public QWidget
{
    Q_OBJECT

public:
    TDev24CDevParam(const TDev24& device, const TData& params);
    ~TDev24CDevParam() override;

signals:
    void signalChangedCmdParam(TData params);

public slots:
    void slotChangedAddr(const TData& params);
};
