#include "forms/edits/TWgtEditStrHex.h"

#include "forms/edits/TNumberValidator.h"

TWgtEditStrHex::TWgtEditStrHex(const QString& value, QWidget* parent)
    : TWgtEditBase(new TStrHexValidator, parent)
    , m_value(value)
{
    display(value);
}

void TWgtEditStrHex::setValue(const QString& value)
{
    display(value);
    if (value == m_value)
        return;
    m_value = value;
    emit valueChanged(value);
}
