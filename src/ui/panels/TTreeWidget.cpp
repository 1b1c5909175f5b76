#include "ui/panels/TTreeWidget.h"

#include "base/qt_versions.h"

#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QFocusEvent>
#include <QSignalBlocker>
#include <QTreeWidgetItemIterator>

namespace {

bool isAbove(const QTreeWidgetItem* node, const QTreeWidgetItem* other)
{
    while (other && other != node)
        other = other->parent();
    return other == node;
}

void expandAgain(const QList<QTreeWidgetItem*>& nodes)
{
    for (QTreeWidgetItem* node : nodes)
        node->setExpanded(true);
}

} // namespace

TTreeWidget::TTreeWidget(QWidget* parent)
    : QTreeWidget(parent)
{
}

QList<QTreeWidgetItem*> TTreeWidget::nodes() const
{
    QList<QTreeWidgetItem*> list;
    for (QTreeWidgetItemIterator it(const_cast<TTreeWidget*>(this)); *it; ++it)
        list.append(*it);
    return list;
}

int TTreeWidget::indexOfSelected() const
{
    QTreeWidgetItem* current = currentItem();
    return current ? nodes().indexOf(current) : -1;
}

void TTreeWidget::selectByIndex(int index)
{
    if (QTreeWidgetItem* node = nodes().value(index))
        setCurrentItem(node);
}

TTreeWidget::Target TTreeWidget::targetAt(const QPoint& pos) const
{
    QTreeWidgetItem* item = itemAt(pos);
    if (!item)
        return {nullptr, topLevelItemCount()};
    // The same bounds as those of the line that shows where the node will go.
    const QRect rect = visualItemRect(item);
    const int edge = qBound(2, qRound(qreal(rect.height()) / 5.5), 12);
    const bool above = pos.y() - rect.top() < edge;
    const bool below = rect.bottom() - pos.y() < edge;
    if (!above && !below)
        return {item, item->childCount()};
    QTreeWidgetItem* parent = item->parent();
    const int row = parent ? parent->indexOfChild(item) : indexOfTopLevelItem(item);
    return {parent, above ? row : row + 1};
}

bool TTreeWidget::moveNode(QTreeWidgetItem* node, Target target)
{
    if (isAbove(node, target.parent))
        return false;
    QList<QTreeWidgetItem*> expanded;
    for (QTreeWidgetItem* other : nodes()) {
        if (other->isExpanded() && isAbove(node, other))
            expanded.append(other);
    }
    // While the current node is taken out its neighbour is current for a moment: that is no choice of
    // the user's.
    const QSignalBlocker blocker(this);
    QTreeWidgetItem* current = currentItem();
    QTreeWidgetItem* root = target.parent ? target.parent : invisibleRootItem();
    QTreeWidgetItem* oldRoot = node->parent() ? node->parent() : invisibleRootItem();
    const int from = oldRoot->indexOfChild(node);
    oldRoot->takeChild(from);
    const bool shifted = oldRoot == root && from < target.row;
    root->insertChild(shifted ? target.row - 1 : target.row, node);
    expandAgain(expanded);
    setCurrentItem(current);
    return true;
}

void TTreeWidget::dropEvent(QDropEvent* event)
{
    QTreeWidgetItem* node = selectedItems().value(0);
    const bool moved = dragDropMode() == InternalMove && node && moveNode(node, targetAt(placeOf(*event)));
    // Not a move to the one who drags: it would then remove the node, which stands in its new place.
    event->setDropAction(Qt::IgnoreAction);
    event->setAccepted(moved);
    // Ends scrolling and takes the line away.
    QDragLeaveEvent leave;
    QTreeWidget::dragLeaveEvent(&leave);
}

void TTreeWidget::focusInEvent(QFocusEvent* event)
{
    // The base class makes the first node current when there is none; that would open its project,
    // even if the focus comes with a click at another node.
    const bool hadCurrent = currentItem() != nullptr;
    const QSignalBlocker blocker(this);
    QTreeWidget::focusInEvent(event);
    if (!hadCurrent)
        setCurrentItem(nullptr);
}
