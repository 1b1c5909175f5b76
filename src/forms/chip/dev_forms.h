#pragma once

#include "base/types.h"
#include "devices/shared/TFormSpec.h"

class IDevice;
class QWidget;
class TFormDevCfg;
class TFormDevSetCLK;

// The forms of the chip families, owned by the caller. Main thread.

/// The form of a clock, with what the programmer of the command offers for the chip; null if the command
/// has no programmer.
TFormDevSetCLK* formClk(const TData& data, const IDevice& device);
/// A generated form.
TFormDevCfg* formItems(const TData& data, const TFormSpec& spec);
/// The form of a command as its family describes it; null if it has none.
QWidget* createFamilyForm(const IDevice& device, const TData& data);
/// A family's part of the form of set_device; null if it has none.
QWidget* createFamilyDeviceForm(const IDevice& device, const TData& data);
