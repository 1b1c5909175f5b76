#include "devices/prog/TDevProg.h"

#include "base/TCmdCode.h"
#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/TDataPrj.h"
#include "devices/prog/TDevProgExec.h"
#include "link/lists/TPairStringList.h"
#include "link/lists/TProg.h"
#include "misc/TNormCmdParam.h"
#include "misc/TParamReader.h"

#include <QtMath>

namespace {

constexpr TParamReader param("devices/TDevProg");

TBinding bindingOf(const TData& data)
{
    return project().binding(param(data, key::id_cmd).toInt());
}

/// The family's part of set_device and auto_detect.
bool checkFamily(const TData& data)
{
    const TBinding bound = bindingOf(data);
    return bound.prog && bound.family && bound.family->checkDeviceParams(data);
}

void defaultSetDevice(TData& data)
{
    data[key::device] = QString();
}

QString textSetDevice(const TData& data)
{
    return param(data, key::device).toString();
}

void defaultAutoDetect(TData& data)
{
    data[key::name] = QString();
    data[key::route] = QString();
    data[key::execute] = 0;
    data[key::stop] = 1;
}

bool checkAutoDetect(const TData& data)
{
    // A target that is no number would be taken for a missing route, and text for "skip" as what to do then.
    const TPairStringList routes = TPairStringList::fromText(param(data, key::route).toString());
    qint64 cfg = 0;
    for (int row = 0; row < routes.count(); ++row) {
        if (!readInt(routes.value(row), cfg))
            return false;
    }
    return isFlag(param(data, key::execute)) && isFlag(param(data, key::stop)) && checkFamily(data);
}

QString textAutoDetect(const TData& data)
{
    return QStringLiteral("%1: %2, %3")
        .arg(param(data, key::name).toString(),
             cmdCode().name(isFlagSet(param(data, key::execute)) ? cmd::execute : cmd::jamp),
             langText(isFlagSet(param(data, key::stop)) ? Text::RouteStop : Text::RouteSkip));
}

void defaultReset(TData& data)
{
    if (const TProg* prog = bindingOf(data).prog)
        data[key::duration] = prog->resetDefault();
}

bool checkReset(const TData& data)
{
    const TProg* prog = bindingOf(data).prog;
    if (!prog)
        return false;
    int min = 0;
    int max = 0;
    prog->resetLimits(min, max);
    qint64 duration = 0;
    if (!readInt(param(data, key::duration), duration))
        return false;
    const qint64 length = qAbs(duration);
    return length != 0 && length >= min && length <= max;
}

QString textReset(const TData& data)
{
    return QStringLiteral("%1 ms").arg(param(data, key::duration).toLongLong());
}

void defaultSetIo(TData& data)
{
    if (bindingOf(data).prog)
        data[key::state] = QString();
}

bool checkSetIo(const TData& data)
{
    const TProg* prog = bindingOf(data).prog;
    return prog && validState(param(data, key::state).toString(), *prog);
}

QString textSetIo(const TData& data)
{
    return leaveStateAny(param(data, key::id_cmd).toInt());
}

/// The group Frequency of a programmer's description.
struct Frequency
{
    explicit Frequency(const TProg& prog)
    {
        prog.freqParams(isFreqList, freqMin, freqMax, freqs, showsDuty, isDutyList, dutyMin, dutyMax, duties);
    }

    bool allowsFreq(qint64 freq) const
    {
        return freq >= freqMin && freq <= freqMax && (!isFreqList || freqs.contains(static_cast<int>(freq)));
    }

    bool allowsDuty(qint64 duty) const
    {
        return duty >= dutyMin && duty <= dutyMax &&
               (!showsDuty || !isDutyList || duties.contains(static_cast<int>(duty)));
    }

    bool isFreqList = false;
    int freqMin = 0;
    int freqMax = 0;
    QVector<int> freqs;
    bool showsDuty = false;
    bool isDutyList = false;
    int dutyMin = 0;
    int dutyMax = 0;
    QVector<int> duties;
};

void defaultSetFreq(TData& data)
{
    const TProg* prog = bindingOf(data).prog;
    if (!prog)
        return;
    int freq = 0;
    int duty = 0;
    prog->freqDefaults(freq, duty);
    data[key::freq] = static_cast<uint>(freq);
    data[key::duty_cycle] = static_cast<uint>(duty);
}

bool checkSetFreq(const TData& data)
{
    const TProg* prog = bindingOf(data).prog;
    if (!prog)
        return false;
    const Frequency limits(*prog);
    qint64 freq = 0;
    qint64 duty = 0;
    return readInt(param(data, key::freq), freq) && readInt(param(data, key::duty_cycle), duty) &&
           limits.allowsFreq(freq) && limits.allowsDuty(duty);
}

QString textSetFreq(const TData& data)
{
    const qint64 freq = param(data, key::freq).toLongLong();
    const TProg* prog = bindingOf(data).prog;
    if (prog && Frequency(*prog).showsDuty)
        return textFreqDuty(freq, param(data, key::duty_cycle).toInt());
    return textFreq(freq);
}

/// A supply of the programmer: its parameters and what the description says of them.
struct Supply
{
    using Limits = void (TProg::*)(double&, double&) const;
    using Default = double (TProg::*)() const;

