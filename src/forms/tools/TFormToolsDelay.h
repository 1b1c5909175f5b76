#pragma once

#include "forms/TFormCommand.h"

class TWgtEditDecDef;

/// A delay in milliseconds.
class TFormToolsDelay : public TFormCommand
{
    Q_OBJECT

public:
    explicit TFormToolsDelay(const TData& params);

public slots:
    void slotChanged();

private:
    void showParams() override;

    TWgtEditDecDef* m_edit;
};
