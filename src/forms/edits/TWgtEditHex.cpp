#include "forms/TWgtEditHex.h"

#include "forms/TNumberValidator.h"

TWgtEditHex::TWgtEditHex(int value, QWidget* parent)
    : TNumberEdit<int>(value, {16, 0}, new THexValidator, parent)
{
}
