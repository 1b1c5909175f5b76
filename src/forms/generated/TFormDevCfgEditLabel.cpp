#include "forms/generated/TFormDevCfgEditLabel.h"

#include "devices/shared/form_items.h"
#include "forms/edits/TTextKeys.h"
#include "forms/edits/TWgtLabelBtn.h"
#include "forms/edits/TWgtLabelEdit.h"
#include "forms/edits/form_bits.h"
#include "misc/TNormCmdParam.h"

#include <QLineEdit>

TFormDevCfgEditLabel::TFormDevCfgEditLabel(const TFormItem& item, QWidget* parent)
    : IFormDevCfgBase(item.bits, false, parent)
{
    const bool isLabelFirst = item.side == TFormItem::Left;
    auto* row =
        new TWgtLabelEdit(item.text, isLabelFirst ? QBoxLayout::LeftToRight : QBoxLayout::RightToLeft, this);
    const Qt::Alignment side = isLabelFirst ? Qt::AlignLeft : Qt::AlignRight;
    row->label()->setAlignment(Qt::AlignVCenter | side);
    m_edit = row->edit();
    m_edit->setAlignment(side);
    m_edit->setReadOnly(true);
    new TTextKeys(m_edit);
    if (item.extent > 0)
        m_edit->setFixedWidth(item.extent);
    const bool fillsRow = isLabelFirst && item.extent == 0;
    row->rowLayout()->setStretchFactor(m_edit, fillsRow ? 1 : 0);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(row, fillsRow ? 1 : 0);
    if (!fillsRow)
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
