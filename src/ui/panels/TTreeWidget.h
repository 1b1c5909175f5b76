#pragma once

#include <QTreeWidget>

/// A tree whose nodes can be counted: depth first, parents before their children, as the list file has them.
class TTreeWidget : public QTreeWidget
{
    Q_OBJECT

public:
    explicit TTreeWidget(QWidget* parent = nullptr);

    /// All nodes in that order.
    QList<QTreeWidgetItem*> nodes() const;
    /// Index of the current node; -1 with none.
    int indexOfSelected() const;
    /// Makes the node current; nothing for an index that no node has.
    void selectByIndex(int index);

protected:
    void dropEvent(QDropEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    /// Where a node is dropped: as that child of parent, null for the top.
    struct Target
    {
        QTreeWidgetItem* parent;
        int row;
    };

    Target targetAt(const QPoint& pos) const;
    /// False, and nothing is changed, if the target lies below the node itself.
    bool moveNode(QTreeWidgetItem* node, Target target);
};
