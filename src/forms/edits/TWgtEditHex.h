#pragma once

#include "forms/edits/TNumberEdit.h"

/// A whole number in hexadecimal.
class TWgtEditHex : public TNumberEdit<int>
{
    Q_OBJECT

public:
    explicit TWgtEditHex(int value, QWidget* parent = nullptr);

signals:
    void valueChanged(int value);

private:
    void report(int value) override { emit valueChanged(value); }
};
