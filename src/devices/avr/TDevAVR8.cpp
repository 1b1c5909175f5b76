#include "devices/avr/TDevAVR8.h"

#include "base/keys.h"
#include "devices/avr/TDevAVR8Exec.h"
#include "misc/TParamReader.h"

namespace {

constexpr TParamReader param("devices/TDevAVR8");
constexpr quint8 pollChip = 0xFF;

constexpr TCommandRow rows[] = {
    {cmd::set_clk, Shape::Clock},
    {cmd::ident, Shape::Ident},
    {cmd::separator, Shape::Separator},
    {cmd::erase, Shape::Plain},
    {cmd::test_empty_flash, Shape::Plain, Area::Flash, Action::TestEmpty},
    {cmd::test_empty_eeprom, Shape::Plain, Area::Eeprom, Action::TestEmpty},
    {cmd::separator, Shape::Separator},
    {cmd::flash_char_write, Shape::Char, Area::Flash, Action::Write},
    {cmd::flash_char_verify, Shape::Char, Area::Flash, Action::Verify},
    {cmd::flash_data_read, Shape::Data, Area::Flash, Action::Read},
    {cmd::flash_data_write, Shape::Data, Area::Flash, Action::Write},
    {cmd::flash_data_verify, Shape::Data, Area::Flash, Action::Verify},
    {cmd::flash_file_read, Shape::File, Area::Flash, Action::Read},
    {cmd::flash_file_write, Shape::File, Area::Flash, Action::Write},
    {cmd::flash_file_verify, Shape::File, Area::Flash, Action::Verify},
    {cmd::separator, Shape::Separator},
    {cmd::eeprom_char_write, Shape::Char, Area::Eeprom, Action::Write},
    {cmd::eeprom_char_verify, Shape::Char, Area::Eeprom, Action::Verify},
    {cmd::eeprom_data_read, Shape::Data, Area::Eeprom, Action::Read},
    {cmd::eeprom_data_write, Shape::Data, Area::Eeprom, Action::Write},
    {cmd::eeprom_data_verify, Shape::Data, Area::Eeprom, Action::Verify},
    {cmd::eeprom_file_read, Shape::File, Area::Eeprom, Action::Read},
    {cmd::eeprom_file_write, Shape::File, Area::Eeprom, Action::Write},
    {cmd::eeprom_file_verify, Shape::File, Area::Eeprom, Action::Verify},
    {cmd::separator, Shape::Separator},
    {cmd::fuse_read, Shape::Register, Area::Fuse, Action::Read},
    {cmd::fuse_write, Shape::Register, Area::Fuse, Action::Write},
    {cmd::fuse_verify, Shape::Register, Area::Fuse, Action::Verify},
    {cmd::separator, Shape::Separator},
    {cmd::lock_read, Shape::Register, Area::Lock, Action::Read},
    {cmd::lock_write, Shape::Register, Area::Lock, Action::Write},
    {cmd::lock_verify, Shape::Register, Area::Lock, Action::Verify},
    {cmd::separator, Shape::Separator},
    {cmd::osccal_read, Shape::Register, Area::Osccal, Action::Read},
    {cmd::separator, Shape::Separator},
    {cmd::leave, Shape::Leave},
};

/// The chip answers only while its reset is held, which is active low.
TData withResetPolarity(TData description)
{
    description.insert(key::reset_pol, false);
    return description;
}

} // namespace

TDevAVR8_SPI::TDevAVR8_SPI(const QString& name, const TData& description)
    : TFamilyDevice(name, withResetPolarity(description), commands(), true)
{
    const int list = deviceValue(key::cfg_cmd_list).toInt();
    if (list == 0)
        removeCommands({cmd::fuse_read, cmd::fuse_write, cmd::fuse_verify, cmd::lock_read, cmd::lock_verify,
                        cmd::osccal_read});
    else if (list == 1)
        removeCommands({cmd::osccal_read});
}

const TCommandTable& TDevAVR8_SPI::commands()
{
    static const TCommandTable table(rows);
    return table;
}

quint8 TDevAVR8_SPI::pace(const TData& description, QLatin1String polling, QLatin1String delay)
{
    if (param(description, polling).toBool())
        return pollChip;
    return quint8(param(description, delay).toUInt());
}

QByteArray TDevAVR8_SPI::deviceParamBlock(const TData& data) const
{
    const TData description = deviceData();
    // A chip with pages is told how to wait with each page; one without needs it for every byte.
    const bool hasPages = description.value(key::flash_page_size).toLongLong() != 0;
    QByteArray block = typeBlock() + clockBlock(data);
    block.append(hasPages ? '\0' : char(pace(description, key::flash_polling, key::flash_delay)));
    block.append(char(pace(description, key::eeprom_polling, key::eeprom_delay)));
    return block;
}

IDeviceExec* TDevAVR8_SPI::createExec(const TData& data) const
{
    return new TDevAVR8Exec(data);
}
