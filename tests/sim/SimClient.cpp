#include "sim/SimClient.h"

#include <QFile>

#include <fcntl.h>
#include <numeric>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

namespace {

uchar sumOf(const QByteArray& bytes)
{
    return std::accumulate(bytes.begin(), bytes.end(), uchar(0),
                           [](uchar sum, char byte) { return uchar(sum + uchar(byte)); });
}

int lengthOf(const QByteArray& frame)
{
    return frame.size() < 4 ? 4 : 5 + uchar(frame[2]) + 256 * uchar(frame[3]);
}

} // namespace

SimClient::SimClient(const QString& path)
    : m_fd(open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY))
{
}

SimClient::~SimClient()
{
    close(m_fd);
}

QByteArray SimClient::frame(int opcode, const QByteArray& payload)
{
    QByteArray bytes;
    bytes.append('\xC0').append(char(opcode)).append(char(payload.size())).append(char(payload.size() >> 8));
    bytes.append(payload);
    return bytes.append(char(-sumOf(bytes)));
}

void SimClient::send(const QByteArray& bytes)
{
    int done = 0;
    while (done < bytes.size()) {
        const ssize_t put = write(m_fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (put <= 0)
            return;
        done += int(put);
    }
}

SimReply SimClient::receive(int limit)
{
    SimReply reply;
    while (reply.raw.size() < lengthOf(reply.raw)) {
        pollfd line{m_fd, POLLIN, 0};
        char byte = 0;
        if (poll(&line, 1, limit) <= 0 || read(m_fd, &byte, 1) != 1)
            return reply;
        reply.raw.append(byte);
    }
    reply.command = uchar(reply.raw[1]);
    reply.payload = reply.raw.mid(4, reply.raw.size() - 5);
    reply.sound = reply.raw[0] == '\xC0' && sumOf(reply.raw) == 0;
    return reply;
}

SimReply SimClient::ask(int opcode, const QByteArray& payload, int limit)
{
    send(frame(opcode, payload));
    return receive(limit);
}

void SimClient::clear()
{
    tcflush(m_fd, TCIOFLUSH);
}

bool SimClient::isClosed()
{
    pollfd line{m_fd, POLLIN, 0};
    return poll(&line, 1, 3000) == 1 && (line.revents & POLLHUP) != 0;
}
