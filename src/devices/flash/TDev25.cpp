#include "devices/flash/TDev25.h"

#include "base/keys.h"
#include "devices/flash/TDev25Exec.h"
#include "devices/shared/TBlockErase.h"
#include "devices/shared/lint_checks.h"
#include "misc/TParamReader.h"

namespace {

constexpr TParamReader param("devices/TDev25");
constexpr char uniqueIdDefault[] = "0000000000000000";

constexpr TCommandRow rows[] = {
    {cmd::set_clk, Shape::Clock},
    {cmd::ident, Shape::Ident},
    {cmd::separator, Shape::Separator},
    {cmd::erase, Shape::Plain},
    {cmd::test_empty, Shape::Plain, Area::Whole, Action::TestEmpty},
    {cmd::erase_blocks, Shape::Blocks},
    {cmd::test_empty_blocks, Shape::Blocks, Area::Whole, Action::TestEmpty},
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
    {cmd::status_reg_read, Shape::Register, Area::Status, Action::Read},
    {cmd::status_reg_write, Shape::Register, Area::Status, Action::Write},
    {cmd::status_reg_verify, Shape::Register, Area::Status, Action::Verify},
    {cmd::separator, Shape::Separator},
    {cmd::security_reg_erase, Shape::RegisterMask, Area::Security},
    {cmd::security_reg_test_empty, Shape::RegisterMask, Area::Security},
    {cmd::security_reg_read, Shape::File, Area::Security, Action::Read},
    {cmd::security_reg_write, Shape::File, Area::Security, Action::Write},
    {cmd::security_reg_verify, Shape::File, Area::Security, Action::Verify},
    {cmd::separator, Shape::Separator},
    {cmd::unique_id_read, Shape::Register, Area::UniqueId, Action::Read},
    {cmd::sfdp_reg_read, Shape::File, Area::Sfdp, Action::Read},
    {cmd::separator, Shape::Separator},
    {cmd::leave, Shape::Leave},
};

/// One character a register, the highest first.
QString registersText(int registers, quint8 mask)
{
    QString bits;
    for (int i = registers - 1; i >= 0; --i)
        bits.append(i < 8 && (mask >> i & 1) ? QLatin1Char('1') : QLatin1Char('0'));
    return QStringLiteral("Registers: %1").arg(bits);
}

quint8 maskOf(const TData& data)
{
    return quint8(param(data, key::data).toUInt());
}

/// The keys of the family's descriptions.
const TKeyRule keyRules[] = {
    {key::signature, "s", TKeyRule::Chip},
    {key::alg_ident, "d", TKeyRule::Always},
    {key::alg_erase, "d", TKeyRule::Chip},
    {key::alg_flash_read, "d", TKeyRule::Chip, 1},
    {key::alg_flash_write, "d", TKeyRule::Chip, 2},
    {key::addr_begin, "D", TKeyRule::Chip},
    {key::size, "D", TKeyRule::Chip},
    {key::page_size, "u", TKeyRule::Chip},
    {key::erase, "s", TKeyRule::Chip},
    {key::erase_blocks, "l", TKeyRule::Chip},
    {key::status_reg_count, "u"},
    {key::status_reg_def, "s", TKeyRule::Chip},
    {key::status_reg_cfg, "l"},
    {key::security_reg_size, "D", TKeyRule::Chip},
    {key::sfdp_reg_size, "D", TKeyRule::Chip},
    {key::alg_status_reg_read, "d", TKeyRule::Chip, 1},
    {key::alg_status_reg_write, "d", TKeyRule::Chip, 1},
    {key::alg_security_reg_erase, "d", TKeyRule::Chip, 1},
    {key::alg_security_reg_read, "d", TKeyRule::Chip, 1},
    {key::alg_security_reg_write, "d", TKeyRule::Chip, 1},
    {key::alg_fsdp_read, "d", TKeyRule::Chip, 1},
    {key::alg_unique_id_read, "d", TKeyRule::Chip, 1},
};

constexpr qint64 usualPage = 256;      ///< bytes
constexpr qint64 largeBlock = 0x40000; ///< bytes

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

void checkFlash(TLintFile& file, const TLintLists& lists)
{
    expectSignature(file, lists);
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

} // namespace

TDev25::TDev25(const QString& name, const TData& description)
    : TFamilyDevice(name, description, commands(), false)
{
}

const TCommandTable& TDev25::commands()
{
    static const TCommandTable table(rows);
    return table;
}

TFamilyRules TDev25::rules()
{
    return {{std::begin(keyRules), std::end(keyRules)}, checkFlash};
}

int TDev25::securityRegisters(const TData& description)
{
    const qint64 size = param(description, key::security_reg_size).toLongLong();
    return quint8(size / registerSize); // one byte, as the mask that selects them
}

void TDev25::setDefaultParams(TData& data) const
{
    TFamilyDevice::setDefaultParams(data);
    const TCommandRow* command = row(data);
    if (command && command->area == Area::UniqueId)
        data.insert(key::data, QString::fromLatin1(uniqueIdDefault));
}

QString TDev25::paramsText(const TData& data, QWidget* openForm) const
{
    const TCommandRow* command = row(data);
    if (command && command->shape == Shape::RegisterMask)
        return registersText(securityRegisters(deviceData()), maskOf(data));
    return TFamilyDevice::paramsText(data, openForm);
}

TFormSpec TDev25::formSpec(const TData& data) const
{
    const TCommandRow* command = row(data);
    if (command && command->shape == Shape::Blocks)
        return blocksSpec();
    if (command && command->shape == Shape::RegisterMask)
        return securitySpec(data);
    if (!command || command->area != Area::UniqueId)
        return TFamilyDevice::formSpec(data);
    TFormSpec spec;
    spec.kind = TFormSpec::Kind::Items;
    spec.value = param(data, key::data).toString();
    spec.defaultValue = QString::fromLatin1(uniqueIdDefault);
    spec.items = QStringList{QStringLiteral("frm+"), QStringLiteral("edr|FFFFFFFFFFFFFFFF|ro|-1|Unique ID:"),
                             QStringLiteral("frm-")};
    return spec;
}

TFormSpec TDev25::blocksSpec() const
{
    TFormSpec spec;
    spec.kind = TFormSpec::Kind::Blocks;
    spec.region = areaRegion(*this, Area::Whole);
    for (const TBlockErase& erase : blockErases(deviceValue(key::erase_blocks).toStringList())) {
        if (erase.bytes > 0 && erase.bytes <= std::numeric_limits<int>::max())
            spec.blockSizes.append(int(erase.bytes));
    }
    return spec;
}

TFormSpec TDev25::securitySpec(const TData& data) const
{
    TFormSpec spec;
    spec.kind = TFormSpec::Kind::Items;
    const int registers = qMin(securityRegisters(deviceData()), 8);
    spec.items.append(QStringLiteral("frm+"));
    for (int i = 0; i < registers; ++i) {
        const int addr = i * registerSize;
        spec.items.append(
            QStringLiteral("ckl|%1|-|e|-|Security Register #%2 (0x%3..0x%4)")
                .arg(hex(1 << i), QString::number(i + 1), hex(addr), hex(addr + registerSize - 1)));
    }
    spec.items.append(QStringLiteral("frm-"));
    spec.value = hex(int(maskOf(data)));
    spec.defaultValue = hex((1 << registers) - 1);
    return spec;
}

TData TDev25::normalizeParams(const TData& data) const
{
    TData result = TFamilyDevice::normalizeParams(data);
    // The generated form gives hexadecimal text where the command keeps the mask as a number.
    const TCommandRow* command = editedRow(data);
    if (command && command->shape == Shape::RegisterMask && data.contains(key::data))
        result.insert(key::data, fromHex(data.value(key::data).toString()));
    return result;
}

QByteArray TDev25::deviceParamBlock(const TData& data) const
{
    return typeBlock() + clockBlock(data);
}

IDeviceExec* TDev25::createExec(const TData& data) const
{
    return new TDev25Exec(data);
}
