#include "forms/generated/TFormDevCfgComboBoxLabel.h"

#include "devices/shared/form_items.h"
#include "forms/edits/TComboBox.h"
#include "forms/edits/TWgtLabelBtn.h"
#include "forms/edits/TWgtLabelComboBox.h"
#include "forms/edits/form_bits.h"

#include <QSignalBlocker>

namespace {

bool isBeside(const TFormItem& item)
{
    return item.side == TFormItem::Left || item.side == TFormItem::Right;
}

QBoxLayout::Direction direction(const TFormItem& item)
{
    if (!isBeside(item))
        return QBoxLayout::TopToBottom;
    return item.side == TFormItem::Left ? QBoxLayout::LeftToRight : QBoxLayout::RightToLeft;
}

Qt::Alignment alignment(const TFormItem& item)
{
    if (item.side == TFormItem::AboveCentre)
        return Qt::AlignHCenter | Qt::AlignVCenter;
    return Qt::AlignVCenter | (item.side == TFormItem::AboveRight ? Qt::AlignRight : Qt::AlignLeft);
}

} // namespace

TFormDevCfgComboBoxLabel::TFormDevCfgComboBoxLabel(const TFormItem& item, QWidget* parent)
    : IFormDevCfgBase(item.bits, false, parent)
    , m_row(new TWgtLabelComboBox(item.text, direction(item), this))
    , m_box(m_row->box())
{
    TWgtLabelBtn* label = m_row->label();
    label->setVisible(item.side != TFormItem::Hidden);
    label->setAlignment(alignment(item));
    label->setWordWrap(isBeside(item)); // a long text would push the box off the page
    m_row->rowLayout()->setStretchFactor(label, isBeside(item) ? 1 : 0);
    m_box->setToolTip(item.text);
    m_box->setMaxVisibleItems(25);
    m_box->allowNarrow();
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 3);
    layout->addWidget(m_row);
    setFocusProxy(m_box);
    connect(m_row, &TWgtLabelComboBox::signalChange, this, &TFormDevCfgComboBoxLabel::choose);
}

void TFormDevCfgComboBoxLabel::addChoice(const TFormItem& item)
{
    const QSignalBlocker blocker(m_box);
    m_choices.append(item.bits);
    m_box->addItem(item.text);
    // The first entry of an empty box becomes current by itself; which one is comes with the value.
    m_box->setCurrentIndex(-1);
    m_box->slotChanged();
}

QByteArray TFormDevCfgComboBoxLabel::data() const
{
    return m_data;
}

void TFormDevCfgComboBoxLabel::setData(const QByteArray& value)
{
    const QSignalBlocker blocker(m_box);
    m_data = maskedBits(value, m_mask);
    m_box->setCurrentIndex(m_choices.lastIndexOf(m_data));
    m_box->slotChanged();
}

void TFormDevCfgComboBoxLabel::choose(int index)
{
    if (index < 0 || index >= m_choices.size())
        return;
    m_data = m_choices.at(index);
    emit signalChanged(m_mask, m_data);
}
