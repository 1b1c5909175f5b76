#include "forms/TFormDevLeave.h"

#include "core/keys.h"
#include "forms/TComboBox.h"
#include "forms/TWgtEditDecDef.h"
#include "forms/TWgtLine.h"
#include "forms/colors.h"
#include "misc/TNormCmdParam.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>

namespace {

constexpr char letterProperty[] = "pinLetter";
/// More would make the form wider than its page.
constexpr int buttonsInRow = 5;

QStringList keysOf(bool withReset)
{
    return withReset ? QStringList{key::state, key::reset, key::duration} : QStringList{key::state};
}

} // namespace

TFormDevLeave::TFormDevLeave(const TData& params, const QString& state, const QStringList& pins,
                             const QStringList& texts, const Pulse* pulse)
    : TFormCommand(params, keysOf(pulse))
    , m_texts(texts)
    , m_pins(pins.size())
    , m_state(padState(state, pins.size()))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    if (pulse)
        addPulse(*pulse);
    layout->addWidget(pinRows(pins), 1);
    layout->addWidget(buttons());
    showState();
    for (TComboBox* box : qAsConst(m_boxes))
        connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &TFormDevLeave::slotChangedState);
}

void TFormDevLeave::addPulse(const Pulse& pulse)
{
    const int low = pulse.isPositive ? pulse.min : -pulse.max;
    const int high = pulse.isPositive ? pulse.max : -pulse.min;
    const int usual = pulse.isPositive ? qAbs(pulse.usual) : -qAbs(pulse.usual);
    m_reset = new QCheckBox(QStringLiteral("Reset, ms:"));
    m_reset->setChecked(param(key::reset).toBool());
    m_duration = new TWgtEditDecDef(intParam(key::duration));
    m_duration->setRange(low, high);
    m_duration->setRangeText(QStringLiteral("%1..%2 ms").arg(QString::number(low), QString::number(high)));
    m_duration->setDefaultValue(usual);
    m_duration->setDefaultText(QStringLiteral("Default: %1 ms").arg(usual));
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

QWidget* TFormDevLeave::pinRows(const QStringList& pins)
{
    auto* page = new QWidget;
    QFormLayout* rows = formRows(page);
    rows->setSpacing(3);
    for (const QString& pin : pins) {
        auto* box = new TComboBox;
        box->addItems(m_texts);
        m_boxes.append(box);
        rows->addRow(QStringLiteral("%1:").arg(literalLabel(pin)), box);
    }
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(page);
    return area;
}

QWidget* TFormDevLeave::buttons()
{
    auto* bar = new QWidget;
    auto* grid = new QGridLayout(bar);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(3);
    int place = 0;
    for (const QString& text : m_texts) {
        auto* button = new QPushButton(QStringLiteral("All '%1'").arg(literalLabel(text.left(1))));
        button->setProperty(letterProperty, text.left(1));
        button->setToolTip(text);
        grid->addWidget(button, place / buttonsInRow, place % buttonsInRow);
        ++place;
        connect(button, &QPushButton::clicked, this, &TFormDevLeave::slotSetStateAll);
    }
    return bar;
}

void TFormDevLeave::showState()
{
    for (int i = 0; i < m_boxes.size(); ++i) {
        TComboBox* box = m_boxes.at(i);
        const QSignalBlocker blocker(box);
        int fitting = m_texts.size() - 1;
        while (fitting >= 0 && m_texts.at(fitting).left(1) != m_state.mid(i, 1))
            --fitting;
        box->setCurrentIndex(fitting);
        box->slotChanged();
    }
}

void TFormDevLeave::slotSetStateAll()
{
    m_state = sender()->property(letterProperty).toString().repeated(m_pins);
    showState();
    send();
}

void TFormDevLeave::slotChangedReset()
{
    m_duration->setEnabled(m_reset->isChecked());
    m_duration->clamp();
    send();
}

void TFormDevLeave::slotChangedState()
{
    auto* box = qobject_cast<TComboBox*>(sender());
    const int index = m_boxes.indexOf(box);
    if (index < 0 || box->currentIndex() < 0)
        return;
    m_state.replace(index, 1, box->currentText().left(1));
    send();
}

void TFormDevLeave::send()
{
    setParam(key::state, m_state);
    if (m_reset) {
        setParam(key::reset, m_reset->isChecked());
        setParam(key::duration, m_duration->value());
    }
    report();
}

void TFormDevLeave::showParams()
{
    m_state = padState(textParam(key::state), m_pins);
    showState();
    if (!m_reset)
        return;
    const QSignalBlocker blocker(m_reset);
    m_reset->setChecked(param(key::reset).toBool());
    m_duration->setEnabled(m_reset->isChecked());
    showIn(m_duration, intParam(key::duration));
}
