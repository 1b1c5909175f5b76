#include "sim/SimClient.h"
#include "support/SimProcess.h"
#include "support/tables.h"

#include <QElapsedTimer>
#include <QTest>

/// The wire protocol as the simulator answers it: opcodes, wrong requests, and the faults it can be told to
/// make.
class TestSimProtocol : public QObject
{
    Q_OBJECT

private slots:
    void opcodes_data();
    void opcodes();
    void selection();
    void wrongChecksumIsRefused();
    void findsTheFrameInGarbage_data();
    void findsTheFrameInGarbage();
    void givesUpHalfAFrame();
    void answersFramesSentTogether();
    void refusesLongPayload();
    void takesTheLongestPayload();
    void faults_data();
    void faults();
    void faultOnlyMeetsItsFrame();
    void hangupClosesTheLine();
    void keepsToTheBaudRate();
};

namespace {

const char* const chipBlock = "0100 00 40420F00";

QStringList withChip(const QStringList& more = {})
{
    return QStringList{"--chip", "W25Q64JV"} + more;
}

} // namespace

void TestSimProtocol::opcodes_data()
{
    tableColumns<int, QByteArray, int>("opcode", "payload", "error");
    const auto row = [](const char* name, int opcode, const char* payload, int error) {
        tableRow(name, opcode, QByteArray::fromHex(payload), error);
    };
    row("interface id with a payload", 0x80, "00", 2);
    row("unused opcode", 0x82, "", 1);
    row("opcode 0", 0x00, "", 1);
    row("status above all", 0x83, "04", 3);
    row("status without state", 0x83, "", 2);
    row("select", 0x84, chipBlock, -1);
    row("select nothing", 0x84, "", -1);
    row("select with a short block", 0x84, "0100", 2);
    row("select an unknown family", 0x84, "6300 00 40420F00", 6);
    row("close link", 0x85, "", -1);
    row("reset, negative", 0x86, "70FE", -1);
    row("reset of no time", 0x86, "0000", 3);
    row("frequency", 0x87, "A0860100 F401", -1);
    row("frequency, duty above 100 %", 0x87, "A0860100 E903", 3);
    row("pins", 0x88, "0000 000102030405060708", -1);
    row("pins, code above all", 0x88, "0000 09", 3);
    row("vcc", 0x89, "21", -1);
    row("vpp with two bytes", 0x8A, "2100", 2);
    row("vcc with limit", 0x8B, "21 10270000 01", -1);
    row("vcc with limit, flag 2", 0x8B, "21 10270000 02", 3);
    row("vpp with limit", 0x8C, "78 1027 00", -1);
    row("vpp with the current of vcc", 0x8C, "78 10270000 00", 2);
    row("chip opcode without selection", 3, "0300 9F", 5);
}

void TestSimProtocol::opcodes()
{
    QFETCH(int, opcode);
    QFETCH(QByteArray, payload);
    QFETCH(int, error);
    SimProcess sim(withChip());
    QVERIFY2(sim.isReady(), sim.output().constData());
    SimClient client(sim.path());
    const SimReply reply = client.ask(opcode, payload);
    QVERIFY(reply.sound);
    QCOMPARE(reply.error(), error);
    QCOMPARE(reply.command, error < 0 ? opcode : 0xFF);
    QCOMPARE(client.ask(0x80).payload.size(), 2);
}

void TestSimProtocol::selection()
{
    SimProcess sim(withChip());
    QVERIFY2(sim.isReady(), sim.output().constData());
    SimClient client(sim.path());
    QCOMPARE(client.askHex(0x84, chipBlock).error(), -1);
    QCOMPARE(client.askHex(3, "0300 9F").payload.toHex(), QByteArray("ef4017"));
    QCOMPARE(client.askHex(2, "40420F00").error(), -1);
    QCOMPARE(client.askHex(2, "40420F").error(), 2);
    QCOMPARE(client.askHex(1, "0000 0008").error(), -1);
    QCOMPARE(client.askHex(1, "0000 09").error(), 3);
    QCOMPARE(client.askHex(5, "0300 9F").error(), 1);
    QCOMPARE(client.askHex(3, "0300").error(), 2);
    // Another family drives the same socket: the chip does not understand it.
    QCOMPARE(client.askHex(0x84, "0200 00 40420F00 00 00").error(), -1);
    QCOMPARE(client.askHex(7, "00 30000000").payload.toHex(), QByteArray("ffffffff"));
    QCOMPARE(client.askHex(0x84, "0300 00 00 40420F00 0A").error(), -1);
    QCOMPARE(client.askHex(5, "0400 A0 00").error(), 7);
    QCOMPARE(client.askHex(0x84, "").error(), -1);
    QCOMPARE(client.askHex(3, "0300 9F").error(), 5);
}

void TestSimProtocol::wrongChecksumIsRefused()
{
    SimProcess sim(withChip());
    SimClient client(sim.path());
    QByteArray frame = SimClient::frame(0x84, QByteArray::fromHex(chipBlock));
    frame[5] = char(frame[5] + 1);
    client.send(frame);
    QCOMPARE(client.receive().error(), 4);
    QCOMPARE(client.askHex(3, "0300 9F").error(), 5);
}

void TestSimProtocol::findsTheFrameInGarbage_data()
{
    tableColumns<QByteArray>("garbage");
    tableRow("text", QByteArray("AT+GMR\r\n"));
    tableRow("every byte but the sync", [] {
        QByteArray all;
        for (int i = 0; i < 256; i++) {
            if (i != 0xC0)
                all.append(char(i));
        }
        return all;
    }());
}

