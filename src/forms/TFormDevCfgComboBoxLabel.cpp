#include "forms/TFormDevCfgComboBoxLabel.h"

#include "devices/form_items.h"
#include "forms/TComboBox.h"
#include "forms/colors.h"
#include "forms/form_bits.h"

#include <QBoxLayout>
#include <QLabel>
#include <QSignalBlocker>

TFormDevCfgComboBoxLabel::TFormDevCfgComboBoxLabel(const TFormItem& item, QWidget* parent)
    : IFormDevCfgBase(item.bits, false, parent)
    , m_label(new QLabel(item.text, this))
    , m_box(new TComboBox(this))
{
    m_label->setTextFormat(Qt::PlainText);
    m_label->setBuddy(m_box);
    m_label->setVisible(item.side != TFormItem::Hidden);
    m_box->setToolTip(item.text);
    m_box->setMaxVisibleItems(25);
    m_box->setFixedHeight(fieldHeight(m_box));
    m_box->allowNarrow();
    QBoxLayout* layout = place(item);
    layout->setContentsMargins(0, 0, 0, 3);
    layout->setSpacing(3);
    setFocusProxy(m_box);
    connect(m_box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &TFormDevCfgComboBoxLabel::choose);
}

QBoxLayout* TFormDevCfgComboBoxLabel::place(const TFormItem& item)
{
    const bool isBeside = item.side == TFormItem::Left || item.side == TFormItem::Right;
    auto* layout = new QBoxLayout(isBeside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom, this);
    m_label->setWordWrap(isBeside); // a long text would push the box off the page
    layout->addWidget(m_label, isBeside ? 1 : 0);
    layout->insertWidget(item.side == TFormItem::Right ? 0 : 1, m_box, 0);
    if (item.side == TFormItem::AboveCentre)
        m_label->setAlignment(Qt::AlignHCenter | Qt::AlignVCenter);
    else if (item.side == TFormItem::AboveRight)
        m_label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return layout;
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
