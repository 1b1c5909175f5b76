#include "devices/lint/lintDescription.h"

#include "base/keys.h"
#include "devices/lint/TItemLint.h"
#include "devices/lint/TLintFile.h"

#include <QSet>

#include <algorithm>
#include <cstring>

namespace {

constexpr int flash = 1;
constexpr int avr = 2;
constexpr int i2c = 4;
constexpr int all = flash | avr | i2c;

constexpr qint64 largestChip = 0x1000000; ///< three address bytes
constexpr qint64 usualPage = 256;
constexpr qint64 largeBlock = 0x40000;

struct FamilyRule
{
    QLatin1String word; ///< gui_type
    int family;
    const char* type;
    const char* section;
};

const FamilyRule familyRules[] = {
    {dev_class::dev25, flash, "spi_flash", "SPI_FLASH"},
    {dev_class::avr8_spi, avr, "avr_spi", "AVR_SPI"},
    {dev_class::dev24, i2c, "i2c_eeprom", "I2C_EEPROM"},
};

struct KeyRule
{
    QLatin1String key;
    const char* types;    ///< letters that its value may have
    int families;         ///< which know the key
    int needed;           ///< for which a chip is not complete without it
    int ways = 0;         ///< greatest number of an algorithm
    bool detects = false; ///< a description for detection is not complete without it either
};

const KeyRule keyRules[] = {
    {key::gui_type, "s", all, all, 0, true},
    {key::prg_type, "s", all, all, 0, true},
    {key::prg_section, "s", all, all, 0, true},
    {key::cfg_hw, "u", all, all, 0, true},
    {key::info, "l", all, all},
    {key::comment, "l", all, 0},
    {key::warning, "l", all, 0},
    {key::reset, "b", all, 0},
    {key::reset_pol, "b", all, 0},
    {key::signature, "s", flash | avr, flash | avr},
    {key::alg_ident, "d", flash | avr, flash | avr, 0, true},
    {key::alg_erase, "d", flash | avr, flash | avr},
    {key::alg_flash_read, "d", flash | avr, flash | avr, 1},
    {key::alg_flash_write, "d", flash | avr, flash | avr, 2},
    {key::addr_begin, "D", flash | i2c, flash | i2c},
    {key::size, "D", flash | i2c, flash | i2c},
    {key::page_size, "u", flash | i2c, flash | i2c},
    {key::erase, "s", flash, flash},
    {key::erase_blocks, "l", flash, flash},
    {key::status_reg_count, "u", flash, 0},
    {key::status_reg_def, "s", flash, flash},
    {key::status_reg_cfg, "l", flash, 0},
    {key::security_reg_size, "D", flash, flash},
    {key::sfdp_reg_size, "D", flash, flash},
    {key::alg_status_reg_read, "d", flash, flash, 1},
    {key::alg_status_reg_write, "d", flash, flash, 1},
    {key::alg_security_reg_erase, "d", flash, flash, 1},
    {key::alg_security_reg_read, "d", flash, flash, 1},
    {key::alg_security_reg_write, "d", flash, flash, 1},
    {key::alg_fsdp_read, "d", flash, flash, 1},
    {key::alg_unique_id_read, "d", flash, flash, 1},
    {key::flash_addr_begin, "D", avr, avr},
    {key::flash_size, "D", avr, avr},
    {key::flash_page_size, "u", avr, avr},
    {key::flash_polling, "b", avr, avr},
    {key::flash_delay, "u", avr, avr},
    {key::eeprom_addr_begin, "D", avr, avr},
    {key::eeprom_size, "D", avr, avr},
    {key::eeprom_page_size, "u", avr, 0},
    {key::eeprom_polling, "b", avr, avr},
    {key::eeprom_delay, "u", avr, avr},
    {key::alg_eeprom_read, "d", avr, avr},
    {key::alg_eeprom_write, "d", avr, avr},
    {key::erase_polling, "b", avr, avr},
    {key::erase_delay, "u", avr, avr},
    {key::cfg_cmd_list, "d", avr, avr},
    {key::fuse_def, "s", avr, 0},
    {key::fuse_cfg, "l", avr, 0},
    {key::fuse_polling, "b", avr, 0},
    {key::fuse_delay, "u", avr, 0},
    {key::alg_fuse_read, "d", avr, 0, 1},
    {key::alg_fuse_write, "d", avr, 0, 2},
    {key::lock_def, "s", avr, avr},
    {key::lock_cfg, "l", avr, avr},
    {key::lock_polling, "b", avr, avr},
    {key::lock_delay, "u", avr, avr},
    {key::alg_lock_read, "d", avr, 0, 1},
    {key::alg_lock_write, "d", avr, avr, 1},
    {key::osccal_def, "s", avr, 0},
    {key::osccal_cfg, "l", avr, 0},
    {key::alg_osccal_read, "d", avr, 0},
    {key::alg_read, "d", i2c, i2c},
    {key::alg_write, "d", i2c, i2c},
    {key::addr_size, "u", i2c, i2c},
    {key::addr_mask, "b", i2c, i2c},
    {key::read_block, "D", i2c, 0},
    {key::delay, "u", i2c, i2c},
};

const KeyRule* ruleOf(const QString& key)
{
    for (const KeyRule& rule : keyRules) {
        if (key == rule.key)
            return &rule;
    }
    return nullptr;
}

int familyOf(const TLintFile& file)
{
    for (const FamilyRule& rule : familyRules) {
        if (file.text(key::gui_type) == rule.word)
            return rule.family;
    }
    return 0;
}

bool isPowerOfTwo(qint64 n)
{
    return n > 0 && (n & (n - 1)) == 0;
}

bool isMadeOf(const QString& text, const char* characters)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [characters](QChar c) {
        return c.unicode() != 0 && c.unicode() < 0x80 && std::strchr(characters, c.toLatin1()) != nullptr;
    });
}

