#include "forms/edits/TWgtLabelEdit.h"

#include "forms/edits/TWgtLabelBtn.h"
#include "forms/edits/label_row.h"
#include "forms/edits/line_height.h"

#include <QLineEdit>

TWgtLabelEdit::TWgtLabelEdit(const QString& text, QBoxLayout::Direction direction, QWidget* parent)
    : QWidget(parent)
    , m_label(new TWgtLabelBtn(text, this))
    , m_edit(new QLineEdit(this))
    , m_layout(labelRow(this, m_label, m_edit, direction))
{
    m_edit->setFixedHeight(fieldHeight(m_edit));
}
