#include "devices/shared/TFamilyDevice.h"

#include "base/TCmdCode.h"
#include "base/keys.h"
#include "core/model/IFormFactory.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "devices/shared/description.h"
#include "link/wire/bytes.h"
#include "misc/TParamReader.h"
#include "misc/dev_misc.h"

namespace {

constexpr TParamReader param("devices/TFamilyDevice");
constexpr int defaultBlockSize = 0x10000;
constexpr uint defaultFill = 255;
constexpr int allRegisters = 255;

/// The description as every family keeps it.
TData familyData(TData data, bool reset)
{
    data.detach();
    data.insert(key::reset, reset);
    if (!data.contains(key::info))
        data.insert(key::info, QString());
    return data;
}

QString blocksText(const TData& data)
{
    // Unsigned, so that numbers of a damaged project wrap instead of overflowing.
    const quint64 size = quint64(param(data, key::size).toLongLong());
    const quint64 begin = quint64(param(data, key::begin).toLongLong());
    const quint64 count = quint64(param(data, key::count).toLongLong());
    const qint64 bytes = qint64(size * count);
    return QStringLiteral("0x%1..0x%2 (%3)")
        .arg(hex(qlonglong(begin * size)), hex(qlonglong(begin * size + size * count - 1)), textSize(bytes));
}

} // namespace

TFamilyDevice::TFamilyDevice(const QString& name, const TData& description, const TCommandTable& table,
                             bool reset)
    : IDevice(name)
    , m_table(table)
{
    setDeviceData(familyData(description, reset));
    setInfo(deviceValue(key::info).toStringList());
    for (const TCommandRow& row : m_table)
        m_keys.append(row.key);
}

bool TFamilyDevice::hasCommand(const QString& key) const
{
    return key != cmd::separator && m_keys.contains(key);
}

QStringList TFamilyDevice::commandKeys() const
{
    return m_keys;
}

const TCommandRow* TFamilyDevice::row(const TData& data) const
{
    const QString key = data.value(key::cmd).toString();
    return hasCommand(key) ? m_table.find(key) : nullptr;
}

const TCommandRow* TFamilyDevice::editedRow(const TData& edit) const
{
    const TDataCmd* command = project().cmdById(edit.value(key::id_cmd, -1).toInt());
    return command ? m_table.find(command->cmd()) : row(edit);
}

void TFamilyDevice::removeCommands(std::initializer_list<QLatin1String> keys)
{
    for (const QLatin1String& key : keys)
        m_keys.removeAll(key);
}

void TFamilyDevice::setDefaultParams(TData& data) const
{
    const TCommandRow* command = row(data);
    if (!command)
        return;
    const TRegion region = areaRegion(*this, command->area);
    switch (command->shape) {
    case Shape::Clock:
        return defaultClk(data, section());
    case Shape::Pins:
        data.insert(key::addr, 0);
        return;
    case Shape::Blocks:
        return defaultBlocks(data);
    case Shape::Char:
        return defaultChar(data, region.begin, region.size, defaultFill);
    case Shape::Data:
        return defaultData(data, region.begin, QString());
    case Shape::File:
        return defaultFile(data, region.begin, region.size);
    case Shape::Register:
        if (const TRegisterKeys* keys = registerKeys(command->area))
            data.insert(key::data, deviceValue(keys->def).toString());
        return;
    case Shape::RegisterMask:
        data.insert(key::data, allRegisters);
        return;
    case Shape::Leave:
        return defaultLeave(data, hasReset());
    case Shape::Separator:
    case Shape::Plain:
    case Shape::Ident:
        return;
    }
}

void TFamilyDevice::defaultBlocks(TData& data) const
{
    data.insert(key::size, defaultBlockSize);
    data.insert(key::begin, 0);
    data.insert(key::count, areaRegion(*this, Area::Whole).size / defaultBlockSize);
}

QString TFamilyDevice::commandTitle(const TData& data) const
{
    return cmdCode().name(data.value(key::cmd).toString());
}

QString TFamilyDevice::paramsText(const TData& data, QWidget* openForm) const
{
    const TCommandRow* command = row(data);
    if (!command)
        return {};
    switch (command->shape) {
    case Shape::Clock:
        return textClk(data);
    case Shape::Ident:
        return QStringLiteral("Signature: %1").arg(deviceValue(key::signature).toString());
    case Shape::Blocks:
        return blocksText(data);
    case Shape::Char:
        return textChar(data);
    case Shape::Data:
        return textData(data, command->key, openForm);
    case Shape::File:
        return textFile(data);
    case Shape::Register:
        return registerText(*command, data, openForm);
    case Shape::Leave:
        return textLeave(data, hasReset());
    case Shape::Separator:
    case Shape::Plain:
    case Shape::Pins:
    case Shape::RegisterMask:
        break;
    }
    return {};
}

QString TFamilyDevice::beginText(const TData& data) const
{
    const TCommandRow* command = row(data);
    if (command && command->action == Action::Read) {
        if (command->shape == Shape::Register)
            return {};
        if (command->shape == Shape::Data)
            return textDataRange(data);
    }
    return paramsText(data, nullptr);
}