    QLatin1String volts;
    QLatin1String current;
    Limits voltLimits;
    Default voltDefault;
    Limits currentLimits;
    Default currentDefault;
    double tooMuchCurrent; ///< mA; from here on the field of the frame, in microamperes, would wrap
};

/// The same for the voltages, a byte of tenths.
constexpr double tooManyVolts = 25.6;

constexpr Supply vcc = {key::vcc,          key::icc,           &TProg::vccLimits, &TProg::vccDefault,
                        &TProg::iccLimits, &TProg::iccDefault, 4294967.296};
constexpr Supply vpp = {
    key::vpp, key::ipp, &TProg::vppLimits, &TProg::vppDefault, &TProg::ippLimits, &TProg::ippDefault, 65.536};

/// Compared in tenths, as the user sees and enters the values.
bool inTenths(double value, double min, double max)
{
    static constexpr double sane = 1e9; // beyond it, and for what is no number, rounding would be undefined
    const auto tenths = [](double v) { return qRound64(qBound(-sane, v, sane) * 10); };
    return qAbs(value) < sane && tenths(value) >= tenths(min) && tenths(value) <= tenths(max);
}

/// A value that the frame cannot carry is wrong even where a description allows it: another one would be
/// sent.
bool inLimits(const TData& data, const QString& key, const TProg& prog, Supply::Limits limits, double tooMuch)
{
    double min = 0;
    double max = 0;
    (prog.*limits)(min, max);
    const double value = param(data, key).toDouble();
    return value < tooMuch && inTenths(value, min, max);
}

QString voltText(const TData& data, const QString& key)
{
    return QStringLiteral("%1 V").arg(QString::number(param(data, key).toDouble(), 'f', 1));
}

template <const Supply& supply> void defaultVolts(TData& data)
{
    if (const TProg* prog = bindingOf(data).prog)
        data[supply.volts] = (prog->*supply.voltDefault)();
}

template <const Supply& supply> bool checkVolts(const TData& data)
{
    const TProg* prog = bindingOf(data).prog;
    return prog && inLimits(data, supply.volts, *prog, supply.voltLimits, tooManyVolts);
}

template <const Supply& supply> QString textVolts(const TData& data)
{
    return voltText(data, supply.volts);
}

template <const Supply& supply> void defaultCurrent(TData& data)
{
    const TProg* prog = bindingOf(data).prog;
    if (!prog)
        return;
    data[supply.volts] = (prog->*supply.voltDefault)();
    data[supply.current] = (prog->*supply.currentDefault)();
    data[key::ocp] = true;
}

template <const Supply& supply> bool checkCurrent(const TData& data)
{
    const TProg* prog = bindingOf(data).prog;
    return prog && checkVolts<supply>(data) &&
           inLimits(data, supply.current, *prog, supply.currentLimits, supply.tooMuchCurrent);
}

template <const Supply& supply> QString textCurrent(const TData& data)
{
    return QStringLiteral("%1, %2 mA%3")
        .arg(voltText(data, supply.volts), QString::number(param(data, supply.current).toDouble(), 'f', 3),
             param(data, key::ocp).toBool() ? QStringLiteral(", OCP") : QString());
}

} // namespace

const TDevProg::Row TDevProg::rowTable[] = {
    {cmd::set_device, defaultSetDevice, checkFamily, textSetDevice},
    {cmd::auto_detect, defaultAutoDetect, checkAutoDetect, textAutoDetect},
    {cmd::reset, defaultReset, checkReset, textReset},
    {cmd::set_io, defaultSetIo, checkSetIo, textSetIo},
    {cmd::set_freq, defaultSetFreq, checkSetFreq, textSetFreq},
    {cmd::set_vcc, defaultVolts<vcc>, checkVolts<vcc>, textVolts<vcc>},
    {cmd::set_vpp, defaultVolts<vpp>, checkVolts<vpp>, textVolts<vpp>},
    {cmd::set_vicc, defaultCurrent<vcc>, checkCurrent<vcc>, textCurrent<vcc>},
    {cmd::set_vipp, defaultCurrent<vpp>, checkCurrent<vpp>, textCurrent<vpp>},
};

TDevProg::TDevProg(const QString& name, const TData& data)
    : TPseudoDevice(name, data, rowTable, TCmdCode::progKeys())
{
}

QWidget* TDevProg::createForm(const TData& data) const
{
    return bindingOf(data).prog ? TPseudoDevice::createForm(data) : nullptr;
}

IDeviceExec* TDevProg::createExec(const TData& data) const
{
    return new TDevProgExec(data);
}
