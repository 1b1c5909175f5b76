#pragma once

#include "forms/edits/TNumberBox.h"

/// A whole number of 64 bits in hexadecimal and in decimal, with a button for its default.
class TWgtEditHexDec64 : public TNumberBox<qlonglong>
{
    Q_OBJECT

public:
    explicit TWgtEditHexDec64(qlonglong value, QWidget* parent = nullptr);

signals:
    void valueChanged(qlonglong value);

public slots:
    void slotChangedHex(qlonglong value);
    void slotChangedDec(qlonglong value);
    void slotSetDefault();
};
