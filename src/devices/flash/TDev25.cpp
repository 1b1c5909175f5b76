#include "devices/flash/TDev25.h"

#include "base/keys.h"
#include "devices/flash/TDev25Exec.h"
#include "devices/shared/TBlockErase.h"
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
