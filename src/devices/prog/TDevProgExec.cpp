#include "devices/prog/TDevProgExec.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/TDataPrj.h"
#include "core/model/shared_settings.h"
#include "link/lists/AutoList.h"
#include "link/wire/TSerialPort.h"
#include "link/wire/opcodes.h"
#include "misc/TNormCmdParam.h"
#include "misc/TParamReader.h"

#include <memory>

namespace {

constexpr TParamReader param("devices/TDevProgExec");

void append(QByteArray& payload, quint64 value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        payload.append(static_cast<char>((value >> (8 * i)) & 0xFF));
}

/// The field of a scaled value: the fraction is cut off. Through an integer, since a double that does
/// not fit the field has no defined value there.
quint64 scaled(double value, int factor)
{
    return qAbs(value) < 1e9 ? static_cast<quint64>(static_cast<qint64>(value * factor)) : 0;
}

QByteArray resetPayload(const TData& data)
{
    return durationBytes(param(data, key::duration).toInt());
}

QByteArray ioPayload(const TData& data)
{
    return pinPayload(0, leaveStateAny(param(data, key::id_cmd).toInt()));
}

QByteArray freqPayload(const TData& data)
{
    QByteArray payload;
    append(payload, param(data, key::freq).toULongLong(), 4);
    append(payload, param(data, key::duty_cycle).toULongLong() * 10, 2);
    return payload;
}

QByteArray voltPayload(const TData& data, const QString& volts)
{
    QByteArray payload;
    append(payload, scaled(param(data, volts).toDouble(), 10), 1);
    return payload;
}

QByteArray limitPayload(const TData& data, const QString& volts, const QString& current, int currentBytes)
{
    QByteArray payload = voltPayload(data, volts);
    append(payload, scaled(param(data, current).toDouble(), 1000), currentBytes);
    append(payload, param(data, key::ocp).toBool() ? 1 : 0, 1);
    return payload;
}

QByteArray vccPayload(const TData& data)
{
    return voltPayload(data, key::vcc);
}

QByteArray vppPayload(const TData& data)
{
    return voltPayload(data, key::vpp);
}

QByteArray viccPayload(const TData& data)
{
    return limitPayload(data, key::vcc, key::icc, 4);
}

QByteArray vippPayload(const TData& data)
{
    return limitPayload(data, key::vpp, key::ipp, 2);
}

/// A command that is one frame made of its parameters.
struct Frame
{
    QLatin1String word;
    quint8 command;
    QByteArray (*payload)(const TData&);
};

constexpr Frame frames[] = {
    {cmd::reset, opcode::resetPulse, resetPayload},    {cmd::set_freq, opcode::setFreq, freqPayload},
    {cmd::set_io, opcode::setPins, ioPayload},         {cmd::set_vcc, opcode::setVcc, vccPayload},
    {cmd::set_vpp, opcode::setVpp, vppPayload},        {cmd::set_vicc, opcode::setVccLimit, viccPayload},
    {cmd::set_vipp, opcode::setVppLimit, vippPayload},
};

/// The configuration of a chip, -1 when the routes name none.
int routeOf(const QString& text, const QString& id)
{
    const TPairStringList routes = TPairStringList::fromText(text);
    bool isNumber = false;
    const int cfg = routes.value(id).toInt(&isNumber);
    return isNumber ? cfg : -1;
}

} // namespace

TDevProgExec::TDevProgExec(const TData& data)
    : IDeviceExec(data)
{
}

bool TDevProgExec::execute(TSerialPort* port, bool&, int& cur_cfg, int& cur_cmd)
{
    if (!portGuard(port))
        return false;
    const QString word = param(m_cmdData, key::cmd).toString();
    if (word == cmd::set_device)
        return runSetDevice(port);
    if (word == cmd::auto_detect)
        return runAutoDetect(port, cur_cfg, cur_cmd);
    for (const Frame& frame : frames) {
        if (word == frame.word)
            return send(port, frame.command, frame.payload(m_cmdData));
    }
    return false;
}

bool TDevProgExec::send(TSerialPort* port, quint8 command, QByteArray payload)
{
    return sendChecked(port, command, payload);
}

bool TDevProgExec::runSetDevice(TSerialPort* port)
{
    const IDevice* family = project().binding(param(m_cmdData, key::id_cmd).toInt()).family;
    return family && send(port, opcode::selectChip, family->deviceParamBlock(m_cmdData));
}

bool TDevProgExec::runAutoDetect(TSerialPort* port, int& cur_cfg, int& cur_cmd)
{
    const bool stops = isFlagSet(param(m_cmdData, key::stop));
    const IDevice* family = project().binding(cur_cmd).family;
    QString id;
    if (!family || !detectChip(port, *family, stops, id))
        return false;
    const TPairStringList chips = autoSignatures(devicesFolder(), param(m_cmdData, key::name).toString());
    const QString chip = QStringLiteral("%1 (%2)").arg(chips.value(id), id);
    emit signalEventText(ceText, langText(Text::DeviceFound).arg(chip));
    const int cfg = routeOf(param(m_cmdData, key::route).toString(), id);
    if (cfg >= 0)
        return takeRoute(port, cfg, cur_cfg, cur_cmd);
    const QString noRoute = langText(Text::RouteMissing).arg(chip);
    if (stops)
        return fail(noRoute);
    emit signalEventText(ceText, noRoute);
    return true;
}

bool TDevProgExec::detectChip(TSerialPort* port, const IDevice& family, bool stops, QString& id)
{
    // A chip that is not there may be passed over, a link that is gone may not.
    if (!send(port, opcode::selectChip, family.deviceParamBlock(m_cmdData)) &&
        (stops || port->isLinkFailed()))
        return false;
    const std::unique_ptr<IDeviceExec> reader(family.createExec(m_cmdData));
    const bool read = reader && reader->readChipId(port, id);
    if (port->isLinkFailed())
        return fail(port->errorString());
    if (!read && stops)
        return fail(reader ? reader->errorText() : QString());
    m_errorText.clear();
    return true;
}

bool TDevProgExec::takeRoute(TSerialPort* port, int cfg, int& cur_cfg, int& cur_cmd)
{
    if (!project().cfgById(cfg))
        return fail(langText(Text::CfgMissing));
    // The configuration opens its own link with its set_prog.
    port->close();
    const QString name = project().cfgName(cfg);
    if (isFlagSet(param(m_cmdData, key::execute))) {
        emit signalEventText(ceText, langText(Text::CfgStarted).arg(name));
        emit signalExecuteFromCmd(cfg);
        return true;
    }
    cur_cfg = cfg;
    cur_cmd = -1;
    emit signalEventText(ceWork, QStringLiteral("\n--> %1 \"%2\"").arg(langText(Text::JumpToCfg), name));
    return true;
}
