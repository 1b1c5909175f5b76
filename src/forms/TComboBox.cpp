#include "forms/TComboBox.h"

#include "forms/colors.h"

#include <QWheelEvent>

TComboBox::TComboBox(QWidget* parent)
    : QComboBox(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &TComboBox::slotChanged);
    slotChanged();
}

void TComboBox::allowNarrow()
{
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(12);
}

void TComboBox::slotChanged()
{
    markFault(this, currentIndex() < 0);
}

void TComboBox::wheelEvent(QWheelEvent* event)
{
    // Left alone, the event scrolls the page.
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}
