#pragma once

#include "forms/TFormCommand.h"

#include <QList>

class TComboBox;
class TWgtEditDecDef;

/// Blocks of a chip: their size, the first one and their number.
class TFormDevEraseBlocks : public TFormCommand
{
    Q_OBJECT

public:
    /// sizes on offer and total in bytes.
    TFormDevEraseBlocks(const TData& params, const QList<int>& sizes, qint64 total);

    QVariant kept() const override;
    void takeKept(const QVariant& kept) override;

public slots:
    /// The size was changed by the user.
    void slotChanged();

private:
    void showParams() override;
    void selectSize();
    void setRanges();
    void changedBegin();
    void send();

    const QList<int> m_sizes;
    const qint64 m_total;
    TComboBox* m_size;
    TWgtEditDecDef* m_begin;
    TWgtEditDecDef* m_count;
};
