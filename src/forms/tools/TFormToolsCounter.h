#pragma once

#include "forms/TFormCommand.h"

class TWgtEditDecDef;

/// A counter: its value, where it ends, and its step.
class TFormToolsCounter : public TFormCommand
{
    Q_OBJECT

public:
    explicit TFormToolsCounter(const TData& params);

public slots:
    void slotChanged();
    void slotLimitChanged();
    void slotDeltaChanged();

private:
    void showParams() override;

    TWgtEditDecDef* m_value;
    TWgtEditDecDef* m_limit;
    TWgtEditDecDef* m_delta;
};
