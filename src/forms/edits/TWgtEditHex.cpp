#include "forms/edits/TWgtEditHex.h"

#include "forms/edits/TNumberValidator.h"

TWgtEditHex::TWgtEditHex(int value, QWidget* parent)
    : TNumberEdit<int>(value, {16, 0}, new THexValidator, parent)
{
}
