// What an exchange of TSerialPort costs against a bare loop of write, poll and read, with the same frames on
// the same pseudo-terminal: the ratio of their exchanges per second where nothing is waited for. Both ends'
// processor time counts, for an exchange is mostly a change between two processes, and on the clock anything
// else on the machine lengthens that. The two take short turns; the least of each counts.

#include "bare_line.h"
#include "link/wire/TSerialPort.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <limits>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace {

constexpr quint8 opcode = 0x03;
constexpr int rounds = 60;
constexpr int exchangesPerRound = 400;

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

/// Processor time of this process and of the peer, in ns.
double spent(pid_t peer)
{
    timespec own{};
    timespec other{};
    clockid_t clock = 0;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
    clock_getcpuclockid(peer, &clock);
    clock_gettime(clock, &other);
    return (own.tv_sec + other.tv_sec) * 1e9 + (own.tv_nsec + other.tv_nsec);
}

template <typename Exchange> double nsPerExchange(pid_t peer, const Exchange& exchange)
{
    const double start = spent(peer);
    for (int i = 0; i < exchangesPerRound; ++i) {
        if (!exchange()) {
            std::puts("an exchange failed");
            std::exit(1);
        }
    }
    return (spent(peer) - start) / exchangesPerRound;
}

void measure(TSerialPort& port, int line, pid_t peer, int payloadSize)
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
    double ofBare = std::numeric_limits<double>::max();
    double ofWhole = ofBare;
    for (int round = 0; round < rounds; ++round) {
        ofBare = std::min(ofBare, nsPerExchange(peer, bare));
        ofWhole = std::min(ofWhole, nsPerExchange(peer, whole));
    }
    std::printf("payload %5d: %6.1f us an exchange, bare loop %6.1f us, ratio %.2f\n", payloadSize,
                ofWhole / 1e3, ofBare / 1e3, ofBare / ofWhole);
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
    port.setTimeout(10000);
    port.setMaxData(65535);
    if (!port.open(path, QIODevice::ReadWrite))
        return 1;
    for (const int size : {0, 64, 1024, 4096})
        measure(port, line, peer, size);
    kill(peer, SIGTERM);
    waitpid(peer, nullptr, 0);
    return 0;
}
