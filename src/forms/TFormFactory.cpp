#include "forms/TFormFactory.h"

#include "base/keys.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "devices/prog/TDevProg.h"
#include "devices/shared/TFamilyDevice.h"
#include "devices/tools/TDevTools.h"
#include "forms/chip/TFormDevRWVData.h"
#include "forms/chip/dev_forms.h"
#include "forms/generated/TFormDevCfg.h"
#include "forms/prog/prog_forms.h"
#include "forms/tools/tools_forms.h"

namespace {

using Creator = QWidget* (*)(const IDevice&, const TData&);

template <typename Device> bool isA(const IDevice& device)
{
    return qobject_cast<const Device*>(&device) != nullptr;
}

/// Who makes the forms of a class of devices.
constexpr struct
{
    bool (*matches)(const IDevice&);
    Creator create;
} rows[] = {
    {isA<TDevProg>, createProgForm},
    {isA<TDevTools>, createToolsForm},
    {isA<TFamilyDevice>, createFamilyForm},
};

/// The parameters as the form was made from them: what a generated form shows may be stored otherwise.
TData asShown(const TData& data)
{
    const TBinding bound = project().binding(data.value(key::id_cmd, -1).toInt());
    const auto* family = qobject_cast<const TFamilyDevice*>(bound.device);
    TData shown = data;
    if (!family)
        return shown;
    shown.insert(key::cmd, bound.command->cmd());
    const TFormSpec spec = family->formSpec(shown);
    if (spec.kind == TFormSpec::Kind::Items)
        shown.insert(key::data, spec.value);
    return shown;
}

} // namespace

QWidget* TFormFactory::createForm(const IDevice& device, const TData& data)
{
    for (const auto& row : rows) {
        if (row.matches(device))
            return row.create(device, data);
    }
    return nullptr;
}

QWidget* TFormFactory::createDeviceForm(const IDevice& device, const TData& data)
{
    return createFamilyDeviceForm(device, data);
}

bool TFormFactory::resultText(QWidget* form, int id_cmd, QString& text)
{
    const auto* command = qobject_cast<const TFormCommand*>(form);
    if (!command || command->idCmd() != id_cmd)
        return false;
    if (const auto* items = qobject_cast<const TFormDevCfg*>(form)) {
        text = items->text();
        return true;
    }
    const auto* bytes = qobject_cast<const TFormDevRWVData*>(form);
    if (!bytes || !bytes->isRead())
        return false;
    text = bytes->text();
    return true;
}

bool TFormFactory::updateForm(QWidget* form, const TData& data)
{
    auto* command = qobject_cast<TFormCommand*>(form);
    return command && command->updateParams(asShown(data));
}
