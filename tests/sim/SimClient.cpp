#include "sim/SimClient.h"

#include "support/ScriptedPeer.h"

#include <QFile>
#include <QStringList>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

SimClient::SimClient(const QString& path)
    : m_fd(open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY))
{
}

SimClient::~SimClient()
{
    close(m_fd);
}

QString SimClient::play(QString lines)
{
    lines.replace("SPI", "84 0100 00 40420F00 >");
    lines.replace("AVR", "84 0200 00 40420F00 00 05 >");
    lines.replace("I2C", "84 0300 00 00 A0860100 0A >");
    for (const QString& text : lines.split(',')) {
        const PeerLine line(text);
        send(peerFrame(uchar(line.request.at(0)), line.request.mid(1)));
        const QByteArray answer = receive(line.answer.isEmpty() ? 100 : 3000);
        if (answer != line.answer)
            return text.trimmed() + " gave " + answer.toHex().toUpper();
    }
    return {};
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

QByteArray SimClient::receive(int silence)
{
    QByteArray bytes;
    pollfd line{m_fd, POLLIN, 0};
    char byte = 0;
    int size = 4;
    while (bytes.size() < size && poll(&line, 1, silence) > 0 && read(m_fd, &byte, 1) == 1) {
        bytes.append(byte);
        if (bytes.size() == 4)
            size = 5 + uchar(bytes[2]) + 256 * uchar(bytes[3]);
    }
    return bytes;
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
