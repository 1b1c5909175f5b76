#include "forms/edits/TWgtEditHex64.h"

#include "forms/edits/TNumberValidator.h"

TWgtEditHex64::TWgtEditHex64(qlonglong value, QWidget* parent)
    : TNumberEdit<qlonglong>(value, {16, 0}, new THex64Validator, parent)
{
}