bool isHex(const QString& text, int digits)
{
    return text.size() == digits && isMadeOf(text, "0123456789ABCDEF");
}

/// The value is one of its type. The largest of a type's digits may still be too much for it.
bool reads(const QString& type, const QString& value)
{
    if (type == QLatin1String("s") || type == QLatin1String("l"))
        return !value.isEmpty() && value == value.trimmed();
    if (type == QLatin1String("b"))
        return isMadeOf(value, "01") && value.size() <= 32;
    bool fits = false;
    if (type == QLatin1String("D"))
        value.toLongLong(&fits);
    else
        value.toInt(&fits);
    return fits && isMadeOf(value, "0123456789");
}

void checkLine(TLintFile& file, const TLintFile::Line& line)
{
    const KeyRule* rule = ruleOf(line.key);
    if (!rule || !(rule->families & familyOf(file)))
        return file.fault(line.number, line.key + ": no key of this family");
    if (line.type.size() != 1 || !QLatin1String(rule->types).contains(line.type.at(0)))
        return file.fault(line.number, line.key + ": type " + line.type);
    // Items of a form may be indented; the builder trims them.
    const QString value = line.type == "l" ? line.value.trimmed() : line.value;
    if (!reads(line.type, value))
        file.fault(line.number, line.key + ": the value does not read as its type");
}

void checkKeys(TLintFile& file, bool wholeChip)
{
    for (const TLintFile::Line& line : file.lines())
        checkLine(file, line);
    const int family = familyOf(file);
    for (const KeyRule& rule : keyRules) {
        if ((wholeChip || rule.detects) && (rule.needed & family))
            file.expect(file.has(rule.key), rule.key, "is missing");
        const qint64 number = file.number(rule.key);
        if (QString(rule.key).startsWith("alg_"))
            file.expect(number >= 0 && number <= rule.ways, rule.key, "no such algorithm");
    }
}

void checkFamily(TLintFile& file, const TLintLists& lists)
{
    for (const FamilyRule& rule : familyRules) {
        if (file.text(key::gui_type) != rule.word)
            continue;
        file.expect(file.text(key::prg_type) == rule.type, key::prg_type, "another family");
        file.expect(file.text(key::prg_section) == rule.section, key::prg_section, "another family");
        file.expect(lists.types.value(rule.type) > 0, key::prg_type, "has no number in types.lst");
        file.expect(file.number(key::cfg_hw) <= 0xFF, key::cfg_hw, "one byte");
        return;
    }
    file.fault(key::gui_type, "no class");
}

void checkEraseItem(TLintFile& file, const QLatin1String& key, const QString& item)
{
    const QStringList fields = item.split('|');
    const qint64 bytes = fields.value(1).toLongLong();
    file.expect(fields.size() == 2 && isHex(fields[0], 2), key, "not \"op|bytes\": " + item);
    // Chips ignore these when address bytes follow, and the primitive always sends them.
    file.expect(!QStringList({"C7", "60", "62"}).contains(fields[0]), key, "chip erase has no address");
    file.expect(bytes > 0 && file.number(key::size) % bytes == 0, key, "blocks do not fill the chip");
}

/// An area that is there can be reached, and one that is not there cannot.
void expectServed(TLintFile& file, const QLatin1String& key, qint64 bytes)
{
    file.expect((file.number(key) == 0) == (bytes > 0), key, "does not fit the size of the area");
}

/// An area that does not begin at 0 still ends in the chip, whose size is a power of two.
void expectInside(TLintFile& file, const QLatin1String& key, qint64 size)
{
    const qint64 begin = file.number(key);
    qint64 chip = 1;
    while (chip < size && chip < largestChip)
        chip *= 2;
    file.expect(begin >= 0 && (begin == 0 || begin <= chip - size), key, "ends behind the chip");
}

void checkStatusRegisters(TLintFile& file)
{
    const bool isNamed = file.has(key::status_reg_count);
    const qint64 count = isNamed ? file.number(key::status_reg_count) : 3;
    file.expect(count >= 1 && count <= 3, key::status_reg_count, "1 to 3 registers");
    file.expect(isHex(file.text(key::status_reg_def), 2 * int(std::clamp<qint64>(count, 1, 3))),
                key::status_reg_def,
                isNamed ? "not as many bytes as registers" : "three bytes are read and written");
    file.expect(file.number(key::alg_status_reg_read) == 0 || !file.has(key::status_reg_cfg),
                key::status_reg_cfg, "a form of registers that are not read");
}

