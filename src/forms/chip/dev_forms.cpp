#include "forms/chip/dev_forms.h"

#include "base/keys.h"
#include "core/model/TDataPrj.h"
#include "devices/shared/TFamilyDevice.h"
#include "forms/chip/TDev24CDevParam.h"
#include "forms/chip/TFormDevEmpty.h"
#include "forms/chip/TFormDevEraseBlocks.h"
#include "forms/chip/TFormDevLeave.h"
#include "forms/chip/TFormDevRWVChar.h"
#include "forms/chip/TFormDevRWVData.h"
#include "forms/chip/TFormDevRWVFile.h"
#include "forms/chip/TFormDevSetCLK.h"
#include "forms/generated/TFormDevCfg.h"
#include "link/lists/TProg.h"

namespace {

constexpr quint8 erasedByte = 255;

int idOf(const TData& data)
{
    return data.value(key::id_cmd, -1).toInt();
}

const TProg* progOf(const TData& data)
{
    return project().binding(idOf(data)).prog;
}

QWidget* formChar(const TData& data, const TRegion& region)
{
    auto* form = new TFormDevRWVChar(data);
    form->setRegion(region);
    form->setDefaults(region, erasedByte);
    return form;
}

QWidget* formData(const TData& data, const TRegion& region)
{
    auto* form = new TFormDevRWVData(data);
    form->setRegion(region);
    form->setDefault(region.begin);
    return form;
}

QWidget* formFile(const TData& data, const TRegion& region)
{
    auto* form = new TFormDevRWVFile(data);
    form->setBaseFolder(project().workPath());
    form->setRegion(region);
    return form;
}

QWidget* formLeave(const IDevice& device, const TData& data, bool withReset)
{
    const TProg* prog = progOf(data);
    if (!prog)
        return nullptr;
    TFormDevLeave::Pulse pulse;
    prog->resetLimits(pulse.min, pulse.max);
    pulse.usual = prog->resetDefault();
    pulse.isPositive = device.deviceValue(key::reset_pol).toBool();
    return new TFormDevLeave(data, leaveState(idOf(data)), prog->pinList(device.section(), true),
                             prog->pinTexts(), withReset ? &pulse : nullptr);
}

} // namespace

TFormDevSetCLK* formClk(const TData& data, const IDevice& device)
{
    const TProg* prog = progOf(data);
    if (!prog)
        return nullptr;
    bool isList = false;
    int min = 0;
    int max = 0;
    QVector<int> values;
    prog->clockParams(device.section(), isList, min, max, values);
    return new TFormDevSetCLK(data, isList ? values : QVector<int>(), min, max);
}

TFormDevCfg* formItems(const TData& data, const TFormSpec& spec)
{
    return new TFormDevCfg(idOf(data), spec.value, spec.defaultValue, spec.items, spec.showEdit);
}

QWidget* createFamilyForm(const IDevice& device, const TData& data)
{
    const auto* family = qobject_cast<const TFamilyDevice*>(&device);
    if (!family)
        return nullptr;
    const TFormSpec spec = family->formSpec(data);
    switch (spec.kind) {
    case TFormSpec::Kind::None:
        break;
    case TFormSpec::Kind::Empty:
        return new TFormDevEmpty(data);
    case TFormSpec::Kind::Clock:
        return formClk(data, device);
    case TFormSpec::Kind::Blocks:
        return new TFormDevEraseBlocks(data, spec.blockSizes, spec.region.size);
    case TFormSpec::Kind::Char:
        return formChar(data, spec.region);
    case TFormSpec::Kind::Data:
        return formData(data, spec.region);
    case TFormSpec::Kind::File:
        return formFile(data, spec.region);
    case TFormSpec::Kind::Leave:
        return formLeave(device, data, spec.withReset);
    case TFormSpec::Kind::Items:
        return formItems(data, spec);
    }
    return nullptr;
}

QWidget* createFamilyDeviceForm(const IDevice& device, const TData& data)
{
    const auto* family = qobject_cast<const TFamilyDevice*>(&device);
    if (!family)
        return nullptr;
    const TFormSpec spec = family->deviceSpec(data);
    if (spec.kind == TFormSpec::Kind::Items)
        return new TDev24CDevParam(device, data, spec);
    return formClk(data, device);
}
