#pragma once

#include "forms/edits/TNumberBox.h"

/// A whole number with a button for its default.
class TWgtEditDecDef : public TNumberBox<int>
{
    Q_OBJECT

public:
    explicit TWgtEditDecDef(int value, QWidget* parent = nullptr);

signals:
    void valueChanged(int value);

public slots:
    void slotChangedValue(int value);
    void slotSetDefaultValue();
};
