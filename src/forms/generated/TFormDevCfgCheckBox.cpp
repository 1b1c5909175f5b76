#include "forms/generated/TFormDevCfgCheckBox.h"

#include "devices/shared/form_items.h"
#include "forms/edits/colors.h"
#include "forms/edits/form_bits.h"
#include "forms/edits/line_height.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QSignalBlocker>

namespace {

QByteArray allOrNone(const QByteArray& mask, bool all)
{
    return all ? mask : QByteArray(mask.size(), '\0');
}

} // namespace

TFormDevCfgCheckBox::TFormDevCfgCheckBox(const TFormItem& item, QWidget* parent)
    : IFormDevCfgBase(item.bits, item.isInverse, parent)
    , m_whenChecked(allOrNone(item.bits, !item.isInverse))
    , m_whenUnchecked(allOrNone(item.bits, item.isInverse))
    , m_box(new QCheckBox(literalLabel(item.text), this))
{
    m_box->setLayoutDirection(item.side == TFormItem::Right ? Qt::RightToLeft : Qt::LeftToRight);
    m_box->setMinimumHeight(fieldHeight(m_box));
    m_box->setEnabled(item.isEnabled);
    m_box->setToolTip(item.tip);
    if (item.isDanger)
        setDanger(m_box);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_box);
    setFocusProxy(m_box);
    connect(m_box, &QCheckBox::toggled, this, [this] { emit signalChanged(m_mask, data()); });
}

QByteArray TFormDevCfgCheckBox::data() const
{
    return m_box->isChecked() ? m_whenChecked : m_whenUnchecked;
}

void TFormDevCfgCheckBox::setData(const QByteArray& value)
{
    const QSignalBlocker blocker(m_box);
    m_box->setChecked(hasBit(value, m_mask, m_isInverse));
}
