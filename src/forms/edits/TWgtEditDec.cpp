#include "forms/edits/TWgtEditDec.h"

#include "forms/edits/TNumberValidator.h"

TWgtEditDec::TWgtEditDec(int value, QWidget* parent)
    : TNumberEdit<int>(value, {10, 0}, new TIntValidator, parent)
{
}
