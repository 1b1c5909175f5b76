#include "forms/edits/TFileDrop.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace {

/// Empty when something else is being dragged, as a text.
QString pathOf(const QMimeData& data)
{
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile())
            return url.toLocalFile();
    }
    return {};
}

} // namespace

TFileDrop::TFileDrop(QWidget* field, const std::function<void(const QString& path)>& take)
    : QObject(field)
    , m_take(take)
{
    field->setAcceptDrops(true);
    field->installEventFilter(this);
}

bool TFileDrop::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return QObject::eventFilter(watched, event);
    auto* drop = static_cast<QDropEvent*>(event);
    const QString path = pathOf(*drop->mimeData());
    if (path.isEmpty())
        return QObject::eventFilter(watched, event);
    // Never a move: whoever drags would take his file away.
    const bool canCopy = drop->possibleActions() & Qt::CopyAction;
    drop->setDropAction(canCopy ? Qt::CopyAction : Qt::IgnoreAction);
    drop->accept();
    if (type == QEvent::Drop)
        m_take(path);
    return true;
}
