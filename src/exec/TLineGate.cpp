#include "exec/TLineGate.h"

#include <QCoreApplication>
#include <QPointer>
#include <QScopedValueRollback>

#include <utility>

TLineGate::TLineGate() = default;

TLineGate::~TLineGate() = default;

void TLineGate::doWaiting()
{
    // Somebody holds the gate by now, and calls again.
    if (m_isLetIn)
        return;
    const QList<std::function<void()>> steps = std::exchange(m_waiting, {});
    for (const auto& step : steps)
        step();
}

// Nothing is let in within another run's line: that run would have to wait, with its chip under power, until
// all others have nothing to tell. (To leave out the user's input would starve it: the flag outlives the call
// in the event loop's own round.)
void TLineGate::letEventsIn()
{
    if (!m_isLetIn && m_waiting.isEmpty())
        holdWhile([] { QCoreApplication::processEvents(); });
}

void TLineGate::holdWhile(const std::function<void()>& work)
{
    {
        const QScopedValueRollback<bool> guard(m_isLetIn, true);
        work();
    }
    // No line lets events in before it is their turn, so the event loop itself comes to them.
    if (!m_waiting.isEmpty())
        QMetaObject::invokeMethod(this, &TLineGate::doWaiting, Qt::QueuedConnection);
}

void TLineGate::betweenLines(QObject* receiver, const std::function<void()>& step)
{
    if (!m_isLetIn) {
        step();
        return;
    }
    m_waiting.append([receiver = QPointer<QObject>(receiver), step] {
        if (receiver)
            step();
    });
}
