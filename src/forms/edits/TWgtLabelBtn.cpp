#include "forms/edits/TWgtLabelBtn.h"

#include <QMouseEvent>

TWgtLabelBtn::TWgtLabelBtn(const QString& text, QWidget* parent)
    : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
}

void TWgtLabelBtn::mousePressEvent(QMouseEvent* event)
{
    // Only who takes the press is told of the release.
    event->setAccepted(event->button() == Qt::LeftButton);
}

void TWgtLabelBtn::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        emit clicked();
}
