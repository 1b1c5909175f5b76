#include "forms/edits/TWgtEditHexDec64.h"

#include "forms/edits/TWgtEditDec64.h"
#include "forms/edits/TWgtEditHex64.h"

TWgtEditHexDec64::TWgtEditHexDec64(qlonglong value, QWidget* parent)
    : TNumberBox<qlonglong>({new TWgtEditHex64(value), new TWgtEditDec64(value)}, parent)
{
    connect(static_cast<TWgtEditHex64*>(part(0)), &TWgtEditHex64::valueChanged, this,
            &TWgtEditHexDec64::slotChangedHex);
    connect(static_cast<TWgtEditDec64*>(part(1)), &TWgtEditDec64::valueChanged, this,
            &TWgtEditHexDec64::slotChangedDec);
    connect(button(), &QPushButton::clicked, this, &TWgtEditHexDec64::slotSetDefault);
}

void TWgtEditHexDec64::slotChangedHex(qlonglong value)
{
    part(1)->follow(value);
    emit valueChanged(value);
}

void TWgtEditHexDec64::slotChangedDec(qlonglong value)
{
    part(0)->follow(value);
    emit valueChanged(value);
}

void TWgtEditHexDec64::slotSetDefault()
{
    enterDefault();
}
