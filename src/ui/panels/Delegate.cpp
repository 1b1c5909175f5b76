#include "ui/panels/Delegate.h"

void Delegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (!index.isValid())
        return;
    QStyleOptionViewItem elided = option;
    elided.textElideMode = Qt::ElideMiddle;
    QStyledItemDelegate::paint(painter, elided, index);
}
