#include "forms/chip/TFormDevRWVChar.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "forms/chip/rw_region.h"
#include "forms/edits/TWgtEditHexDec64.h"

#include <QFormLayout>

TFormDevRWVChar::TFormDevRWVChar(const TData& params)
    : TFormCommand(params, {key::addr_device, key::count, key::fill_char})
    , m_addr(new TWgtEditHexDec64(0))
    , m_count(new TWgtEditHexDec64(0))
    , m_fill(new TWgtEditHexDec64(0))
{
    QFormLayout* rows = formRows(this);
    rows->addRow(langText(Text::LabelCharAddr), m_addr);
    rows->addRow(langText(Text::LabelCharCount), m_count);
    rows->addRow(langText(Text::LabelCharFill), m_fill);
    m_fill->setRange(0, 255);
    TFormDevRWVChar::showParams();
    connect(m_addr, &TWgtEditHexDec64::valueChanged, this, &TFormDevRWVChar::changedAddr);
    connect(m_count, &TWgtEditHexDec64::valueChanged, this, &TFormDevRWVChar::slotChanged);
    connect(m_fill, &TWgtEditHexDec64::valueChanged, this, &TFormDevRWVChar::slotChanged);
}

void TFormDevRWVChar::setRegion(const TRegion& region)
{
    m_region = region;
    setAddressRange(m_addr, region);
    setCountRange(m_count, region, m_addr->value());
}

void TFormDevRWVChar::setDefaults(const TRegion& region, quint8 fill)
{
    m_addr->setDefaultValue(region.begin);
    m_count->setDefaultValue(region.size);
    m_fill->setDefaultValue(fill);
}

void TFormDevRWVChar::changedAddr()
{
    fitCount(m_count, m_region, m_addr->value());
    slotChanged();
}

void TFormDevRWVChar::slotChanged()
{
    setParam(key::addr_device, m_addr->stored());
    setParam(key::count, m_count->stored());
    setParam(key::fill_char, m_fill->stored());
    report();
}

void TFormDevRWVChar::showParams()
{
    showStored(m_addr, key::addr_device);
    setCountRange(m_count, m_region, m_addr->value());
    showStored(m_count, key::count);
    showStored(m_fill, key::fill_char);
}

QVariant TFormDevRWVChar::kept() const
{
    return keptCount(m_count->value(), m_count->wish());
}

void TFormDevRWVChar::takeKept(const QVariant& kept)
{
    m_count->setWish(wishOfKept(kept, m_count->value()));
}
