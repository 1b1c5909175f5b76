#include "devices/avr/TDevAVR8.h"

#include "base/keys.h"
#include "devices/avr/TDevAVR8Exec.h"
#include "devices/shared/lint_checks.h"
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

/// The keys of the family's descriptions.
const TKeyRule keyRules[] = {
    {key::signature, "s", TKeyRule::Chip},
    {key::alg_ident, "d", TKeyRule::Always},
    {key::alg_erase, "d", TKeyRule::Chip},
    {key::alg_flash_read, "d", TKeyRule::Chip, 1},
    {key::alg_flash_write, "d", TKeyRule::Chip, 2},
    {key::flash_addr_begin, "D", TKeyRule::Chip},
    {key::flash_size, "D", TKeyRule::Chip},
    {key::flash_page_size, "u", TKeyRule::Chip},
    {key::flash_polling, "b", TKeyRule::Chip},
    {key::flash_delay, "u", TKeyRule::Chip},
    {key::eeprom_addr_begin, "D", TKeyRule::Chip},
    {key::eeprom_size, "D", TKeyRule::Chip},
    {key::eeprom_page_size, "u"},
    {key::eeprom_polling, "b", TKeyRule::Chip},
    {key::eeprom_delay, "u", TKeyRule::Chip},
    {key::alg_eeprom_read, "d", TKeyRule::Chip},
    {key::alg_eeprom_write, "d", TKeyRule::Chip},
    {key::erase_polling, "b", TKeyRule::Chip},
    {key::erase_delay, "u", TKeyRule::Chip},
    {key::cfg_cmd_list, "d", TKeyRule::Chip},
    {key::fuse_def, "s"},
    {key::fuse_cfg, "l"},
    {key::fuse_polling, "b"},
    {key::fuse_delay, "u"},
    {key::alg_fuse_read, "d", TKeyRule::Optional, 1},
    {key::alg_fuse_write, "d", TKeyRule::Optional, 2},
    {key::lock_def, "s", TKeyRule::Chip},
    {key::lock_cfg, "l", TKeyRule::Chip},
    {key::lock_polling, "b", TKeyRule::Chip},
    {key::lock_delay, "u", TKeyRule::Chip},
    {key::alg_lock_read, "d", TKeyRule::Optional, 1},
    {key::alg_lock_write, "d", TKeyRule::Chip, 1},
    {key::osccal_def, "s"},
    {key::osccal_cfg, "l"},
    {key::alg_osccal_read, "d"},
};

void checkPacing(TLintFile& file, const QLatin1String& key)
{
    file.expect(file.number(key) > 0 && file.number(key) < 255, key,
                "1 to 254 ms fit the byte; 255 means polling");
}

void checkFuses(TLintFile& file)
{
    const int bytes = file.text(key::fuse_def).size() / 2;
    file.expect(bytes > 0 && bytes < 4 && isHex(file.text(key::fuse_def), bytes * 2), key::fuse_def,
                "1 to 3 bytes");
    file.expect(file.number(key::alg_fuse_read) != 0 || bytes == 1, key::alg_fuse_read,
                "reads one byte only");
    file.expect(file.number(key::alg_fuse_write) == 2 || bytes == 1, key::alg_fuse_write,
                "writes one byte only");
    file.expect(file.list(key::fuse_cfg).join(' ').contains("SPIEN"), key::fuse_cfg, "without SPIEN");
    for (const QLatin1String& key :
         {key::fuse_cfg, key::fuse_polling, key::fuse_delay, key::alg_fuse_read, key::alg_fuse_write,
          key::osccal_cfg, key::osccal_def, key::alg_osccal_read, key::alg_lock_read})
        file.expect(file.has(key), key, "is missing");
    checkPacing(file, key::fuse_delay);
    const QString calibration = file.text(key::osccal_def);
    file.expect(calibration.size() % 2 == 0 && isHex(calibration, calibration.size()), key::osccal_def,
                "no whole bytes");
}

void checkAvr(TLintFile& file, const TLintLists& lists)
{
    expectSignature(file, lists);
    const qint64 size = file.number(key::flash_size);
    const qint64 page = file.number(key::flash_page_size);
    file.expect(isPowerOfTwo(size) && size <= largestChip, key::flash_size, "no power of two in reach");
    expectInside(file, key::flash_addr_begin, size);
    file.expect(page == 0 || (isPowerOfTwo(page) && page >= 2 && size % page == 0), key::flash_page_size,
                "impossible");
    // Frames carry 16 bits of the address: only the extended address reaches above 64 KiB.
    const bool large = size > 0x10000;
    file.expect(file.number(key::alg_flash_read) == (large ? 1 : 0), key::alg_flash_read,
                "does not fit the size");
    file.expect(file.number(key::alg_flash_write) == (large  ? 2
                                                      : page ? 1
                                                             : 0),
                key::alg_flash_write, "does not fit");
    const qint64 eeprom = file.number(key::eeprom_size);
    file.expect(isPowerOfTwo(eeprom) && eeprom <= 0x10000, key::eeprom_size, "no power of two in reach");
    expectInside(file, key::eeprom_addr_begin, eeprom);
    for (const QLatin1String& key : {key::flash_delay, key::eeprom_delay, key::erase_delay, key::lock_delay})
        checkPacing(file, key);
    file.expect(file.number(key::cfg_cmd_list) <= 2, key::cfg_cmd_list, "0, 1 or 2");
    file.expect(isHex(file.text(key::lock_def), 2), key::lock_def, "one byte");
    if (file.number(key::cfg_cmd_list) != 0)
        checkFuses(file);
    else
        file.expect(!file.has(key::fuse_def), key::fuse_def, "the chip has no fuse commands");
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

TFamilyRules TDevAVR8_SPI::rules()
{
    return {{std::begin(keyRules), std::end(keyRules)}, checkAvr};
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
