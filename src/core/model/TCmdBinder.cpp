#include "core/model/TCmdBinder.h"

#include "base/TCmdCode.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/TCmdList.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDeviceCache.h"
#include "core/model/TProgCache.h"
#include "link/lists/TProg.h"

#include <algorithm>

namespace {

int hexDigits(const QVariant& value)
{
    const QString text = value.toString();
    return static_cast<int>(std::count_if(text.cbegin(), text.cend(), [](QChar c) { return !c.isSpace(); }));
}

/// A chip's defaults replace stored fuses and registers only when the chip is another one than they were
/// made for. A text of the wrong length stays as well: the check finds it, where a default in its place
/// would be written to the chip without a word.
bool renew(TDataCmd& command)
{
    const IDevice* device = command.device();
    const IDevice* family = command.family();
    if (!device || !family)
        return false;
    if (command.madeFor() != family->name()) {
        command.setMadeFor(family->name());
        return command.normalize();
    }
    const QVariant stored = command.param(key::data);
    TData fresh = command.toData();
    if (!device->refreshParams(fresh))
        return false;
    if (const int digits = hexDigits(stored)) {
        // All three status registers, from before the description told how many there are: the first ones
        // count.
        constexpr int threeRegisters = 6;
        const int wanted = hexDigits(fresh.value(key::data));
        const QByteArray bytes = QByteArray::fromHex(stored.toByteArray());
        if (digits != threeRegisters || bytes.size() * 2 != digits || wanted >= digits ||
            !family->deviceValue(key::status_reg_count).isValid())
            return false;
        fresh.insert(key::data, QString::fromLatin1(bytes.left(wanted / 2).toHex().toUpper()));
    }
    command.fromData(fresh);
    return true;
}

void setDefaults(TDataCmd& command)
{
    TData defaults = command.toData();
    const IDevice* family = command.family();
    if (family && family->setDeviceDefaults(defaults))
        command.setParam(defaults);
}

void mergeParam(TDataCmd& command, const TData& data)
{
    command.setParam(data);
    const IDevice* family = command.family();
    if (family && data.contains(key::data))
        command.setMadeFor(family->name());
    command.validate();
}

} // namespace

TCmdBinder::TCmdBinder(TCmdList& commands, TDeviceCache& devices, TProgCache& progs)
    : m_commands(commands)
    , m_devices(devices)
    , m_progs(progs)
{
}

QString TCmdBinder::progBefore(int id_cfg, int index) const
{
    const int at = m_commands.progBefore(id_cfg, index);
    return at >= 0 && m_commands.at(at)->validDev() ? m_commands.at(at)->param(key::prog).toString()
                                                    : QString();
}

QString TCmdBinder::deviceBefore(int id_cfg, int index) const
{
    const int at = m_commands.progOrChipBefore(id_cfg, index);
    return at >= 0 && m_commands.at(at)->cmd() == cmd::set_device
               ? m_commands.at(at)->param(key::device).toString()
               : QString();
}

QString TCmdBinder::classOfCmd(int id_cfg, int index, const QString& word) const
{
    if (TCmdCode::isTools(word))
        return dev_class::tools;
    if (TCmdCode::isProg(word))
        return dev_class::prog;
    const int at = m_commands.validChipBefore(id_cfg, index);
    return at >= 0 ? m_commands.at(at)->param(key::device).toString() : QString();
}

TCmdBinder::TInForce TCmdBinder::inForceAt(int index)
{
    const TDataCmd* command = m_commands.at(index);
    const int id_cfg = command->cfgId();
    TInForce inForce;
    // The word of a chip's own command, whichever: the walk is the same for all of them.
    inForce.owner = m_devices.chip(classOfCmd(id_cfg, index, QString()), QString());
    inForce.family = m_devices.chip(deviceBefore(id_cfg, index), QString());
    inForce.prog = m_progs.prog(progBefore(id_cfg, index));
    return inForce;
}

