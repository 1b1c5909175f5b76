#include "base/keys.h"
#include "devices/avr/TDevAVR8.h"
#include "devices/flash/TDev25.h"
#include "devices/i2c/TDev24.h"
#include "devices/shared/TFamily.h"

#include <algorithm>

namespace {

template <class Device> IDevice* make(const QString& name, const TData& description)
{
    return new Device(name, description);
}

/// A class gives its commands and its rules itself, so that a row cannot be without them.
template <class Device> TFamily row(QLatin1String word, const char* type, const char* section)
{
    return {word, QLatin1String(type), QLatin1String(section), make<Device>, Device::commands, Device::rules};
}

} // namespace

const QList<TFamily>& families()
{
    static const QList<TFamily> rows{
        row<TDev25>(dev_class::dev25, "spi_flash", "SPI_FLASH"),
        row<TDevAVR8_SPI>(dev_class::avr8_spi, "avr_spi", "AVR_SPI"),
        row<TDev24>(dev_class::dev24, "i2c_eeprom", "I2C_EEPROM"),
    };
    return rows;
}

const TFamily* familyOfClass(const QString& word)
{
    const QList<TFamily>& rows = families();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&word](const TFamily& family) { return family.word == word; });
    return row == rows.end() ? nullptr : &*row;
}
