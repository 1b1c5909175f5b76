#pragma once

#include "forms/edits/TNumberEdit.h"

/// A whole number whose sign has a meaning of its own: its size lies between the bounds, its sign is the
/// user's. A size out of the bounds goes to the nearer one, 0 to the default; a step crosses the gap.
class TWgtEditDec2 : public TNumberEdit<int>
{
    Q_OBJECT

public:
    explicit TWgtEditDec2(int value, QWidget* parent = nullptr);

signals:
    void valueChanged(int value);

private:
    void report(int value) override { emit valueChanged(value); }
    bool allows(int value) const override;
    int fitted(int value) const override;
    int stepped(int value, int delta) const override;
};
