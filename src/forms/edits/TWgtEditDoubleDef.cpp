#include "forms/edits/TWgtEditDoubleDef.h"

#include "forms/edits/TWgtEditDouble.h"

TWgtEditDoubleDef::TWgtEditDoubleDef(double value, int decimals, QWidget* parent)
    : TNumberBox<double>({new TWgtEditDouble(value, decimals)}, parent)
{
    connect(static_cast<TWgtEditDouble*>(first()), &TWgtEditDouble::valueChanged, this,
            &TWgtEditDoubleDef::slotChangedValue);
    connect(button(), &QPushButton::clicked, this, &TWgtEditDoubleDef::slotSetDefaultValue);
}

void TWgtEditDoubleDef::slotChangedValue(double value)
{
    emit valueChanged(value);
}

void TWgtEditDoubleDef::slotSetDefaultValue()
{
    enterDefault();
}
