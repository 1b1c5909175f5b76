#include "forms/edits/TSteadyBox.h"

#include <QWheelEvent>

TSteadyBox::TSteadyBox(QWidget* parent)
    : QComboBox(parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

void TSteadyBox::wheelEvent(QWheelEvent* event)
{
    // Left alone, the event scrolls the page.
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}
