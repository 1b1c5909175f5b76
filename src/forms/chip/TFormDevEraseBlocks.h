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
    /// The user has changed the size or the first block: a number of blocks that was cut grows back as far as
    /// there is room. A first block behind the chip is kept and marked.
    void slotChanged();

private:
    void showParams() override;
    void selectSize();
    void setRanges();
    void send();

    const QList<int> m_sizes;
    const qint64 m_total;
    TComboBox* m_size;
    TWgtEditDecDef* m_begin;
    TWgtEditDecDef* m_count;
};
