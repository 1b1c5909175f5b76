#pragma once

#include "forms/TFormCommand.h"
#include "misc/TNormCmdParam.h"

class TWgtEditHexDec64;

/// A range of a memory and the byte that fills it.
class TFormDevRWVChar : public TFormCommand
{
    Q_OBJECT

public:
    explicit TFormDevRWVChar(const TData& params);

    void setRegion(const TRegion& region);
    /// What the buttons "*" give: the whole region, and the byte.
    void setDefaults(const TRegion& region, quint8 fill);

    QVariant kept() const override;
    void takeKept(const QVariant& kept) override;

public slots:
    void slotChanged();

private:
    void showParams() override;
    void changedAddr();

    TRegion m_region;
    TWgtEditHexDec64* m_addr;
    TWgtEditHexDec64* m_count;
    TWgtEditHexDec64* m_fill;
};
