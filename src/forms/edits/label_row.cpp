#include "forms/edits/label_row.h"

#include "forms/edits/TWgtLabelBtn.h"

QBoxLayout* labelRow(QWidget* row, TWgtLabelBtn* label, QWidget* field, QBoxLayout::Direction direction)
{
    auto* layout = new QBoxLayout(direction, row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(3);
    layout->addWidget(label);
    layout->addWidget(field);
    row->setFocusProxy(field);
    field->setAccessibleName(label->text());
    QObject::connect(label, &TWgtLabelBtn::clicked, field,
                     [field] { field->setFocus(Qt::MouseFocusReason); });
    return layout;
}
