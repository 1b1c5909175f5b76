#include "forms/edits/TWgtEditBase.h"

#include "forms/edits/colors.h"
#include "forms/edits/line_height.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QValidator>

namespace {
/// 70 pixels, or what an address of 32 bits needs.
int leastWidth(const QWidget* edit)
{
    constexpr int frame = 10;
    return qMax(70, edit->fontMetrics().horizontalAdvance(QStringLiteral("0x00000000")) + frame);
}
} // namespace

TWgtEditBase::TWgtEditBase(QValidator* validator, QWidget* parent)
    : QWidget(parent)
    , m_edit(new QLineEdit(this))
{
    validator->setParent(m_edit);
    m_edit->setValidator(validator);
    m_edit->setFixedHeight(fieldHeight(m_edit));
    m_edit->setMinimumWidth(leastWidth(m_edit));
    m_edit->installEventFilter(this);
    setFocusProxy(m_edit);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_edit);
    connect(m_edit, &QLineEdit::editingFinished, this, &TWgtEditBase::editingFinished);
}

TWgtEditBase::~TWgtEditBase()
{
    // A line that dies with the focus says that editing has finished.
    m_edit->blockSignals(true);
}

void TWgtEditBase::silence(QWidget& form)
{
    for (TWgtEditBase* edit : form.findChildren<TWgtEditBase*>())
        edit->blockSignals(true);
}

bool TWgtEditBase::isEditing() const
{
    return m_edit->hasFocus() && m_edit->text() != m_shown;
}

void TWgtEditBase::setRangeText(const QString& text)
{
    m_edit->setToolTip(text);
}

void TWgtEditBase::setFault(bool fault)
{
    markFault(m_edit, fault);
}

void TWgtEditBase::display(const QString& text)
{
    m_shown = text;
    if (m_edit->text() == text)
        return;
    const QSignalBlocker blocker(m_edit);
    m_edit->setText(text);
    if (!m_edit->hasFocus())
        m_edit->setCursorPosition(0); // what is too long is read from its begin
}

void TWgtEditBase::editingFinished()
{
    // Compared as text: a value that is shown rounded must not change by being looked at.
    if (m_edit->text() != m_shown)
        commit(m_edit->text());
}

void TWgtEditBase::setDefault()
{
    takeDefault();
}

bool TWgtEditBase::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_edit && event->type() == QEvent::KeyPress && !m_edit->isReadOnly()) {
        const auto* press = static_cast<QKeyEvent*>(event);
        const bool isPlain = (press->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) == 0;
        if (isPlain && handleKey(press->key()))
            return true;
    }
    if (watched == m_edit && event->type() == QEvent::FocusOut &&
        static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason)
        dropUnacceptable();
    return QWidget::eventFilter(watched, event);
}

/// Text from outside need not be what may be typed. Changed into something that still is not, it would stand
/// there without being stored.
void TWgtEditBase::dropUnacceptable()
{
    if (!m_edit->hasAcceptableInput())
        display(m_shown);
}

bool TWgtEditBase::handleKey(int key)
{
    switch (key) {
    case Qt::Key_Up:
        step(m_edit->text(), 1);
        return true;
    case Qt::Key_Down:
        step(m_edit->text(), -1);
        return true;
    case Qt::Key_Asterisk:
        takeDefault();
        return true;
    default:
        return false;
    }
}
