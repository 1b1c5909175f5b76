#pragma once

#include "core/types.h"

#include <QObject>

/// One run of one configuration, on its own thread. slotStart is the whole run; all that it reports
/// goes out by signals, signalFinished last, on every path.
class TExec : public QObject
{
    Q_OBJECT

public:
    explicit TExec(int id_cfg);
    ~TExec() override;

public slots:
    void slotStart();
    void slotStop(int id_cfg);
    void slotPauseReset(int id_cfg);

signals:
    void signalEventText(TCodeExec code, QString text1, QString text = QString());
    void signalEventProc(int procent);
    void signalFinished();
    void signalDestroy(int id_cfg);
    void signalStop();
    void signalPauseReset();
    void signalExecuteFromCmd(int id_cfg);
    void signalPauseFromCmd(int id_cfg);
    void signalStatusFromCmd(int id_cfg, bool status);

private:
    const int m_idCfg;
    bool m_stop = false;
};
