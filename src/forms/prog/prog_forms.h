#pragma once

#include "base/types.h"

class IDevice;
class QWidget;

/// A new form for a command of the programmer, owned by the caller; null if it has none. Main thread.
QWidget* createProgForm(const IDevice& device, const TData& data);
