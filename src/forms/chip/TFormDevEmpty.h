#pragma once

#include "forms/TFormCommand.h"

/// The form of a command without parameters: nothing to show, nothing to change.
class TFormDevEmpty : public TFormCommand
{
    Q_OBJECT

public:
    explicit TFormDevEmpty(const TData& params);

private:
    void showParams() override {}
};
