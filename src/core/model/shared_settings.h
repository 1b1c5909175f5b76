#pragma once

#include <QString>

// Settings that workers read too. The settings dialog changes them under the lock of the project, and these
// take it. Any thread.

/// The folder of device descriptions.
QString devicesFolder();
/// Written HEX files have extended addresses of type 04 only.
bool hexLinear();
