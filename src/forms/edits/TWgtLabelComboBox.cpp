#include "forms/edits/TWgtLabelComboBox.h"

#include "forms/edits/TComboBox.h"
#include "forms/edits/TWgtLabelBtn.h"
#include "forms/edits/label_row.h"
#include "forms/edits/line_height.h"

TWgtLabelComboBox::TWgtLabelComboBox(const QString& text, QBoxLayout::Direction direction, QWidget* parent)
    : QWidget(parent)
    , m_label(new TWgtLabelBtn(text, this))
    , m_box(new TComboBox(this))
    , m_layout(labelRow(this, m_label, m_box, direction))
{
    m_box->setFixedHeight(fieldHeight(m_box));
    connect(m_box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &TWgtLabelComboBox::slotChange);
}

void TWgtLabelComboBox::slotChange(int index)
{
    emit signalChange(index);
}
