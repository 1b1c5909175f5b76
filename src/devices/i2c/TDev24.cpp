#include "devices/i2c/TDev24.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "devices/i2c/TDev24Exec.h"
#include "devices/shared/lint_checks.h"
#include "misc/TParamReader.h"

namespace {

constexpr TParamReader param("devices/TDev24");
constexpr TCommandRow rows[] = {
    {cmd::set_clk, Shape::Clock},
    {cmd::set_addr, Shape::Pins},
    {cmd::separator, Shape::Separator},
    {cmd::erase, Shape::Plain},
    {cmd::test_empty, Shape::Plain, Area::Whole, Action::TestEmpty},
    {cmd::separator, Shape::Separator},
    {cmd::char_write, Shape::Char, Area::Whole, Action::Write},
    {cmd::char_verify, Shape::Char, Area::Whole, Action::Verify},
    {cmd::data_read, Shape::Data, Area::Whole, Action::Read},
    {cmd::data_write, Shape::Data, Area::Whole, Action::Write},
    {cmd::data_verify, Shape::Data, Area::Whole, Action::Verify},
    {cmd::file_read, Shape::File, Area::Whole, Action::Read},
    {cmd::file_write, Shape::File, Area::Whole, Action::Write},
    {cmd::file_verify, Shape::File, Area::Whole, Action::Verify},
    {cmd::separator, Shape::Separator},
    {cmd::leave, Shape::Leave},
};

/// The pins, the highest bit first.
constexpr struct
{
    int bit;
    const char* name;
} pins[] = {{4, "A2"}, {2, "A1"}, {1, "A0"}};

int addrOf(const TData& data)
{
    return param(data, key::addr).toInt();
}

bool validAddr(const TData& data)
{
    qint64 addr = 0;
    return readInt(param(data, key::addr), addr) && addr >= 0 && addr < 8;
}

/// The keys of the family's descriptions.
const TKeyRule keyRules[] = {
    {key::addr_begin, "D", TKeyRule::Chip}, {key::size, "D", TKeyRule::Chip},
    {key::page_size, "u", TKeyRule::Chip},  {key::alg_read, "d", TKeyRule::Chip},
    {key::alg_write, "d", TKeyRule::Chip},  {key::addr_size, "u", TKeyRule::Chip},
    {key::addr_mask, "b", TKeyRule::Chip},  {key::read_block, "D"},
    {key::delay, "u", TKeyRule::Chip},
};

void checkEeprom(TLintFile& file, const TLintLists&)
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

} // namespace

TDev24::TDev24(const QString& name, const TData& description)
    : TFamilyDevice(name, description, commands(), false)
{
}

const TCommandTable& TDev24::commands()
{
    static const TCommandTable table(rows);
    return table;
}

TFamilyRules TDev24::rules()
{
    return {{std::begin(keyRules), std::end(keyRules)}, checkEeprom};
}

int TDev24::pinMask() const
{
    return int(deviceValue(key::addr_mask).toUInt() & 7U);
}

QString TDev24::paramsText(const TData& data, QWidget* openForm) const
{
    const TCommandRow* command = row(data);
    if (!command || command->shape != Shape::Pins)
        return TFamilyDevice::paramsText(data, openForm);
    const int addr = addrOf(data);
    QString text = QStringLiteral("Address: ");
    for (const auto& pin : pins) {
        const bool isThere = (pinMask() & pin.bit) != 0;
        text.append(QLatin1Char(!isThere ? '-' : (addr & pin.bit) != 0 ? '1' : '0'));
    }
    return text;
}

TFormSpec TDev24::formSpec(const TData& data) const
{
    const TCommandRow* command = row(data);
    return command && command->shape == Shape::Pins ? deviceSpec(data) : TFamilyDevice::formSpec(data);
}

TFormSpec TDev24::deviceSpec(const TData& data) const
{
    TFormSpec spec;
    spec.kind = TFormSpec::Kind::Items;
    spec.value = hex(addrOf(data) & pinMask());
    spec.defaultValue = QStringLiteral("00");
    spec.numberKey = key::addr;
    spec.items =
        QStringList{QStringLiteral("frm+"), QStringLiteral("grp+|%1").arg(langText(Text::GroupAddressPins))};
    for (const auto& pin : pins) {
        const bool isThere = (pinMask() & pin.bit) != 0;
        spec.items.append(QStringLiteral("ckl|%1|-|%2|-|%3||")
                              .arg(hex(pin.bit), QLatin1String(isThere ? "e" : "-"),
                                   QLatin1String(isThere ? pin.name : "NC")));
    }
    spec.items += QStringList{QStringLiteral("grp-"), QStringLiteral("frm-")};
    return spec;
}

TData TDev24::normalizeParams(const TData& data) const
{
    const TCommandRow* command = editedRow(data);
    if (!command || command->shape != Shape::Pins)
        return TFamilyDevice::normalizeParams(data);
    return {{key::id_cmd, data.value(key::id_cmd)},
            {key::addr, int(fromHex(data.value(key::data).toString()))}};
}

bool TDev24::checkParams(const TData& data) const
{
    const TCommandRow* command = row(data);
    return command && command->shape == Shape::Pins ? validAddr(data) : TFamilyDevice::checkParams(data);
}

bool TDev24::checkDeviceParams(const TData& data) const
{
    return validClk(data) && validAddr(data);
}

bool TDev24::setDeviceDefaults(TData& data) const
{
    data.insert(key::addr, 0);
    return TFamilyDevice::setDeviceDefaults(data);
}

QByteArray TDev24::deviceParamBlock(const TData& data) const
{
    return typeBlock() + char(quint8(addrOf(data) & pinMask())) + clockBlock(data) +
           char(quint8(deviceValue(key::delay).toUInt()));
}

IDeviceExec* TDev24::createExec(const TData& data) const
{
    return new TDev24CExec(data);
}
