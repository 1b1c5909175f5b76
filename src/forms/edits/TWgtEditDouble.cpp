#include "forms/TWgtEditDouble.h"

#include "forms/TNumberValidator.h"

TWgtEditDouble::TWgtEditDouble(double value, int decimals, QWidget* parent)
    : TNumberEdit<double>(value, {10, decimals}, new TDoubleValidator(decimals), parent)
{
}
