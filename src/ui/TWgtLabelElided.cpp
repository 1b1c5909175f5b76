#include "ui/TWgtLabelElided.h"

#include <QEvent>

TWgtLabelElided::TWgtLabelElided(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    // The width is what the layout gives: one that follows the text could never shrink again.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void TWgtLabelElided::setFullText(const QString& text)
{
    m_fullText = text;
    elide();
}

QSize TWgtLabelElided::minimumSizeHint() const
{
    return QSize(0, QLabel::minimumSizeHint().height());
}

void TWgtLabelElided::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    elide();
}

void TWgtLabelElided::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        elide();
}

void TWgtLabelElided::elide()
{
    const int width = contentsRect().width() - 2 * margin();
    setText(fontMetrics().elidedText(m_fullText, Qt::ElideLeft, width));
}
