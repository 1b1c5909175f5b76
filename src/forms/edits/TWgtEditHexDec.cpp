#include "forms/edits/TWgtEditHexDec.h"

#include "forms/edits/TWgtEditDec.h"
#include "forms/edits/TWgtEditHex.h"

TWgtEditHexDec::TWgtEditHexDec(int value, QWidget* parent)
    : TNumberBox<int>({new TWgtEditHex(value), new TWgtEditDec(value)}, parent)
{
    connect(static_cast<TWgtEditHex*>(part(0)), &TWgtEditHex::valueChanged, this,
            &TWgtEditHexDec::slotChangedHex);
    connect(static_cast<TWgtEditDec*>(part(1)), &TWgtEditDec::valueChanged, this,
            &TWgtEditHexDec::slotChangedDec);
    connect(button(), &QPushButton::clicked, this, &TWgtEditHexDec::slotSetDefaultValue);
}

void TWgtEditHexDec::slotChangedHex(int value)
{
    part(1)->follow(value);
    emit valueChanged(value);
}

void TWgtEditHexDec::slotChangedDec(int value)
{
    part(0)->follow(value);
    emit valueChanged(value);
}

void TWgtEditHexDec::slotSetDefaultValue()
{
    enterDefault();
}
