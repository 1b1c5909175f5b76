#include "forms/TFormDevCfgEditLabel.h"

#include "devices/form_items.h"
#include "forms/colors.h"
#include "forms/form_bits.h"
#include "misc/TNormCmdParam.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

TFormDevCfgEditLabel::TFormDevCfgEditLabel(const TFormItem& item, QWidget* parent)
    : IFormDevCfgBase(item.bits, false, parent)
    , m_edit(new QLineEdit(this))
{
    const bool isLabelFirst = item.side == TFormItem::Left;
    auto* label = new QLabel(item.text, this);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignVCenter | (isLabelFirst ? Qt::AlignLeft : Qt::AlignRight));
    m_edit->setAlignment(isLabelFirst ? Qt::AlignLeft : Qt::AlignRight);
    m_edit->setReadOnly(true);
    m_edit->setFixedHeight(fieldHeight(m_edit));
    if (item.extent > 0)
        m_edit->setFixedWidth(item.extent);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(3);
    layout->addWidget(label);
    layout->insertWidget(isLabelFirst ? 1 : 0, m_edit, isLabelFirst && item.extent == 0 ? 1 : 0);
    if (!isLabelFirst || item.extent > 0)
        layout->addStretch(1);
    setFocusProxy(m_edit);
}

QByteArray TFormDevCfgEditLabel::data() const
{
    return m_data;
}

void TFormDevCfgEditLabel::setData(const QByteArray& value)
{
    m_data = shownBits(value, m_mask);
    m_edit->setText(bytesToHex(m_data));
    m_edit->setCursorPosition(0);
}
