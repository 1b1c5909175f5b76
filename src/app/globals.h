#pragma once

#include <QString>

class TAppData;
class TDataPrj;
class TLang;
class TCmdCode;
class TDeviceList;

// The five process-wide objects. They are built before main in the order of these functions, in one
// translation unit, and destroyed in the reverse order after main has returned.

/// All settings. Written on the main thread only.
TAppData& appData();

/// The one open project.
TDataPrj& project();

/// The language table. Read-only while a run is active.
TLang& lang();

/// The catalogue of command words. Never changes.
TCmdCode& cmdCode();

/// The device catalogue. Never changes.
TDeviceList& deviceList();

/// The folder of device descriptions. Any thread: the settings dialog changes it under the lock of the
/// project.
QString devicesFolder();

/// Written HEX files have extended addresses of type 04 only. Any thread, as above.
bool hexLinear();

/// Text id of the language table, "?????" past its end. Any thread.
QString langText(int id);
