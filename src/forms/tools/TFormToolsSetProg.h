#pragma once

#include "forms/TFormCommand.h"

class QCheckBox;
class QLabel;
class TComboBox;
class TPortBox;

/// The programmer, and a port that takes the place of its own.
class TFormToolsSetProg : public TFormCommand
{
    Q_OBJECT

public:
    explicit TFormToolsSetProg(const TData& params);
    ~TFormToolsSetProg() override;

public slots:
    void slotChanged();

private:
    void showParams() override;
    void fillAliases();
    void showRecord();

    TComboBox* m_alias;
    QLabel* m_port;
    QLabel* m_type;
    QCheckBox* m_altEnabled;
    TPortBox* m_altPort;
};
