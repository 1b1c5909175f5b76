#pragma once

#include "forms/TFormCommand.h"

#include <QVector>

class TComboBox;
class TWgtEditDecDef;

/// A clock: one of the programmer's list, or, without a list, any in its range.
class TFormDevSetCLK : public TFormCommand
{
    Q_OBJECT

public:
    /// Hz.
    TFormDevSetCLK(const TData& params, const QVector<int>& list, int min, int max);

public slots:
    void slotChanged();

private:
    void showParams() override;

    TComboBox* m_box;
    TWgtEditDecDef* m_edit;
    const bool m_hasList;
};
