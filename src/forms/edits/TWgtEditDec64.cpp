#include "forms/edits/TWgtEditDec64.h"

#include "forms/edits/TNumberValidator.h"

TWgtEditDec64::TWgtEditDec64(qlonglong value, QWidget* parent)
    : TNumberEdit<qlonglong>(value, {10, 0}, new Int64Validator, parent)
{
}
