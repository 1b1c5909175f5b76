#include "forms/chip/TFormDevEmpty.h"

TFormDevEmpty::TFormDevEmpty(const TData& params)
    : TFormCommand(params, {})
{
}
