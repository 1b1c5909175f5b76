#include "ui/main/TWgtStatusBar.h"

#include "forms/edits/colors.h"
#include "forms/edits/line_height.h"

namespace {

constexpr int barHeight = 21;
constexpr int margin = 12; // at both sides of the message

} // namespace

TWgtStatusBar::TWgtStatusBar(QWidget* parent)
    : QStatusBar(parent)
{
    setFixedHeight(lineHeight(this, barHeight, 6));
}

void TWgtStatusBar::showText(const QString& text, Code code)
{
    // An empty palette takes every colour from the parent again.
    setPalette(QPalette());
    QPalette colors;
    const QColor back = palette().color(QPalette::Window);
    if (code == Red)
        colors.setColor(QPalette::WindowText, faultText(back));
    else if (code == Green)
        colors.setColor(QPalette::WindowText, goodText(back));
    setPalette(colors);
    showMessage(text);
    showTip();
}

QString TWgtStatusBar::text() const
{
    return currentMessage();
}

void TWgtStatusBar::resizeEvent(QResizeEvent* event)
{
    QStatusBar::resizeEvent(event);
    showTip();
}

/// A message that is cut at the end of the line stands in the tool tip as a whole.
void TWgtStatusBar::showTip()
{
    const QString message = text();
    const bool isCut = fontMetrics().horizontalAdvance(message) > width() - margin;
    // As rich text, which breaks its lines; what stands in the message itself is no markup.
    setToolTip(isCut ? QStringLiteral("<p>%1</p>").arg(message.toHtmlEscaped()) : QString());
}
