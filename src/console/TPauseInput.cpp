#include "console/TPauseInput.h"

#include <QSocketNotifier>

#include <algorithm>
#include <cerrno>
#include <unistd.h>

TPauseInput::TPauseInput(int descriptor)
    : m_descriptor(descriptor)
{
}

TPauseInput::~TPauseInput() = default;

void TPauseInput::want()
{
    if (m_wanted)
        return;
    m_wanted = true;
    if (m_lines > 0 || m_ended) {
        QMetaObject::invokeMethod(
            this, [this] { answer(); }, Qt::QueuedConnection);
        return;
    }
    if (!m_notifier) {
        m_notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
        connect(m_notifier, &QSocketNotifier::activated, this, &TPauseInput::slotReadable);
    }
    m_notifier->setEnabled(true);
}

void TPauseInput::dropWish()
{
    m_wanted = false;
    if (m_notifier)
        m_notifier->setEnabled(false);
}

void TPauseInput::slotReadable()
{
    char bytes[4096];
    const ssize_t count = read(m_descriptor, bytes, sizeof bytes);
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count > 0) {
        m_lines += static_cast<int>(std::count(bytes, bytes + count, '\n'));
        m_partial = bytes[count - 1] != '\n';
    } else {
        m_ended = true;
        // A last line counts without its end too.
        m_lines += m_partial ? 1 : 0;
        m_partial = false;
    }
    answer();
}

void TPauseInput::answer()
{
    if (!m_wanted || (m_lines == 0 && !m_ended))
        return;
    dropWish();
    if (m_lines > 0) {
        --m_lines;
        emit signalLine();
    } else {
        emit signalEnded();
    }
}
