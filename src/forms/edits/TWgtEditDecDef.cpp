#include "forms/edits/TWgtEditDecDef.h"

#include "forms/edits/TWgtEditDec.h"

TWgtEditDecDef::TWgtEditDecDef(int value, QWidget* parent)
    : TNumberBox<int>({new TWgtEditDec(value)}, parent)
{
    connect(static_cast<TWgtEditDec*>(first()), &TWgtEditDec::valueChanged, this,
            &TWgtEditDecDef::slotChangedValue);
    connect(button(), &QPushButton::clicked, this, &TWgtEditDecDef::slotSetDefaultValue);
}

void TWgtEditDecDef::slotChangedValue(int value)
{
    emit valueChanged(value);
}

void TWgtEditDecDef::slotSetDefaultValue()
{
    enterDefault();
}
