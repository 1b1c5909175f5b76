#include "forms/TComboBox.h"

#include "forms/colors.h"

#include <QAbstractItemView>
#include <QScrollBar>
#include <QWheelEvent>

TComboBox::TComboBox(QWidget* parent)
    : QComboBox(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &TComboBox::slotChanged);
    slotChanged();
}

void TComboBox::allowNarrow(int letters)
{
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(letters);
}

void TComboBox::showPopup()
{
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + view()->verticalScrollBar()->sizeHint().width());
    QComboBox::showPopup();
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