QString TFamilyDevice::registerText(const TCommandRow& row, const TData& data, QWidget* openForm) const
{
    QString text;
    const bool shown = row.action == Action::Read && registerKeys(row.area) && openForm && formFactory() &&
                       formFactory()->resultText(openForm, data.value(key::id_cmd).toInt(), text);
    return shown ? text : param(data, key::data).toString();
}

QWidget* TFamilyDevice::createForm(const TData& data) const
{
    IFormFactory* factory = formFactory();
    if (!factory || formSpec(data).kind == TFormSpec::Kind::None)
        return nullptr;
    return factory->createForm(*this, data);
}

QWidget* TFamilyDevice::createDeviceForm(const TData& data) const
{
    IFormFactory* factory = formFactory();
    return factory ? factory->createDeviceForm(*this, data) : nullptr;
}

TFormSpec TFamilyDevice::formSpec(const TData& data) const
{
    const TCommandRow* command = row(data);
    TFormSpec spec;
    if (!command)
        return spec;
    spec.region = areaRegion(*this, command->area);
    switch (command->shape) {
    case Shape::Clock:
        spec.kind = TFormSpec::Kind::Clock;
        break;
    case Shape::Char:
        spec.kind = TFormSpec::Kind::Char;
        break;
    case Shape::Data:
        spec.kind = TFormSpec::Kind::Data;
        break;
    case Shape::File:
        spec.kind = TFormSpec::Kind::File;
        break;
    case Shape::Register:
        return registerSpec(*command, data);
    case Shape::Leave:
        spec.kind = TFormSpec::Kind::Leave;
        spec.withReset = hasReset();
        break;
    case Shape::Separator:
    case Shape::Plain:
    case Shape::Ident:
    case Shape::Pins:
    case Shape::Blocks:
    case Shape::RegisterMask:
        break;
    }
    return spec;
}

TFormSpec TFamilyDevice::deviceSpec(const TData&) const
{
    return {};
}

TFormSpec TFamilyDevice::registerSpec(const TCommandRow& row, const TData& data) const
{
    TFormSpec spec;
    const TRegisterKeys* keys = registerKeys(row.area);
    if (!keys)
        return spec;
    spec.items = deviceValue(keys->cfg).toStringList();
    if (spec.items.isEmpty())
        return spec;
    spec.kind = TFormSpec::Kind::Items;
    spec.value = param(data, key::data).toString();
    spec.defaultValue = deviceValue(keys->def).toString();
    spec.showEdit = keys->editable;
    return spec;
}

TData TFamilyDevice::normalizeParams(const TData& data) const
{
    return IDevice::normalizeParams(data);
}

bool TFamilyDevice::refreshParams(TData& data) const
{
    const TCommandRow* command = row(data);
    const TRegisterKeys* keys = command ? registerKeys(command->area) : nullptr;
    if (!keys)
        return false;
    data.insert(key::data, deviceValue(keys->def).toString());
    return true;
}

bool TFamilyDevice::checkParams(const TData& data) const
{
    const TCommandRow* command = row(data);
    if (!command)
        return false;
    const TRegion region = areaRegion(*this, command->area);
    switch (command->shape) {
    case Shape::Clock:
        return validClk(data);
    case Shape::Char:
        return validChar(data, region.begin, region.size);
    case Shape::Data:
        return validData(data, region.begin, region.size);
    case Shape::File:
        return validFile(data, region.begin, region.size);
    case Shape::Leave:
        return validLeave(data, hasReset());
    case Shape::Blocks:
        // Text would count as 0: nothing would be erased, and the run would end well.
        return areNumbers(data, key::size, key::begin, key::count);
    case Shape::RegisterMask:
        return areNumbers(data, key::data);
    case Shape::Register:
        return command->action == Action::Read || validRegister(command->area, data);
    case Shape::Separator:
    case Shape::Plain:
    case Shape::Ident:
    case Shape::Pins:
        break;
    }
    return true;
}

bool TFamilyDevice::validRegister(Area area, const TData& data) const
{
    const TRegisterKeys* keys = registerKeys(area);
    const int bytes = keys ? hexLength(deviceValue(keys->def).toString()) : 0;
    return bytes > 0 && hexLength(data.value(key::data).toString()) == bytes;
}

bool TFamilyDevice::checkDeviceParams(const TData& data) const
{
    qint64 clk = 0;
    return readInt(data.value(key::clk), clk);
}

bool TFamilyDevice::setDeviceDefaults(TData& data) const
{
    defaultClk(data, section());
    return true;
}

QByteArray TFamilyDevice::typeBlock() const
{
    const int type = typeNumber(deviceValue(key::prg_type).toString());
    return wordBytes(type) + char(quint8(deviceValue(key::cfg_hw).toUInt()));
}

QByteArray TFamilyDevice::clockBlock(const TData& data)
{
    return doubleWordBytes(execClk(data));
}
