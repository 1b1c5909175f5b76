#include "forms/chip/TFormDevLeave.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "forms/TPinStates.h"
#include "forms/edits/TWgtEditDecDef.h"
#include "forms/edits/TWgtLine.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QSignalBlocker>

namespace {

QStringList keysOf(bool withReset)
{
    return withReset ? QStringList{key::state, key::reset, key::duration} : QStringList{key::state};
}

QStringList labelsOf(const QStringList& pins)
{
    QStringList labels;
    for (const QString& pin : pins)
        labels << QStringLiteral("%1:").arg(pin);
    return labels;
}

} // namespace

TFormDevLeave::TFormDevLeave(const TData& params, const QString& state, const QStringList& pins,
                             const QStringList& texts, const Pulse* pulse)
    : TFormCommand(params, keysOf(pulse))
    , m_pins(new TPinStates(labelsOf(pins), texts, font(), TPinStates::Below))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    if (pulse)
        addPulse(*pulse);
    layout->addWidget(m_pins, 1);
    m_pins->setState(state);
    connect(m_pins, &TPinStates::signalChanged, this, &TFormDevLeave::slotChangedState);
}

void TFormDevLeave::addPulse(const Pulse& pulse)
{
    const int low = pulse.isPositive ? pulse.min : -pulse.max;
    const int high = pulse.isPositive ? pulse.max : -pulse.min;
    const int usual = pulse.isPositive ? qAbs(pulse.usual) : -qAbs(pulse.usual);
    m_reset = new QCheckBox(langText(Text::LabelReset));
    m_reset->setChecked(param(key::reset).toBool());
    m_duration = new TWgtEditDecDef(0);
    m_duration->setRange(low, high);
    m_duration->setRangeText(QStringLiteral("%1..%2 ms").arg(QString::number(low), QString::number(high)));
    m_duration->setDefaultValue(usual);
    m_duration->setDefaultText(QStringLiteral("Default: %1 ms").arg(usual));
    showStored(m_duration, key::duration);
    m_duration->setEnabled(m_reset->isChecked());
    auto* row = new QHBoxLayout;
    row->addWidget(m_reset);
    row->addWidget(m_duration, 1);
    auto* rows = static_cast<QVBoxLayout*>(layout());
    rows->addLayout(row);
    rows->addWidget(new TWgtLine);
    connect(m_reset, &QCheckBox::toggled, this, &TFormDevLeave::slotChangedReset);
    connect(m_duration, &TWgtEditDecDef::valueChanged, this, &TFormDevLeave::slotChangedReset);
}

void TFormDevLeave::slotChangedReset()
{
    m_duration->setEnabled(m_reset->isChecked());
    m_duration->clamp();
    slotChangedState();
}

void TFormDevLeave::slotChangedState()
{
    setParam(key::state, m_pins->state());
    if (m_reset) {
        setParam(key::reset, m_reset->isChecked());
        setParam(key::duration, m_duration->stored());
    }
    report();
}

void TFormDevLeave::showParams()
{
    m_pins->setState(textParam(key::state));
    if (!m_reset)
        return;
    const QSignalBlocker blocker(m_reset);
    m_reset->setChecked(param(key::reset).toBool());
    m_duration->setEnabled(m_reset->isChecked());
    showStored(m_duration, key::duration);
}
