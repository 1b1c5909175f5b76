#include "forms/tools/TFormToolsDelay.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "forms/edits/TWgtEditDecDef.h"

#include <QFormLayout>

#include <limits>

namespace {
constexpr int longest = std::numeric_limits<int>::max();
constexpr int usual = 100;
} // namespace

TFormToolsDelay::TFormToolsDelay(const TData& params)
    : TFormCommand(params, {key::value})
    , m_edit(new TWgtEditDecDef(0, this))
{
    m_edit->setRange(0, longest);
    m_edit->setDefaultValue(usual);
    m_edit->setRangeText(QStringLiteral("%1..%2 ms").arg(0).arg(longest));
    m_edit->setDefaultText(QStringLiteral("Default: %1 ms").arg(usual));
    formRows(this)->addRow(langText(Text::LabelDelay), m_edit);
    TFormToolsDelay::showParams();
    connect(m_edit, &TWgtEditDecDef::valueChanged, this, &TFormToolsDelay::slotChanged);
}

void TFormToolsDelay::showParams()
{
    showStored(m_edit, key::value);
}

void TFormToolsDelay::slotChanged()
{
    setParam(key::value, m_edit->value());
    report();
}
