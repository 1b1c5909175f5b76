#pragma once

#include <QStyledItemDelegate>

/// Paints the parameter texts of the command table: what is too long loses its middle, so that the end,
/// where file names and results stand, stays readable.
class Delegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};
