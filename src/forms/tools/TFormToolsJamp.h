#pragma once

#include "forms/TFormCommand.h"

class TIdBox;

/// The command that the run goes on with.
class TFormToolsJamp : public TFormCommand
{
    Q_OBJECT

public:
    explicit TFormToolsJamp(const TData& params);

public slots:
    void slotChangedCfg();
    void slotChangedCmd();

private:
    void showParams() override;

    TIdBox* m_cfg;
    TIdBox* m_cmd;
};
