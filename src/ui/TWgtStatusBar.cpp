#include "ui/TWgtStatusBar.h"

namespace {
constexpr int barHeight = 21;
}

TWgtStatusBar::TWgtStatusBar(QWidget* parent)
    : QStatusBar(parent)
{
    setFixedHeight(barHeight);
}

void TWgtStatusBar::showText(const QString& text, Code code)
{
    // An empty palette takes every colour from the parent again.
    QPalette colors;
    if (code == Red)
        colors.setColor(QPalette::WindowText, Qt::red);
    else if (code == Green)
        colors.setColor(QPalette::WindowText, Qt::darkGreen);
    setPalette(colors);
    showMessage(text);
}

QString TWgtStatusBar::text() const
{
    return currentMessage();
}
