#include "forms/TFormFactory.h"

#include "devices/TDevProg.h"
#include "devices/TDevTools.h"
#include "forms/TFormCommand.h"
#include "forms/prog_forms.h"
#include "forms/tools_forms.h"

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
};

} // namespace

QWidget* TFormFactory::createForm(const IDevice& device, const TData& data)
{
    for (const auto& row : rows) {
        if (row.matches(device))
            return row.create(device, data);
    }
    return nullptr;
}

QWidget* TFormFactory::createDeviceForm(const IDevice&, const TData&)
{
    return nullptr;
}

bool TFormFactory::resultText(QWidget*, int, QString&)
{
    return false;
}

bool TFormFactory::updateForm(QWidget* form, const TData& data)
{
    auto* command = qobject_cast<TFormCommand*>(form);
    return command && command->updateParams(data);
}
