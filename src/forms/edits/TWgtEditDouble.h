#pragma once

#include "forms/edits/TNumberEdit.h"

/// A decimal fraction.
class TWgtEditDouble : public TNumberEdit<double>
{
    Q_OBJECT

public:
    /// decimals: digits behind the point, shown and entered.
    TWgtEditDouble(double value, int decimals, QWidget* parent = nullptr);

signals:
    void valueChanged(double value);

private:
    void report(double value) override { emit valueChanged(value); }
};
