#include "forms/prog/TFormProgSupply.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "forms/edits/TWgtEditDoubleDef.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QSignalBlocker>

namespace {

TSupplyValue volts(const QString& key, Text label, double min, double max, double defaultValue)
{
    return {key, langText(label), QStringLiteral("V"), 1, min, max, defaultValue};
}

TSupplyValue milliamperes(const QString& key, Text label, double min, double max, double defaultValue)
{
    return {key, langText(label), QStringLiteral("mA"), 3, min, max, defaultValue};
}

QStringList keysOf(const QVector<TSupplyValue>& values)
{
    QStringList keys;
    for (const TSupplyValue& value : values)
        keys << value.key;
    if (values.size() > 1)
        keys << key::ocp;
    return keys;
}

} // namespace

TFormProgSupply::TFormProgSupply(const TData& params, const QVector<TSupplyValue>& values)
    : TFormCommand(params, keysOf(values))
{
    QFormLayout* layout = formRows(this);
    for (const TSupplyValue& value : values)
        addValue(layout, value);
    if (values.size() > 1)
        addProtection(layout);
    TFormProgSupply::showParams();
}

void TFormProgSupply::addValue(QFormLayout* layout, const TSupplyValue& value)
{
    auto* edit = new TWgtEditDoubleDef(0, value.decimals, this);
    edit->setRange(value.min, value.max);
    edit->setDefaultValue(value.defaultValue);
    edit->setRangeText(
        QStringLiteral("%1..%2 %3").arg(value.min, 0, 'g', -1).arg(value.max, 0, 'g', -1).arg(value.unit));
    edit->setDefaultText(
        QStringLiteral("Default: %1 %2").arg(value.defaultValue, 0, 'g', -1).arg(value.unit));
    layout->addRow(value.label, edit);
    const QString word = value.key;
    connect(edit, &TWgtEditDoubleDef::valueChanged, this, [this, word](double entered) {
        setParam(word, entered);
        slotChanged();
    });
    m_edits.append({word, edit});
}

void TFormProgSupply::addProtection(QFormLayout* layout)
{
    m_protection = new QCheckBox(this);
    layout->addRow(langText(Text::LabelOcp), m_protection);
    connect(m_protection, &QCheckBox::stateChanged, this, [this](int state) {
        setParam(key::ocp, state != Qt::Unchecked);
        slotChanged();
    });
}

void TFormProgSupply::showParams()
{
    for (const auto& edit : qAsConst(m_edits))
        showStored(edit.second, edit.first);
    if (!m_protection)
        return;
    const QSignalBlocker blocker(m_protection);
    m_protection->setChecked(param(key::ocp).toBool());
}

void TFormProgSupply::slotChanged()
{
    report();
}

TFormProgSetVCC::TFormProgSetVCC(const TData& params, double min, double max, double defaultValue)
    : TFormProgSupply(params, {volts(key::vcc, Text::LabelVcc, min, max, defaultValue)})
{
}

TFormProgSetVPP::TFormProgSetVPP(const TData& params, double min, double max, double defaultValue)
    : TFormProgSupply(params, {volts(key::vpp, Text::LabelVpp, min, max, defaultValue)})
{
}

TFormProgSetVICC::TFormProgSetVICC(const TData& params, double vccMin, double vccMax, double vccDefault,
                                   double iccMin, double iccMax, double iccDefault)
    : TFormProgSupply(params, {volts(key::vcc, Text::LabelVcc, vccMin, vccMax, vccDefault),
                               milliamperes(key::icc, Text::LabelIcc, iccMin, iccMax, iccDefault)})
{
}

TFormProgSetVIPP::TFormProgSetVIPP(const TData& params, double vppMin, double vppMax, double vppDefault,
                                   double ippMin, double ippMax, double ippDefault)
    : TFormProgSupply(params, {volts(key::vpp, Text::LabelVpp, vppMin, vppMax, vppDefault),
                               milliamperes(key::ipp, Text::LabelIpp, ippMin, ippMax, ippDefault)})
{
}
