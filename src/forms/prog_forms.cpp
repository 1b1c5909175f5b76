#include "forms/prog_forms.h"

QWidget* createProgForm(const IDevice&, const TData&)
{
    return nullptr;
}
