#include "forms/prog/TFormProgSetFreq.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "forms/edits/TComboBox.h"
#include "forms/edits/TWgtEditDecDef.h"
#include "link/lists/TProg.h"
#include "misc/TNormCmdParam.h"

#include <QFormLayout>
#include <QSignalBlocker>

namespace {

constexpr int listLines = 10;
constexpr int hiddenDuty = 50; // percent, where the programmer has no other

QString percentText(int value)
{
    return QStringLiteral("%1 %").arg(value);
}

} // namespace

TFormProgSetFreq::TFormProgSetFreq(const TData& params, const TProg& prog)
    : TFormCommand(params, {key::freq, key::duty_cycle})
{
    TValue freq{key::freq, langText(Text::LabelFreq), {}, {}, 0, 0, 0};
    TValue duty{key::duty_cycle, langText(Text::LabelDutyCycle), {}, {}, 0, 0, 0};
    bool isFreqList = false;
    bool isDutyList = false;
    QVector<int> freqs;
    QVector<int> duties;
    prog.freqDefaults(freq.defaultValue, duty.defaultValue);
    prog.freqParams(isFreqList, freq.min, freq.max, freqs, m_showsDuty, isDutyList, duty.min, duty.max,
                    duties);
    freq.rangeText = QStringLiteral("%1..%2 Hz").arg(freq.min).arg(freq.max);
    freq.defaultText = QStringLiteral("Default: %1").arg(freq.defaultValue);
    duty.rangeText = QStringLiteral("%1..%2 %").arg(duty.min).arg(duty.max);
    duty.defaultText = QStringLiteral("Default: %1 %").arg(duty.defaultValue);

    QFormLayout* layout = formRows(this);
    if (isFreqList)
        addBox(layout, freq, freqs, [](int hz) { return textFreq(hz); });
    else
        addEdit(layout, freq);
    if (m_showsDuty && isDutyList)
        addBox(layout, duty, duties, percentText);
    else if (m_showsDuty)
        addEdit(layout, duty);
    TFormProgSetFreq::showParams();
}

void TFormProgSetFreq::addEdit(QFormLayout* layout, const TValue& value)
{
    auto* edit = new TWgtEditDecDef(0, this);
    edit->setRange(value.min, value.max);
    edit->setDefaultValue(value.defaultValue);
    edit->setRangeText(value.rangeText);
    edit->setDefaultText(value.defaultText);
    layout->addRow(value.label, edit);
    const QString word = value.key;
    connect(edit, &TWgtEditDecDef::valueChanged, this, [this, word](int entered) { enter(word, entered); });
    m_rows.append({word, edit, nullptr});
}

void TFormProgSetFreq::addBox(QFormLayout* layout, const TValue& value, const QVector<int>& choice,
                              const std::function<QString(int)>& text)
{
    auto* box = new TComboBox(this);
    box->setMaxVisibleItems(listLines);
    for (const int entry : choice)
        box->addItem(text(entry), entry);
    box->setToolTip(QStringLiteral("%1\n%2").arg(value.rangeText, value.defaultText));
    layout->addRow(value.label, box);
    const QString word = value.key;
    connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this, word, box](int index) {
        if (index >= 0)
            enter(word, box->itemData(index).toInt());
    });
    m_rows.append({word, nullptr, box});
}

void TFormProgSetFreq::showParams()
{
    for (const TRow& row : qAsConst(m_rows)) {
        if (row.edit) {
            showStored(row.edit, row.key);
            continue;
        }
        const QSignalBlocker blocker(row.box);
        row.box->setCurrentIndex(row.box->findData(intParam(row.key)));
        row.box->slotChanged();
    }
}

void TFormProgSetFreq::enter(const QString& key, int value)
{
    setParam(key, value);
    slotChanged();
}

void TFormProgSetFreq::slotChanged()
{
    if (!m_showsDuty)
        setParam(key::duty_cycle, hiddenDuty);
    report();
}
