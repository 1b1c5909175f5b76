#pragma once

#include "forms/edits/TNumberEdit.h"

/// A whole number of 64 bits in decimal.
class TWgtEditDec64 : public TNumberEdit<qlonglong>
{
    Q_OBJECT

public:
    explicit TWgtEditDec64(qlonglong value, QWidget* parent = nullptr);

signals:
    void valueChanged(qlonglong value);

private:
    void report(qlonglong value) override { emit valueChanged(value); }
};
