#pragma once

#include "forms/edits/TNumberBox.h"

/// A whole number whose sign has a meaning of its own, with a button for its default.
class TWgtEditDec2Def : public TNumberBox<int>
{
    Q_OBJECT

public:
    explicit TWgtEditDec2Def(int value, QWidget* parent = nullptr);

signals:
    void valueChanged(int value);

public slots:
    void slotChangedValue(int value);
    void slotSetDefaultValue();
};