void TestSimProtocol::findsTheFrameInGarbage()
{
    QFETCH(QByteArray, garbage);
    SimProcess sim(withChip());
    SimClient client(sim.path());
    client.send(garbage + SimClient::frame(0x80));
    const SimReply reply = client.receive();
    QVERIFY(reply.sound);
    QCOMPARE(reply.payload.toHex(), QByteArray("d204"));
}

void TestSimProtocol::givesUpHalfAFrame()
{
    SimProcess sim(withChip());
    SimClient client(sim.path());
    client.send(QByteArray::fromHex("C004FFFF0102"));
    QCOMPARE(client.receive(800).raw, QByteArray());
    QCOMPARE(client.ask(0x80).payload.toHex(), QByteArray("d204"));
}

void TestSimProtocol::answersFramesSentTogether()
{
    SimProcess sim(withChip());
    SimClient client(sim.path());
    client.send(SimClient::frame(0x80) + SimClient::frame(0x82) + SimClient::frame(0x81).left(3));
    QCOMPARE(client.receive().payload.toHex(), QByteArray("d204"));
    QCOMPARE(client.receive().error(), 1);
    client.send(SimClient::frame(0x81).mid(3));
    QCOMPARE(client.receive().command, 0x81);
}

void TestSimProtocol::refusesLongPayload()
{
    SimProcess sim(withChip({"--max-data", "8"}));
    SimClient client(sim.path());
    QCOMPARE(client.askHex(0x84, chipBlock).error(), -1);
    QCOMPARE(client.askHex(4, "02 000000 11223344").error(), -1);
    QCOMPARE(client.askHex(4, "02 000000 0000000000").error(), 2);
    QCOMPARE(client.askHex(3, "0400 0B 000000 00").payload.toHex(), QByteArray("11223344"));
}

void TestSimProtocol::takesTheLongestPayload()
{
    SimProcess sim(withChip());
    SimClient client(sim.path());
    client.askHex(0x84, chipBlock);
    QByteArray write = QByteArray::fromHex("02000000") + QByteArray(65531, '\x00');
    QCOMPARE(client.ask(4, write).error(), -1);
    const QByteArray read = client.askHex(3, "FFFF 0B 000000 00").payload;
    QCOMPARE(read, QByteArray(256, '\x00') + QByteArray(65535 - 256, '\xFF'));
}

void TestSimProtocol::faults_data()
{
    tableColumns<QString, QByteArray>("fault", "expected");
    const auto row = [](const char* fault, const char* raw) {
        tableRow(fault, QString(fault), QByteArray::fromHex(raw));
    };
    row("silent", "");
    row("cut", "C0030300");
    row("checksum", "C0030300EF4017F5");
    row("error=515", "C0FF020003023A");
    row("short", "C0030200EF400C");
    row("flip", "C0030300EF4037D4");
    row("echo", "C0030300EF4017F4");
}

void TestSimProtocol::faults()
{
    QFETCH(QString, fault);
    QFETCH(QByteArray, expected);
    SimProcess sim(withChip({"--fault", fault + "@2", "--fault=" + fault + "@4"}));
    QVERIFY2(sim.isReady(), sim.output().constData());
    SimClient client(sim.path());
    QCOMPARE(client.askHex(0x84, chipBlock).error(), -1);
    for (int i = 0; i < 2; i++) {
        client.send(SimClient::frame(3, QByteArray::fromHex("03009F")));
        QByteArray raw;
        for (SimReply part = client.receive(150); !part.raw.isEmpty(); part = client.receive(150))
            raw += part.raw;
        QCOMPARE(raw.toHex(), expected.toHex());
        QCOMPARE(client.askHex(3, "03009F").payload.toHex(), QByteArray("ef4017"));
    }
}

void TestSimProtocol::faultOnlyMeetsItsFrame()
{
    // The answers of the programmer itself are none of the chip's, and an empty payload cannot be cut.
    SimProcess sim(withChip({"--fault", "flip@1", "--fault", "short@2", "--fault", "error=7@3"}));
    SimClient client(sim.path());
    QCOMPARE(client.ask(0x80).payload.toHex(), QByteArray("d204"));
    QCOMPARE(client.askHex(0x84, chipBlock).raw.toHex(), QByteArray("c0840000bc"));
    QCOMPARE(client.askHex(4, "02 000000 00").error(), 7);
    QCOMPARE(client.askHex(3, "0100 0B 000000 00").payload.toHex(), QByteArray("ff"));
}

void TestSimProtocol::hangupClosesTheLine()
{
    SimProcess sim(withChip({"--fault", "hangup@2"}));
    SimClient client(sim.path());
    QCOMPARE(client.ask(0x80).payload.size(), 2);
    QCOMPARE(client.ask(0x80).raw, QByteArray());
    QVERIFY(client.isClosed());
    QTRY_VERIFY(!QFileInfo(sim.path()).isSymLink());
}

void TestSimProtocol::keepsToTheBaudRate()
{
    SimProcess sim(withChip({"--baud", "19200"}));
    SimClient client(sim.path());
    client.askHex(0x84, chipBlock);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(client.askHex(3, "F401 0B 000000 00").payload.size(), 500);
    // 12 bytes there and 505 back, 10 bits each.
    const qint64 due = (12 + 505) * 10 * 1000 / 19200;
    QVERIFY2(timer.elapsed() >= due - 5, QByteArray::number(timer.elapsed()).constData());
    QVERIFY2(timer.elapsed() < due * 3, QByteArray::number(timer.elapsed()).constData());
}

QTEST_GUILESS_MAIN(TestSimProtocol)
#include "test_sim_protocol.moc"
