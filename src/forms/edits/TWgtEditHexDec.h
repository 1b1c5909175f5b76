#pragma once

#include "forms/edits/TNumberBox.h"

/// A whole number in hexadecimal and in decimal, with a button for its default.
class TWgtEditHexDec : public TNumberBox<int>
{
    Q_OBJECT

public:
    explicit TWgtEditHexDec(int value, QWidget* parent = nullptr);

signals:
    void valueChanged(int value);

public slots:
    void slotChangedHex(int value);
    void slotChangedDec(int value);
    void slotSetDefaultValue();
};
