#include "forms/edits/TWgtEditDouble.h"

#include "forms/edits/TNumberValidator.h"

TWgtEditDouble::TWgtEditDouble(double value, int decimals, QWidget* parent)
    : TNumberEdit<double>(value, {10, decimals}, new TDoubleValidator(decimals), parent)
{
}
