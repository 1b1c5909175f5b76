#pragma once

#include "forms/TFormCommand.h"

class TWgtEditDec2Def;

/// Length of the reset pulse; its sign is the polarity.
class TFormProgReset : public TFormCommand
{
    Q_OBJECT

public:
    /// Milliseconds; the limits are those of the length, the default has a sign.
    TFormProgReset(const TData& params, int min, int max, int defaultValue);

public slots:
    void slotChanged();

private:
    void showParams() override;

    TWgtEditDec2Def* m_edit;
};
