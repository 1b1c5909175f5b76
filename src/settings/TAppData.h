#pragma once

#include "base/types.h"
#include "link/lists/TProgName.h"
#include "link/lists/TProgType.h"

#include <QColor>
#include <QString>

/// Every persistent setting as a plain field with the default as initial value; settings.def lists them all.
/// Written on the main thread only; workers read without a lock what does not change during a run.
class TAppData
{
public:
    virtual ~TAppData() = default;

    /// Reads both lists and every key of the settings file into the fields; a missing key gives the
    /// default, a missing file leaves all defaults. Once, at the start.
    void load();
    /// Writes the keys of the application settings and the two lists. Lines of the file that are none of
    /// them stay. False when the file cannot be written; a line in the diagnostic log says so.
    [[nodiscard]] bool saveApp() const;
    /// Writes the language alone, which counts only at the next start. False as above.
    [[nodiscard]] bool saveLanguage() const;
    /// Writes the keys of the window settings. False as above.
    [[nodiscard]] bool saveWindow() const;

    // The fields, each named after its key.
#define VM_SETTING(field, key, type, written, ...) type field{__VA_ARGS__};
#include "settings/settings.def"

    /// The programmers and programmer models of the user. Replaced as a whole, under the lock of the
    /// project, because workers read them.
    TProgName progNames;
    TProgType progTypes;
};

/// All settings. Written on the main thread only.
TAppData& appData();
