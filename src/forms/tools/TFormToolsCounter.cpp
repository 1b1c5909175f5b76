#include "forms/tools/TFormToolsCounter.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "forms/edits/TWgtEditDecDef.h"

#include <QFormLayout>

#include <limits>

namespace {

constexpr int least = std::numeric_limits<int>::min();
constexpr int greatest = std::numeric_limits<int>::max();

TWgtEditDecDef* addField(QFormLayout* layout, Text label, int min, int defaultValue)
{
    auto* field = new TWgtEditDecDef(0);
    field->setRange(min, greatest);
    field->setDefaultValue(defaultValue);
    layout->addRow(langText(label), field);
    return field;
}

} // namespace

TFormToolsCounter::TFormToolsCounter(const TData& params)
    : TFormCommand(params, {key::value, key::limit, key::delta})
{
    QFormLayout* layout = formRows(this);
    m_value = addField(layout, Text::LabelCounterValue, 0, 0);
    m_limit = addField(layout, Text::LabelCounterLimit, 0, 10);
    m_delta = addField(layout, Text::LabelCounterDelta, least, 1);
    TFormToolsCounter::showParams();
    connect(m_value, &TWgtEditDecDef::valueChanged, this, &TFormToolsCounter::slotChanged);
    connect(m_limit, &TWgtEditDecDef::valueChanged, this, &TFormToolsCounter::slotLimitChanged);
    connect(m_delta, &TWgtEditDecDef::valueChanged, this, &TFormToolsCounter::slotDeltaChanged);
}

void TFormToolsCounter::showParams()
{
    showStored(m_value, key::value);
    showStored(m_limit, key::limit);
    showStored(m_delta, key::delta);
}

void TFormToolsCounter::slotChanged()
{
    setParam(key::value, m_value->value());
    report();
}

void TFormToolsCounter::slotLimitChanged()
{
    setParam(key::limit, m_limit->value());
    report();
}

void TFormToolsCounter::slotDeltaChanged()
{
    setParam(key::delta, m_delta->value());
    report();
}
