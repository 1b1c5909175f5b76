#include "support/ScriptedPeer.h"

#include <QRegularExpression>

#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

namespace {

// How often the thread looks whether it has to end, in ms.
constexpr int lookAround = 10;

QByteArray bytesOf(QString text)
{
    static const QRegularExpression repeated(QStringLiteral("([0-9A-F]{2})\\*(\\d+)"));
    for (auto match = repeated.match(text); match.hasMatch(); match = repeated.match(text))
        text.replace(match.capturedStart(), match.capturedLength(),
                     match.captured(1).repeated(match.captured(2).toInt()));
    return QByteArray::fromHex(text.toLatin1());
}

} // namespace

QByteArray peerFrame(quint8 command, const QByteArray& payload)
{
    const char head[] = {'\xC0', char(command), char(payload.size() % 256), char(payload.size() / 256)};
    const QByteArray frame = QByteArray(head, sizeof head) + payload;
    int sum = 0;
    for (const char byte : frame)
        sum += uchar(byte);
    return frame + char((256 - sum % 256) % 256);
}

PeerLine::PeerLine(const QString& text)
    : request(bytesOf(text.section(QLatin1Char('>'), 0, 0)))
{
    const QString reply = text.section(QLatin1Char('>'), 1).trimmed();
    if (reply.startsWith(QLatin1Char('!')))
        answer = peerFrame(0xFF, QByteArray(1, static_cast<char>(reply.mid(1).toInt())) + '\0');
    else if (text.contains(QLatin1Char('>')))
        answer = peerFrame(static_cast<quint8>(request.at(0)), bytesOf(reply));
}

ScriptedPeer::ScriptedPeer()
    : m_master(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC))
{
    if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0)
        return;
    const char* name = ptsname(m_master);
    m_slave = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios mode{};
    if (tcgetattr(m_slave, &mode) != 0)
        return;
    cfmakeraw(&mode);
    if (tcsetattr(m_slave, TCSANOW, &mode) == 0)
        m_path = QString::fromLocal8Bit(name);
}

ScriptedPeer::~ScriptedPeer()
{
    finish();
    closeLine();
    if (m_slave >= 0)
        ::close(m_slave);
}

ScriptedPeer& ScriptedPeer::expect(const QByteArray& request, const QByteArray& reply)
{
    m_steps.append({request, {}, false});
    return reply.isEmpty() ? *this : send(reply);
}

ScriptedPeer& ScriptedPeer::expectText(const QString& lines)
{
    for (const QString& text : lines.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const PeerLine line(text);
        m_hasSilence |= line.answer.isEmpty();
        expect(peerFrame(static_cast<quint8>(line.request.at(0)), line.request.mid(1)), line.answer);
    }
    return *this;
}

ScriptedPeer& ScriptedPeer::send(const QByteArray& bytes, int silenceMs)
{
    m_steps.last().answer.append({silenceMs, bytes});
    return *this;
}

ScriptedPeer& ScriptedPeer::hangUp()
{
    m_steps.last().hangUp = true;
    return *this;
}

QString ScriptedPeer::finish()
{
    m_stop = true;
    if (m_thread.joinable())
        m_thread.join();
    if (m_next < m_steps.size())
        report(QStringLiteral("only %1 of %2 requests came").arg(m_next).arg(m_steps.size()));
    return m_report;
}

void ScriptedPeer::run()
{
    QByteArray request;
    while (m_master >= 0 && readRequest(request))
        take(request);
}

// False when the thread has to end and no byte is left on the line.
bool ScriptedPeer::readRequest(QByteArray& request)
{
    request.clear();
    if (!readBytes(request, 4))
        return false;
    return readBytes(request, uchar(request.at(2)) + uchar(request.at(3)) * 256 + 1);
}

bool ScriptedPeer::readBytes(QByteArray& to, int size)
{
    while (size > 0) {
        const bool last = m_stop;
        pollfd line{m_master, POLLIN, 0};
        if (poll(&line, 1, last ? 0 : lookAround) <= 0) {
            if (!last)
                continue;
            if (!to.isEmpty())
                report("a piece of a request: " + to.toHex());
            return false;
        }
        QByteArray bytes(size, Qt::Uninitialized);
        const ssize_t got = ::read(m_master, bytes.data(), static_cast<size_t>(size));
        if (got <= 0)
            return false;
        to.append(bytes.constData(), static_cast<int>(got));
        size -= static_cast<int>(got);
    }
    return true;
}

void ScriptedPeer::take(const QByteArray& request)
{
    const QByteArray payload = request.mid(4, request.size() - 5).toHex();
    m_requests.append(request.mid(1, 1).toHex() + (payload.isEmpty() ? "" : ":" + payload));
    if (m_next < m_steps.size()) {
        const Step step = m_steps.at(m_next++);
        if (request == step.request)
            play(step);
        else
            report(QString("request %1: ").arg(m_next) + request.toHex() + ", not " + step.request.toHex());
    } else if (m_otherwise) {
        writeAll(m_otherwise(request));
    } else {
        report("a request too many: " + request.toHex());
    }
}

void ScriptedPeer::play(const Step& step)
{
    for (const Part& part : step.answer) {
        std::this_thread::sleep_for(std::chrono::milliseconds(part.silenceMs));
        writeAll(part.bytes);
    }
    if (step.hangUp)
        closeLine();
}

void ScriptedPeer::writeAll(const QByteArray& bytes)
{
    int done = 0;
    while (done < bytes.size()) {
        const ssize_t put = ::write(m_master, bytes.constData() + done, size_t(bytes.size() - done));
        if (put <= 0)
            return;
        done += static_cast<int>(put);
    }
}

// The first mismatch is the cause, the rest follows from it.
void ScriptedPeer::report(const QString& text)
{
    if (m_report.isEmpty())
        m_report = text;
}

void ScriptedPeer::closeLine()
{
    if (m_master >= 0)
        ::close(m_master);
    m_master = -1;
}
