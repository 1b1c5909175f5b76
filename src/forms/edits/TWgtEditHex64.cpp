#include "forms/TWgtEditHex64.h"

#include "forms/TNumberValidator.h"

TWgtEditHex64::TWgtEditHex64(qlonglong value, QWidget* parent)
    : TNumberEdit<qlonglong>(value, {16, 0}, new THex64Validator, parent)
{
}
