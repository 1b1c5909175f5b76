#include "forms/prog/TFormProgReset.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "forms/edits/TWgtEditDec2Def.h"

#include <QFormLayout>

TFormProgReset::TFormProgReset(const TData& params, int min, int max, int defaultValue)
    : TFormCommand(params, {key::duration})
    , m_edit(new TWgtEditDec2Def(0, this))
{
    m_edit->setRange(min, max);
    m_edit->setDefaultValue(defaultValue);
    m_edit->setRangeText(QStringLiteral("%1..%2, %3..%4 ms").arg(-min).arg(-max).arg(min).arg(max));
    m_edit->setDefaultText(QStringLiteral("Default: %1 ms").arg(defaultValue));
    formRows(this)->addRow(langText(Text::LabelReset), m_edit);
    TFormProgReset::showParams();
    connect(m_edit, &TWgtEditDec2Def::valueChanged, this, &TFormProgReset::slotChanged);
}

void TFormProgReset::showParams()
{
    showStored(m_edit, key::duration);
}

void TFormProgReset::slotChanged()
{
    setParam(key::duration, m_edit->value());
    report();
}
