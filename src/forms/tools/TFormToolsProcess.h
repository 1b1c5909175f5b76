#pragma once

#include "forms/TFormCommand.h"

class QCheckBox;
class TWgtEditFileName;

/// The command line of an external program, kept as it is typed, and whether its failure is the run's.
class TFormToolsProcess : public TFormCommand
{
    Q_OBJECT

public:
    explicit TFormToolsProcess(const TData& params);

public slots:
    void slotChanged(const QString& text);

private:
    void showParams() override;

    TWgtEditFileName* m_edit;
    QCheckBox* m_mustSucceed;
};
