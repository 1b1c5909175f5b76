#include "ui/TActionWidget.h"

#include <QKeyEvent>
#include <QShortcut>
#include <QWidget>

TActionWidget::TActionWidget(const QString& text, const QKeySequence& keys, QWidget* widget)
    : QAction(text, widget)
    , m_keys(keys)
{
    // Menus show what stands behind the tab as the keys of the entry; buttons show the icon text.
    setIconText(text);
    setToolTip(text);
    if (keys.isEmpty())
        return;
    const QString shown = keys.toString(QKeySequence::NativeText);
    setText(QStringLiteral("%1\t%2").arg(text, shown));
    setToolTip(QStringLiteral("%1 (%2)").arg(text, shown));
    if (keys.count() > 1) {
        auto* shortcut = new QShortcut(keys, widget, nullptr, nullptr, Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, &TActionWidget::fire);
        connect(this, &QObject::destroyed, shortcut, &QObject::deleteLater);
    } else {
        widget->installEventFilter(this);
    }
}

TActionWidget::~TActionWidget() = default;

bool TActionWidget::eventFilter(QObject* object, QEvent* event)
{
    const bool isKey = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (!isKey || !isMine(*static_cast<QKeyEvent*>(event)))
        return QAction::eventFilter(object, event);
    // An accepted override comes back as a key press that no shortcut of the window has seen. Also while
    // the action is off: the keys must not do something else then.
    event->accept();
    if (event->type() == QEvent::KeyPress)
        fire();
    return true;
}

/// trigger() alone would not mind that the action is off.
void TActionWidget::fire()
{
    if (isEnabled())
        trigger();
}

bool TActionWidget::isMine(const QKeyEvent& event) const
{
    const int modifiers = static_cast<int>(event.modifiers() & ~Qt::KeypadModifier);
    return m_keys == QKeySequence(event.key() | modifiers);
}
