#include "forms/colors.h"

#include <QPalette>
#include <QWidget>

namespace {

void setRole(QWidget* widget, QPalette::ColorRole role, const QColor& colour)
{
    QPalette palette = widget->palette();
    palette.setColor(role, colour); // all colour groups
    widget->setPalette(palette);
    widget->setAutoFillBackground(true);
}

} // namespace

void setTextColor(QWidget* widget, const QColor& colour)
{
    setRole(widget, QPalette::WindowText, colour);
}

void setBaseColor(QWidget* widget, const QColor& colour)
{
    setRole(widget, QPalette::Base, colour);
}
