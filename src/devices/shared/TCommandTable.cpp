#include "devices/shared/TCommandTable.h"

#include "core/model/IDevice.h"

#include <algorithm>

const TCommandRow* TCommandTable::find(const QString& key) const
{
    const TCommandRow* row = std::find_if(begin(), end(), [&key](const TCommandRow& candidate) {
        return candidate.shape != Shape::Separator && candidate.key == key;
    });
    return row == end() ? nullptr : row;
}

TRegion areaRegion(const IDevice& device, Area area)
{
    switch (area) {
    case Area::Whole:
        return regionOf(device, Region::Whole);
    case Area::Flash:
        return regionOf(device, Region::Flash);
    case Area::Eeprom:
        return regionOf(device, Region::Eeprom);
    case Area::Security:
        return {0, device.deviceValue(key::security_reg_size).toLongLong()};
    case Area::Sfdp:
        return {0, device.deviceValue(key::sfdp_reg_size).toLongLong()};
    default:
        return {};
    }
}

const TRegisterKeys* registerKeys(Area area)
{
    static constexpr struct
    {
        Area area;
        TRegisterKeys keys;
    } rows[] = {
        {Area::Status, {key::status_reg_def, key::status_reg_cfg, true}},
        {Area::Fuse, {key::fuse_def, key::fuse_cfg, true}},
        {Area::Lock, {key::lock_def, key::lock_cfg, true}},
        {Area::Osccal, {key::osccal_def, key::osccal_cfg, false}},
    };
    for (const auto& row : rows) {
        if (row.area == area)
            return &row.keys;
    }
    return nullptr;
}
