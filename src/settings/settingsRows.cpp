#include "settings/settingsRows.h"

const std::vector<SettingsRow>& settingsRows()
{
    static const std::vector<SettingsRow> rows{
#define VM_SETTING(field, key, type, written, ...) {key, &TAppData::field, Written::written},
#include "settings/settings.def"
    };
    return rows;
}
