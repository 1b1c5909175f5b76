#pragma once

#include "devices/shared/TPseudoDevice.h"

/// The commands that need no chip: flow of a run, other programs, checksums, and the opening of the
/// programmer's port.
class TDevTools : public TPseudoDevice
{
    Q_OBJECT

public:
    TDevTools(const QString& name, const TData& data);

    IDeviceExec* createExec(const TData& data) const override;

private:
    static const Row rowTable[];
};
