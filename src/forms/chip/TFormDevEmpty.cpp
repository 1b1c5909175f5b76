#include "forms/TFormDevEmpty.h"

TFormDevEmpty::TFormDevEmpty(const TData& params)
    : TFormCommand(params, {})
{
}
