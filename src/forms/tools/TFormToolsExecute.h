#pragma once

#include "forms/TFormCommand.h"

class TIdBox;

/// The configuration that is started beside the running one.
class TFormToolsExecute : public TFormCommand
{
    Q_OBJECT

public:
    explicit TFormToolsExecute(const TData& params);

public slots:
    void slotChanged();

private:
    void showParams() override;

    TIdBox* m_cfg;
};
