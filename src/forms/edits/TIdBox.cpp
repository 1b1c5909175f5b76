#include "forms/edits/TIdBox.h"

#include <QEvent>
#include <QSignalBlocker>

namespace {

constexpr int listLines = 20;

/// The user is about to look at the entries or to choose one.
bool isApproach(QEvent::Type type)
{
    switch (type) {
    case QEvent::FocusIn:
    case QEvent::Enter:
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
    case QEvent::Wheel:
        return true;
    default:
        return false;
    }
}

} // namespace

TIdBox::TIdBox(const std::function<Entries()>& source, QWidget* parent)
    : TComboBox(parent)
    , m_source(source)
{
    setMaxVisibleItems(listLines);
    allowNarrow();
}

void TIdBox::showId(int id)
{
    fill(m_source(), id);
}

int TIdBox::id() const
{
    return currentIndex() < 0 ? -1 : currentData().toInt();
}

bool TIdBox::event(QEvent* event)
{
    if (isApproach(event->type())) {
        const Entries entries = m_source();
        if (entries != m_entries)
            fill(entries, id());
    }
    return TComboBox::event(event);
}

void TIdBox::fill(const Entries& entries, int id)
{
    const QSignalBlocker blocker(this);
    m_entries = entries;
    clear();
    for (const auto& entry : entries)
        addItem(entry.second, entry.first);
    setCurrentIndex(findData(id));
    slotChanged();
}
