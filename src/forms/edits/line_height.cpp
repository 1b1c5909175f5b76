#include "forms/edits/line_height.h"

#include <QFontMetrics>
#include <QWidget>

int lineHeight(const QWidget* widget, int usual, int frame)
{
    return qMax(usual, widget->fontMetrics().height() + frame);
}

int fieldHeight(const QWidget* widget)
{
    return lineHeight(widget, 21, 6);
}
