#include "forms/edits/TTextKeys.h"

#include <QKeyEvent>
#include <QWidget>

namespace {

bool isTextKey(const QKeyEvent& event)
{
    // The opposite of selecting all, for which the system has no keys of its own.
    const bool isNone =
        event.key() == Qt::Key_A && event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    return isNone || event.matches(QKeySequence::Copy) || event.matches(QKeySequence::SelectAll);
}

} // namespace

TTextKeys::TTextKeys(QWidget* view)
    : QObject(view)
{
    view->installEventFilter(this);
}

bool TTextKeys::eventFilter(QObject* watched, QEvent* event)
{
    // An accepted override comes back as a key press that no hot key has seen.
    if (event->type() != QEvent::ShortcutOverride || !isTextKey(*static_cast<QKeyEvent*>(event)))
        return QObject::eventFilter(watched, event);
    event->accept();
    return true;
}
