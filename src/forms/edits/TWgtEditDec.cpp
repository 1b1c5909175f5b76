#include "forms/TWgtEditDec.h"

#include "forms/TNumberValidator.h"

TWgtEditDec::TWgtEditDec(int value, QWidget* parent)
    : TNumberEdit<int>(value, {10, 0}, new TIntValidator, parent)
{
}
