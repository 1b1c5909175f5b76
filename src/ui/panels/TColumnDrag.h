#pragma once

#include <QObject>

class QTableWidget;

/// Lets the right edge of one column be dragged in a table without a header: the mouse shows it by its
/// cursor, and a press there goes to no row.
class TColumnDrag : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the table.
    TColumnDrag(QTableWidget* table, int column);

signals:
    /// The user has let the edge go; width in pixels.
    void signalMoved(int width);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    bool isOnEdge(int x) const;
    void drag(int x);

    QTableWidget* const m_table;
    const int m_column;
    bool m_isDragging = false;
};
