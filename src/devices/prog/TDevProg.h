#pragma once

#include "devices/shared/TPseudoDevice.h"

/// The commands of the programmer itself: choice of the chip, supplies, pins, frequency, reset pulse.
class TDevProg : public TPseudoDevice
{
    Q_OBJECT

public:
    TDevProg(const QString& name, const TData& data);

    /// Null also without a programmer, whose description the forms need.
    QWidget* createForm(const TData& data) const override;
    IDeviceExec* createExec(const TData& data) const override;

private:
    static const Row rowTable[9];
};