void TCmdBinder::bind(int index)
{
    if (TDataCmd* command = m_commands.value(index))
        bindTo(*command, inForceAt(index));
}

void TCmdBinder::bindAll()
{
    m_devices.beginSweep();
    TInForce inForce;
    int id_cfg = -1;
    for (TDataCmd* command : m_commands.all()) {
        if (command->cfgId() != id_cfg) {
            id_cfg = command->cfgId();
            inForce = {};
        }
        bindTo(*command, inForce);
        const QString word = command->cmd();
        if (word == cmd::set_prog) {
            inForce.prog = command->validDev() ? command->prog() : nullptr;
            inForce.family = nullptr;
        } else if (word == cmd::set_device) {
            inForce.family = command->family();
            if (command->validDev())
                inForce.owner = command->family();
        }
    }
    m_devices.endSweep();
}

void TCmdBinder::bindTo(TDataCmd& command, const TInForce& inForce)
{
    const QString word = command.cmd();
    IDevice* device = inForce.owner;
    IDevice* family = inForce.family;
    TProg* programmer = inForce.prog;
    if (TCmdCode::isTools(word))
        device = m_devices.device(dev_class::tools, QString());
    else if (TCmdCode::isProg(word))
        device = m_devices.device(dev_class::prog, QString());

    bool valid = false;
    if (word == cmd::set_prog) {
        const QString name = command.param(key::prog).toString();
        family = device;
        programmer = m_progs.prog(name);
        valid = device && programmer && TProgCache::isUsable(name);
    } else if (word == cmd::set_device) {
        family = m_devices.chip(command.param(key::device).toString(), command.param(key::file).toString());
        valid = device && programmer;
    } else if (word == cmd::auto_detect) {
        family = m_devices.autoFamily(command.param(key::name).toString());
        valid = device && programmer;
    } else if (TCmdCode::isTools(word)) {
        valid = device && device->hasCommand(word);
    } else if (TCmdCode::isProg(word)) {
        valid = device && device->hasCommand(word) && programmer && programmer->supportsCommand(word);
    } else {
        valid = family && family->hasCommand(word) && programmer && device;
    }
    command.bind(device, family, programmer, valid);
    command.validate();
}

void TCmdBinder::validateAll()
{
    for (TDataCmd* command : m_commands.all())
        command->validate();
}

void TCmdBinder::setAutoDetectParam(TDataCmd& command, const TData& data)
{
    TData kept = data;
    for (const QString& word : {QString(key::stop), QString(key::execute)}) {
        const QVariant old = command.param(word);
        if (old.isValid())
            kept.insert(word, old);
    }
    command.clearParam();
    command.setParam(kept);
    bind(m_commands.indexOf(command.id()));
    setDefaults(command);
    command.validate();
}

bool TCmdBinder::normalizeAll()
{
    bool changed = false;
    for (TDataCmd* command : m_commands.all())
        changed = renew(*command) || changed;
    return changed;
}

void TCmdBinder::markMadeFor()
{
    for (TDataCmd* command : m_commands.all()) {
        if (const IDevice* family = command->family())
            command->setMadeFor(family->name());
    }
}

void TCmdBinder::setParam(TDataCmd& command, const TData& data)
{
    const QString word = command.cmd();
    const auto differs = [&](const QString& key) {
        return data.contains(key) && data.value(key).toString() != command.param(key).toString();
    };
    if (word == cmd::set_device && differs(key::device)) {
        setDeviceParam(command, data);
    } else if (word == cmd::set_prog) {
        command.setParam(data);
        bindAll();
        validateAll();
    } else if (word == cmd::auto_detect && differs(key::name)) {
        setAutoDetectParam(command, data);
    } else {
        mergeParam(command, data);
    }
}

void TCmdBinder::setDeviceParam(TDataCmd& command, const TData& data)
{
    command.clearParam();
    command.setParam(data);
    bindAll();
    setDefaults(command);
    normalizeAll();
    validateAll();
}
