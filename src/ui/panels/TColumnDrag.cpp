#include "ui/panels/TColumnDrag.h"

#include "base/qt_versions.h"

#include <QMouseEvent>
#include <QTableWidget>

namespace {

constexpr int reach = 3; // pixels at each side of the edge
constexpr int least = 40;

} // namespace

TColumnDrag::TColumnDrag(QTableWidget* table, int column)
    : QObject(table)
    , m_table(table)
    , m_column(column)
{
    table->viewport()->setMouseTracking(true);
    table->viewport()->installEventFilter(this);
}

bool TColumnDrag::isOnEdge(int x) const
{
    const int edge = m_table->columnViewportPosition(m_column) + m_table->columnWidth(m_column);
    return qAbs(x - edge) <= reach;
}

/// What is behind the column keeps some room too.
void TColumnDrag::drag(int x)
{
    const int left = m_table->columnViewportPosition(m_column);
    const int most = qMax(least, m_table->viewport()->width() - left - least);
    m_table->setColumnWidth(m_column, qBound(least, x - left, most));
}

bool TColumnDrag::eventFilter(QObject* object, QEvent* event)
{
    const auto type = event->type();
    if (type != QEvent::MouseMove && type != QEvent::MouseButtonPress && type != QEvent::MouseButtonRelease)
        return QObject::eventFilter(object, event);
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const int x = placeOf(*mouse).x();
    if (type == QEvent::MouseButtonPress && mouse->button() == Qt::LeftButton && isOnEdge(x)) {
        m_isDragging = true;
        return true;
    }
    if (type == QEvent::MouseButtonRelease && m_isDragging) {
        m_isDragging = false;
        emit signalMoved(m_table->columnWidth(m_column));
        return true;
    }
    if (type == QEvent::MouseMove && m_isDragging) {
        drag(x);
        return true;
    }
    if (type == QEvent::MouseMove && mouse->buttons() == Qt::NoButton) {
        if (isOnEdge(x))
            m_table->viewport()->setCursor(Qt::SplitHCursor);
        else
            m_table->viewport()->unsetCursor();
    }
    return QObject::eventFilter(object, event);
}
