// Exchanges per second of TSerialPort against a bare loop of write, poll and read, with the same frames
// on the same pseudo-terminal. The two take turns, so that what else the machine does meets both.

#include "bare_line.h"
#include "link/TSerialPort.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QVector>

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr quint8 opcode = 0x03;
constexpr int rounds = 9;
constexpr int roundMs = 120;

QByteArray frameOf(int payloadSize)
{
    QByteArray frame = QByteArray::fromHex("C0030000");
    frame[2] = static_cast<char>(payloadSize & 0xFF);
    frame[3] = static_cast<char>(payloadSize >> 8);
    frame += QByteArray(payloadSize, '\x5A');
    uchar sum = 0;
    for (const char byte : qAsConst(frame))
        sum = static_cast<uchar>(sum + static_cast<uchar>(byte));
    return frame + static_cast<char>(-sum);
}

// The other end: gives every frame back. A process, as a programmer is one for itself.
[[noreturn]] void echo(int master)
{
    QByteArray frame(4 + 65535 + 1, '\0');
    for (;;) {
        pollfd wait{master, POLLIN, 0};
        if (poll(&wait, 1, -1) < 0 || !getAll(master, frame.data(), 4))
            _exit(0);
        const int rest = (static_cast<uchar>(frame.at(2)) | static_cast<uchar>(frame.at(3)) << 8) + 1;
        if (!getAll(master, frame.data() + 4, rest) || !putAll(master, frame.constData(), 4 + rest))
            _exit(0);
    }
}

template <typename Exchange> double exchangesPerSecond(const Exchange& exchange)
{
    QElapsedTimer clock;
    clock.start();
    int count = 0;
    while (clock.elapsed() < roundMs) {
        for (int i = 0; i < 16; ++i, ++count) {
            if (!exchange()) {
                std::puts("an exchange failed");
                std::exit(1);
            }
        }
    }
    return count * 1e9 / static_cast<double>(clock.nsecsElapsed());
}

double median(QVector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

void measure(TSerialPort& port, int line, int payloadSize)
{
    const QByteArray frame = frameOf(payloadSize);
    const QByteArray payload = frame.mid(4, payloadSize);
    QByteArray reply(frame.size(), '\0');
    const auto bare = [&] {
        return putAll(line, frame.constData(), frame.size()) && getAll(line, reply.data(), reply.size());
    };
    const auto whole = [&] {
        QByteArray data = payload;
        return port.exchange(opcode, data) && data.size() == payloadSize;
    };
    QVector<double> bareRates, rates, ratios;
    for (int round = 0; round < rounds; ++round) {
        bareRates.append(exchangesPerSecond(bare));
        rates.append(exchangesPerSecond(whole));
        ratios.append(rates.last() / bareRates.last());
    }
    std::printf("payload %5d: %8.0f exchanges/s, bare loop %8.0f exchanges/s, ratio %.2f\n", payloadSize,
                median(rates), median(bareRates), median(ratios));
}

} // namespace

int main(int argc, char** argv)
{
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0)
        return 1;
    const QString path = QString::fromLocal8Bit(ptsname(master));
    const int line = open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
    if (line < 0 || !makeRaw(line))
        return 1;
    const pid_t peer = fork();
    if (peer == 0)
        echo(master);

    const QCoreApplication app(argc, argv);
    TSerialPort port;
    port.setTimeout(5000);
    port.setMaxData(65535);
    if (!port.open(path, QIODevice::ReadWrite))
        return 1;
    for (const int size : {0, 64, 1024, 4096})
        measure(port, line, size);
    kill(peer, SIGTERM);
    waitpid(peer, nullptr, 0);
    return 0;
}
