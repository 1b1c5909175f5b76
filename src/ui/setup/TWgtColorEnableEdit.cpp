#include "ui/setup/TWgtColorEnableEdit.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>

TWgtColorEnableEdit::TWgtColorEnableEdit(const QString& text, bool hasCheck, QWidget* parent)
    : QWidget(parent)
    , m_field(new QLabel(this))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    if (hasCheck)
        row->addWidget(m_check = new QCheckBox(text, this));
    else
        row->addWidget(new QLabel(text, this));
    row->addStretch();
    m_field->setFixedWidth(100);
    m_field->setMinimumHeight(fontMetrics().height() + 5);
    m_field->setFrameStyle(int(QFrame::StyledPanel) | int(QFrame::Sunken));
    m_field->setLineWidth(2); // of the frame that shows the focus
    m_field->setAutoFillBackground(true);
    m_field->setAccessibleName(text);
    m_field->setFocusPolicy(Qt::StrongFocus);
    m_field->setCursor(Qt::PointingHandCursor);
    m_field->installEventFilter(this);
    row->addWidget(m_field);
}

void TWgtColorEnableEdit::setColor(const QColor& color)
{
    m_color = color;
    QPalette palette = m_field->palette();
    palette.setColor(QPalette::Window, color);
    m_field->setPalette(palette);
    m_field->setToolTip(color.name());
}

bool TWgtColorEnableEdit::isEnabledColor() const
{
    return !m_check || m_check->isChecked();
}

void TWgtColorEnableEdit::setEnabledColor(bool enabled)
{
    if (m_check)
        m_check->setChecked(enabled);
}

bool TWgtColorEnableEdit::eventFilter(QObject* object, QEvent* event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        // The style draws no focus on a label.
        m_field->setFrameShape(event->type() == QEvent::FocusIn ? QFrame::Panel : QFrame::StyledPanel);
        break;
    case QEvent::MouseButtonRelease:
        if (isClick(*static_cast<QMouseEvent*>(event)))
            slotSelectColor();
        return true;
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Space)
            break;
        slotSelectColor();
        return true;
    default:
        break;
    }
    return QWidget::eventFilter(object, event);
}

bool TWgtColorEnableEdit::isClick(const QMouseEvent& event) const
{
    return event.button() == Qt::LeftButton && m_field->rect().contains(event.pos());
}

void TWgtColorEnableEdit::slotSelectColor()
{
    const QColor color = QColorDialog::getColor(m_color, this);
    if (color.isValid())
        setColor(color);
}
