#include "forms/tools_forms.h"

QWidget* createToolsForm(const IDevice&, const TData&)
{
    return nullptr;
}
