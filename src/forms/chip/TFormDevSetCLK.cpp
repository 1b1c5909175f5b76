#include "forms/chip/TFormDevSetCLK.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "forms/edits/TComboBox.h"
#include "forms/edits/TWgtEditDecDef.h"
#include "misc/TNormCmdParam.h"

#include <QFormLayout>
#include <QSignalBlocker>

TFormDevSetCLK::TFormDevSetCLK(const TData& params, const QVector<int>& list, int min, int max)
    : TFormCommand(params, {key::clk})
    , m_box(new TComboBox(this))
    , m_edit(new TWgtEditDecDef(0, this))
    , m_hasList(!list.isEmpty())
{
    for (const int clk : list)
        m_box->addItem(textFreq(clk), clk);
    m_box->setToolTip(QStringLiteral("%1..%2").arg(textFreq(min), textFreq(max)));
    m_edit->setRange(min, max);
    m_edit->setRangeText(QStringLiteral("%1..%2 Hz").arg(QString::number(min), QString::number(max)));
    m_edit->setDefaultValue(intParam(key::clk));
    TFormDevSetCLK::showParams();
    QFormLayout* rows = formRows(this);
    if (m_hasList)
        rows->addRow(langText(Text::LabelClock), m_box);
    else
        rows->addRow(langText(Text::LabelClockHz), m_edit);
    m_box->setVisible(m_hasList);
    m_edit->setVisible(!m_hasList);
    connect(m_box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &TFormDevSetCLK::slotChanged);
    connect(m_edit, &TWgtEditDecDef::valueChanged, this, &TFormDevSetCLK::slotChanged);
}

void TFormDevSetCLK::slotChanged()
{
    if (m_hasList && m_box->currentIndex() < 0)
        return;
    setParam(key::clk, m_hasList ? m_box->currentData().toInt() : m_edit->value());
    report();
}

void TFormDevSetCLK::showParams()
{
    const QSignalBlocker blocker(m_box);
    m_box->setCurrentIndex(m_box->findData(intParam(key::clk)));
    m_box->slotChanged();
    showStored(m_edit, key::clk);
}
