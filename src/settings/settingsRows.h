#pragma once

#include "settings/TAppData.h"

#include <variant>
#include <vector>

/// With which group of settings the program writes a key.
enum class Written {
    ReadOnly, ///< set by hand in the file, only read
    App,      ///< with the application settings
    Window    ///< with the window settings
};

/// One key of the settings file and the field that holds it; the type of the field decides how the
/// value is stored, the initial value of the field is the default.
struct SettingsRow
{
    using Field = std::variant<bool TAppData::*, int TAppData::*, QString TAppData::*, QColor TAppData::*,
                               TSplitterPos TAppData::*>;
    const char* key; ///< group, "/", name
    Field field;
    Written written;
};

/// All keys but those of the two programmer lists.
const std::vector<SettingsRow>& settingsRows();
