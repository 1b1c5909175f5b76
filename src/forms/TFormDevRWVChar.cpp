#include "forms/TFormDevRWVChar.h"

#include "core/globals.h"
#include "core/keys.h"
#include "forms/TWgtEditHexDec64.h"
#include "forms/rw_region.h"

#include <QFormLayout>

namespace {
enum Text { textAddr = 370, textCount = 371, textFill = 372 };
}

TFormDevRWVChar::TFormDevRWVChar(const TData& params)
    : TFormCommand(params, {key::addr_device, key::count, key::fill_char})
    , m_addr(new TWgtEditHexDec64(param(key::addr_device).toLongLong()))
    , m_count(new TWgtEditHexDec64(param(key::count).toLongLong()))
    , m_fill(new TWgtEditHexDec64(param(key::fill_char).toLongLong()))
{
    QFormLayout* rows = formRows(this);
    rows->addRow(langText(textAddr), m_addr);
    rows->addRow(langText(textCount), m_count);
    rows->addRow(langText(textFill), m_fill);
    m_fill->setRange(0, 255);
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
    setCountRange(m_count, m_region, m_addr->value());
    m_count->clamp();
    slotChanged();
}

void TFormDevRWVChar::slotChanged()
{
    setParam(key::addr_device, m_addr->value());
    setParam(key::count, m_count->value());
    setParam(key::fill_char, m_fill->value());
    report();
}

void TFormDevRWVChar::showParams()
{
    showIn(m_addr, param(key::addr_device).toLongLong());
    setCountRange(m_count, m_region, m_addr->value());
    showIn(m_count, param(key::count).toLongLong());
    showIn(m_fill, param(key::fill_char).toLongLong());
}
