#pragma once

#include "base/types.h"
#include "exec/IRunView.h"

#include <QObject>

class TRunOutput;

/// What stands for a configuration's tab on the console: hands the events of its run to the output.
class TRunView : public QObject, public IRunView
{
    Q_OBJECT

public:
    /// The output is borrowed.
    TRunView(int id_cfg, const QString& name, TRunOutput& output);
    ~TRunView() override;

    QObject* receiver() override { return this; }
    void runBegins() override;
    void runStopped() override;
    void runEnded() override;

public slots:
    void slotExecEventText(TCodeExec code, const QString& text1, const QString& text2);
    void slotExecEventProc(int procent);

private:
    const int m_idCfg;
    const QString m_name;
    TRunOutput& m_output;
};
