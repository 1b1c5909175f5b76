#include "forms/edits/align_labels.h"

#include <QFormLayout>
#include <QLabel>

void alignLabels(QWidget* form)
{
    QList<QLabel*> labels;
    for (const QFormLayout* rows : form->findChildren<QFormLayout*>()) {
        for (int row = 0; row < rows->rowCount(); ++row) {
            QLayoutItem* item = rows->itemAt(row, QFormLayout::LabelRole);
            if (auto* label = item ? qobject_cast<QLabel*>(item->widget()) : nullptr)
                labels << label;
        }
    }
    int width = 0;
    for (const QLabel* label : qAsConst(labels))
        width = qMax(width, label->sizeHint().width());
    for (QLabel* label : qAsConst(labels)) {
        label->setMinimumWidth(width);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
}