void checkFlash(TLintFile& file)
{
    const qint64 size = file.number(key::size);
    const qint64 page = file.number(key::page_size);
    file.expect(size > 0 && size <= largestChip, key::size, "not reached by three address bytes");
    expectInside(file, key::addr_begin, size);
    file.expect(page > 0 && size % page == 0, key::page_size, "does not divide the chip");
    file.expect(isPowerOfTwo(page), key::page_size, "no power of two");
    for (const QLatin1String& key : {key::alg_flash_read, key::alg_flash_write})
        file.expect(file.number(key) == 0, key, "switches off what every chip needs");
    checkEraseItem(file, key::erase, file.text(key::erase));
    const QStringList blocks = file.list(key::erase_blocks);
    QSet<QString> sizes;
    for (const QString& item : blocks) {
        checkEraseItem(file, key::erase_blocks, item);
        sizes << item.section('|', 1);
    }
    qint64 largest = 0;
    qint64 smallest = size;
    for (const QString& bytes : qAsConst(sizes)) {
        largest = qMax(largest, bytes.toLongLong());
        smallest = qMin(smallest, bytes.toLongLong());
    }
    file.expect(file.text(key::erase).section('|', 1).toLongLong() == largest, key::erase,
                "a larger block is offered");
    file.expect(sizes.size() == blocks.size(), key::erase_blocks, "one size twice");
    file.expect(blocks.contains(file.text(key::erase)), key::erase, "is not offered as a block");
    // Chips with larger pages have no blocks smaller than 256 KiB; on all others a 02 wraps at 256.
    file.expect(page <= usualPage || smallest >= largeBlock, key::page_size,
                "more than 256 bytes, on a chip with small blocks");
    checkStatusRegisters(file);
    const qint64 security = file.number(key::security_reg_size);
    file.expect(security <= 2048 && security % 256 == 0, key::security_reg_size,
                "registers of 256 bytes, up to 8");
    for (const QLatin1String& key :
         {key::alg_security_reg_erase, key::alg_security_reg_read, key::alg_security_reg_write})
        expectServed(file, key, security);
    const qint64 sfdp = file.number(key::sfdp_reg_size);
    file.expect(sfdp == 0 || sfdp == 256, key::sfdp_reg_size, "one address byte reaches 256 bytes");
    expectServed(file, key::alg_fsdp_read, sfdp);
}

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

void checkAvr(TLintFile& file)
{
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

void checkEeprom(TLintFile& file)
{
    const qint64 size = file.number(key::size);
    const qint64 addrBytes = file.number(key::addr_size);
    file.expect(isPowerOfTwo(size), key::size, "no power of two");
    expectInside(file, key::addr_begin, size);
    const qint64 block = file.number(key::read_block);
    file.expect(!file.has(key::read_block) || (isPowerOfTwo(block) && block < size), key::read_block,
                "does not divide the chip");
    const qint64 page = file.number(key::page_size);
    file.expect(isPowerOfTwo(page) && page <= size, key::page_size, "does not divide the chip");
    file.expect(addrBytes == 1 || addrBytes == 2, key::addr_size, "1 or 2 address bytes");
    file.expect(file.number(key::delay) > 0 && file.number(key::delay) < 256, key::delay, "1 to 255 ms");
    // The address bits above the sent bytes take the places of the lowest pins in the control byte.
    const qint64 blocks = size >> (8 * addrBytes);
    file.expect(blocks <= 8, key::size, "more blocks than the control byte can tell");
    file.expect(file.number(key::addr_mask) < 8, key::addr_mask, "three pins");
    file.expect(blocks < 2 || (file.number(key::addr_mask) & (blocks - 1)) == 0, key::addr_mask,
                "a pin and an address bit share a place");
}

void checkSignature(TLintFile& file, const TLintLists& lists)
{
    const QString signature = file.text(key::signature);
    file.expect(isHex(signature, 6), key::signature, "three bytes in upper case");
    file.expect(lists.signatures.contains(signature), key::signature, "is not in signature.lst");
}

void checkForms(TLintFile& file)
{
    TItemLint::check(file, key::status_reg_cfg, key::status_reg_def);
    TItemLint::check(file, key::fuse_cfg, key::fuse_def);
    TItemLint::check(file, key::lock_cfg, key::lock_def);
    TItemLint::check(file, key::osccal_cfg, key::osccal_def);
}

} // namespace

QStringList lintDescription(const QString& path, bool wholeChip, const TLintLists& lists)
{
    TLintFile file(path);
    checkKeys(file, wholeChip);
    checkFamily(file, lists);
    if (!wholeChip)
        return file.faults();
    const int family = familyOf(file);
    if (family == flash)
        checkFlash(file);
    if (family == avr)
        checkAvr(file);
    if (family == i2c)
        checkEeprom(file);
    if (family & (flash | avr))
        checkSignature(file, lists);
    checkForms(file);
    return file.faults();
}
