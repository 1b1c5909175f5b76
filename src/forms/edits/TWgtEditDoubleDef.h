#pragma once

#include "forms/edits/TNumberBox.h"

/// A decimal fraction with a button for its default.
class TWgtEditDoubleDef : public TNumberBox<double>
{
    Q_OBJECT

public:
    TWgtEditDoubleDef(double value, int decimals, QWidget* parent = nullptr);

signals:
    void valueChanged(double value);

public slots:
    void slotChangedValue(double value);
    void slotSetDefaultValue();
};
