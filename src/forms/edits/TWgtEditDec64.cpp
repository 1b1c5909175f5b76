#include "forms/TWgtEditDec64.h"

#include "forms/TNumberValidator.h"

TWgtEditDec64::TWgtEditDec64(qlonglong value, QWidget* parent)
    : TNumberEdit<qlonglong>(value, {10, 0}, new Int64Validator, parent)
{
}
