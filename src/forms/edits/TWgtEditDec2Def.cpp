#include "forms/edits/TWgtEditDec2Def.h"

#include "forms/edits/TWgtEditDec2.h"

TWgtEditDec2Def::TWgtEditDec2Def(int value, QWidget* parent)
    : TNumberBox<int>({new TWgtEditDec2(value)}, parent)
{
    connect(static_cast<TWgtEditDec2*>(first()), &TWgtEditDec2::valueChanged, this,
            &TWgtEditDec2Def::slotChangedValue);
    connect(button(), &QPushButton::clicked, this, &TWgtEditDec2Def::slotSetDefaultValue);
}

void TWgtEditDec2Def::slotChangedValue(int value)
{
    emit valueChanged(value);
}

void TWgtEditDec2Def::slotSetDefaultValue()
{
    enterDefault();
}
