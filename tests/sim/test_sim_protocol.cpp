#include "sim/SimClient.h"
#include "support/ScriptedPeer.h"
#include "support/SimProcess.h"
#include "support/tables.h"

#include <QElapsedTimer>
#include <QFileInfo>

namespace {

// What it shows | bytes sent | bytes that come back. A request 80 is C0800000C0.
const char streams[] = R"(
a wrong checksum | C0 84 07 00 01 01 00 40 42 0F 00 24 | C0 FF 02 00 04 00 3B
text in front | 41542B474D520D0A C0800000C0 | C0800200D204E8
bytes of a broken frame in front | 0000 FF 8000 C0800000C0 | C0800200D204E8
two frames and the beginning of one | C0800000C0 C0820000BE C08100 | C0800200D204E8 C0FF020001003E
)";

// A fault of the answer that would be C0030300EF4017F4 | bytes that come instead.
const char faults[] = R"(
silent |
cut | C0030300
checksum | C0030300EF4017F5
error=515 | C0FF020003023A
short | C0030200EF400C
flip | C0030300EF4037D4
echo | C0030300EF4017F4
)";

QStringList withChip(const QStringList& more = {})
{
    return QStringList{"--chip", "W25Q64JV"} + more;
}

/// All frames up to a silence.
QString receiveAll(SimClient& client)
{
    QByteArray all;
    for (QByteArray part = client.receive(150); !part.isEmpty(); part = client.receive(150))
        all += part;
    return QString::fromLatin1(all.toHex().toUpper());
}

} // namespace

/// The line of the simulator: bytes that are no good request, and the faults that it can be told to make.
class TestSimProtocol : public QObject
{
    Q_OBJECT

private slots:
    void stream_data() { textRows(streams, {"what", "sent", "received"}); }
    void stream();
    void givesUpHalfAFrame();
    void fault_data() { textRows(faults, {"fault", "received"}); }
    void fault();
    void hangupClosesTheLine();
    void keepsToTheBaudRate();
};

void TestSimProtocol::stream()
{
    QFETCH(QString, sent);
    QFETCH(QString, received);
    SimProcess sim(withChip());
    SimClient client(sim.path());
    client.send(QByteArray::fromHex(sent.toLatin1()));
    QCOMPARE(receiveAll(client), received.remove(' '));
}

void TestSimProtocol::givesUpHalfAFrame()
{
    SimProcess sim(withChip());
    SimClient client(sim.path());
    client.send(QByteArray::fromHex("C004FFFF0102"));
    QCOMPARE(client.receive(800), QByteArray());
    QCOMPARE(client.play("80 > D204"), QString());
}

void TestSimProtocol::fault()
{
    QFETCH(QString, fault);
    SimProcess sim(withChip({"--fault", fault + "@2", "--fault=" + fault + "@4"}));
    QVERIFY2(sim.isReady(), sim.output().constData());
    SimClient client(sim.path());
    QCOMPARE(client.play("SPI"), QString());
    for (int i = 0; i < 2; i++) {
        client.send(peerFrame(3, QByteArray::fromHex("03009F")));
        QTEST(receiveAll(client), "received");
        QCOMPARE(client.play("03 0300 9F > EF4017"), QString());
    }
}

void TestSimProtocol::hangupClosesTheLine()
{
    SimProcess sim(withChip({"--fault", "hangup@2"}));
    SimClient client(sim.path());
    QCOMPARE(client.play("80 > D204, 80"), QString());
    QVERIFY(client.isClosed());
    QTRY_VERIFY(!QFileInfo(sim.path()).isSymLink());
}

void TestSimProtocol::keepsToTheBaudRate()
{
    SimProcess sim(withChip({"--baud", "19200"}));
    SimClient client(sim.path());
    QCOMPARE(client.play("SPI"), QString());
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(client.play("03 F401 0B 000000 00 > FF*500"), QString());
    // 12 bytes there and 505 back, 10 bits each.
    const qint64 due = (12 + 505) * 10 * 1000 / 19200;
    QVERIFY2(timer.elapsed() >= due - 5, QByteArray::number(timer.elapsed()).constData());
    QVERIFY2(timer.elapsed() < due * 3, QByteArray::number(timer.elapsed()).constData());
}

QTEST_GUILESS_MAIN(TestSimProtocol)
#include "test_sim_protocol.moc"
