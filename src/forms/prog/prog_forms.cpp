#include "forms/prog/prog_forms.h"

#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/TDataPrj.h"
#include "forms/edits/mono_font.h"
#include "forms/prog/TFormProgAutoDetect.h"
#include "forms/prog/TFormProgReset.h"
#include "forms/prog/TFormProgSetDevice.h"
#include "forms/prog/TFormProgSetFreq.h"
#include "forms/prog/TFormProgSetIO.h"
#include "forms/prog/TFormProgSupply.h"
#include "link/lists/TProg.h"

namespace {

QWidget* setDevice(const TData& data, const TBinding&, const TProg&)
{
    return new TFormProgSetDevice(data);
}

QWidget* autoDetect(const TData& data, const TBinding&, const TProg&)
{
    return new TFormProgAutoDetect(data);
}

QWidget* reset(const TData& data, const TBinding&, const TProg& prog)
{
    int min = 0;
    int max = 0;
    prog.resetLimits(min, max);
    return new TFormProgReset(data, min, max, prog.resetDefault());
}

QWidget* setIo(const TData& data, const TBinding& bound, const TProg& prog)
{
    const IDevice* family = bound.family;
    return new TFormProgSetIO(data, prog.pinList(family ? family->section() : QString(), true),
                              prog.pinTexts(), monoFont());
}

QWidget* setFreq(const TData& data, const TBinding&, const TProg& prog)
{
    return new TFormProgSetFreq(data, prog);
}

/// Ends of a range.
struct Limits
{
    double min = 0;
    double max = 0;
};

QWidget* setVcc(const TData& data, const TBinding&, const TProg& prog)
{
    Limits volts;
    prog.vccLimits(volts.min, volts.max);
    return new TFormProgSetVCC(data, volts.min, volts.max, prog.vccDefault());
}

QWidget* setVpp(const TData& data, const TBinding&, const TProg& prog)
{
    Limits volts;
    prog.vppLimits(volts.min, volts.max);
    return new TFormProgSetVPP(data, volts.min, volts.max, prog.vppDefault());
}

QWidget* setVicc(const TData& data, const TBinding&, const TProg& prog)
{
    Limits volts;
    Limits current;
    prog.vccLimits(volts.min, volts.max);
    prog.iccLimits(current.min, current.max);
    return new TFormProgSetVICC(data, volts.min, volts.max, prog.vccDefault(), current.min, current.max,
                                prog.iccDefault());
}

QWidget* setVipp(const TData& data, const TBinding&, const TProg& prog)
{
    Limits volts;
    Limits current;
    prog.vppLimits(volts.min, volts.max);
    prog.ippLimits(current.min, current.max);
    return new TFormProgSetVIPP(data, volts.min, volts.max, prog.vppDefault(), current.min, current.max,
                                prog.ippDefault());
}

constexpr struct
{
    QLatin1String word;
    QWidget* (*create)(const TData&, const TBinding&, const TProg&);
} rows[] = {
    {cmd::set_device, setDevice}, {cmd::auto_detect, autoDetect}, {cmd::reset, reset},
    {cmd::set_io, setIo},         {cmd::set_freq, setFreq},       {cmd::set_vcc, setVcc},
    {cmd::set_vpp, setVpp},       {cmd::set_vicc, setVicc},       {cmd::set_vipp, setVipp},
};

} // namespace

QWidget* createProgForm(const IDevice&, const TData& data)
{
    const TBinding bound = project().binding(data.value(key::id_cmd, -1).toInt());
    if (!bound.prog)
        return nullptr;
    const QString word = data.value(key::cmd).toString();
    for (const auto& row : rows) {
        if (word == row.word)
            return row.create(data, bound, *bound.prog);
    }
    return nullptr;
}
