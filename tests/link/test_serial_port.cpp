#include "link/TSerialPort.h"
#include "support/ScriptedPeer.h"
#include "support/TestDir.h"
#include "support/numberedTexts.h"
#include "support/tables.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

namespace {

constexpr quint8 anyOpcode = 0x02;
const QByteArray requestPayload = QByteArray::fromHex("0102");
const QString brokenText = QStringLiteral("text 389");

bool openPort(TSerialPort& port, const ScriptedPeer& peer, int timeout = 5000, quint16 maxData = 64)
{
    port.setTimeout(static_cast<quint32>(timeout));
    port.setMaxData(maxData);
    return port.open(peer.path(), QIODevice::ReadWrite);
}

QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

QByteArray errorFrame(int code)
{
    QByteArray payload(2, '\0');
    payload[0] = static_cast<char>(code & 0xFF);
    payload[1] = static_cast<char>(code >> 8);
    return peerFrame(0xFF, payload);
}

QByteArray damaged(QByteArray frame)
{
    frame[frame.size() - 1] = static_cast<char>(frame.at(frame.size() - 1) ^ 0x10);
    return frame;
}

struct Outcome
{
    bool ok = false;
    bool linkFailed = true;
    QByteArray payload;
};

// What a receiver makes of the bytes that takes them one by one.
Outcome receiveByteByByte(const QByteArray& line, int maxData)
{
    QByteArray frame;
    for (const char byte : line) {
        if (frame.isEmpty() && static_cast<uchar>(byte) != 0xC0)
            continue;
        frame.append(byte);
        if (frame.size() < 4)
            continue;
        const int length = static_cast<uchar>(frame.at(3)) * 256 + static_cast<uchar>(frame.at(2));
        if (length > maxData)
            return {};
        if (frame.size() < length + 5)
            continue;
        if (frame != peerFrame(static_cast<quint8>(frame.at(1)), frame.mid(4, length)))
            return {};
        const bool ok = static_cast<uchar>(frame.at(1)) != 0xFF;
        return {ok, false, ok ? frame.mid(4, length) : QByteArray()};
    }
    return {};
}

QByteArray randomBytes(QRandomGenerator& random, int limit)
{
    // Few values, so that sync bytes, error replies and lengths within the limit are frequent.
    static const char values[] = {'\xC0', '\xFF', '\x00', '\x01', '\x02', '\x07', '\x40', '\x80'};
    QByteArray bytes;
    for (int n = random.bounded(limit); n > 0; --n)
        bytes.append(values[random.bounded(8)]);
    return bytes;
}

} // namespace

class TestSerialPort : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadNumberedTexts("text ", {423}); }
    void frames_data();
    void frames();
    void randomReplies();
    void silenceIsBoundedForEachByte();
    void restOfGivenUpFrameIsDropped();
    void bytesFromBeforeAreDropped();
    void longFrames();
    void requestThatCannotBeSent();
    void hangUp();
    void textsOfThePort();
    void settingsByIndexAndName();
    void unknownParityKeepsBytesWhole();
    void extendedAddressBelongsToTheLink();
};

void TestSerialPort::frames_data()
{
    tableColumns<QByteArray, bool, QByteArray, QString>("reply", "ok", "payload", "error");

    const auto good = [](const char* name, const QByteArray& reply, const QByteArray& payload) {
        tableRow(name, reply, true, payload, QString());
    };
    good("literal frame", hex("C0 02 03 00 11 22 33 D5"), hex("112233"));
    good("empty payload", hex("C0 80 00 00 C0"), {});
    good("noise before the sync", hex("00 FF 80 3F") + peerFrame(anyOpcode, "abc"), "abc");
    good("as long as allowed", peerFrame(anyOpcode, QByteArray(64, 'x')), QByteArray(64, 'x'));
    good("much noise", QByteArray(100000, '\x55') + peerFrame(anyOpcode, "abc"), "abc");
    good("sync byte as checksum", hex("C0 02 01 00 7D C0"), hex("7D"));
    good("bytes behind the frame", peerFrame(anyOpcode, "abc") + hex("C0C0FF"), "abc");

    const auto broken = [](const char* name, const QByteArray& reply) {
        tableRow(name, reply, false, requestPayload, brokenText);
    };
    broken("one byte longer than allowed", peerFrame(anyOpcode, QByteArray(65, 'x')));
    broken("longest length", hex("C0 02 FF FF"));
    broken("wrong checksum", damaged(peerFrame(anyOpcode, "abc")));
    broken("wrong checksum of an error reply", damaged(errorFrame(3)));
    broken("cut in the header", hex("C0 02 03"));
    broken("cut before the checksum", peerFrame(anyOpcode, "abc").left(7));
    broken("noise holds a sync byte", hex("C0") + peerFrame(anyOpcode, "abc"));

    const auto refused = [](const QByteArray& name, const QByteArray& reply, const QString& text) {
        tableRow(name.constData(), reply, false, requestPayload, text);
    };
    for (int code = 0; code < 12; ++code)
        refused("error " + QByteArray::number(code), errorFrame(code),
                QStringLiteral("text %1").arg(405 + code));
    for (const int code : {12, 255, 256, 0x8001, 0xFFFF})
        refused("error " + QByteArray::number(code), errorFrame(code),
                QStringLiteral("text 423 %1").arg(code));
    refused("error without code", peerFrame(0xFF), QStringLiteral("text 423 -"));
    refused("error with half a code", peerFrame(0xFF, hex("03")), QStringLiteral("text 423 -"));
    refused("error with more than a code", peerFrame(0xFF, hex("0300AA")), QStringLiteral("text 408"));
}

void TestSerialPort::frames()
{
    QFETCH(QByteArray, reply);
    QFETCH(bool, ok);
    QFETCH(QString, error);
    ScriptedPeer peer;
    peer.expect(hex("C0 02 02 00 01 02 39"), reply);
    peer.start();
    TSerialPort port;
    QVERIFY(openPort(port, peer, error == brokenText ? 60 : 5000));
    QByteArray data = requestPayload;
    QCOMPARE(port.exchange(anyOpcode, data), ok);
    QTEST(data, "payload");
    QCOMPARE(port.isLinkFailed(), error == brokenText);
    if (!ok)
        QCOMPARE(port.errorString(), error);
    QCOMPARE(peer.finish(), QString());
}

void TestSerialPort::randomReplies()
{
    QRandomGenerator random(20221);
    for (int round = 0; round < 150; ++round) {
        QByteArray line = randomBytes(random, 4);
        if (random.bounded(4) != 0)
            line += peerFrame(static_cast<quint8>(random.bounded(2) * 0xFF), randomBytes(random, 24));
        line += randomBytes(random, 8);
        const Outcome expected = receiveByteByByte(line, 16);
        ScriptedPeer peer;
        // Two pieces, so that the frame is cut at any place.
        const int cut = random.bounded(line.size() + 1);
        peer.expect(peerFrame(anyOpcode)).send(line.left(cut)).send(line.mid(cut), 1);
        peer.start();
        TSerialPort port;
        QVERIFY(openPort(port, peer, expected.linkFailed ? 25 : 5000, 16));
        QByteArray data;
        const QByteArray context = line.toHex() + " cut at " + QByteArray::number(cut);
        QVERIFY2(port.exchange(anyOpcode, data) == expected.ok, context.constData());
        QVERIFY2(port.isLinkFailed() == expected.linkFailed, context.constData());
        QVERIFY2(data == expected.payload, context.constData());
    }
}

void TestSerialPort::silenceIsBoundedForEachByte()
{
    const QByteArray reply = peerFrame(anyOpcode, "ab");
    ScriptedPeer peer;
    peer.expect(peerFrame(anyOpcode));
    for (const char byte : reply)
        peer.send(QByteArray(1, byte), 80);
    peer.expect(peerFrame(anyOpcode), reply.left(3)).send(reply.mid(3), 1500);
    peer.start();
    TSerialPort port;
    QVERIFY(openPort(port, peer, 400));
    QElapsedTimer clock;
    clock.start();
    QByteArray data;
    QVERIFY(port.exchange(anyOpcode, data));
    QVERIFY(clock.elapsed() > 500);
    QCOMPARE(data, QByteArray("ab"));

    clock.restart();
    data.clear();
    QVERIFY(!port.exchange(anyOpcode, data));
    QVERIFY(port.isLinkFailed());
    QVERIFY2(clock.elapsed() >= 390 && clock.elapsed() < 1400, qPrintable(QString::number(clock.elapsed())));
}

void TestSerialPort::restOfGivenUpFrameIsDropped()
{
    const QByteArray inner = peerFrame(anyOpcode, "old");
    ScriptedPeer peer;
    peer.expect(peerFrame(anyOpcode, "1"), hex("C0 02 FF 00") + inner + inner);
    peer.expect(peerFrame(anyOpcode, "2"), peerFrame(anyOpcode, "new"));
    peer.start();
    TSerialPort port;
    QVERIFY(openPort(port, peer));
    QByteArray data = "1";
    QVERIFY(!port.exchange(anyOpcode, data));
    QTest::qWait(50);
    data = "2";
    QVERIFY(port.exchange(anyOpcode, data));
    QCOMPARE(data, QByteArray("new"));
    QVERIFY(!port.isLinkFailed());
    QCOMPARE(peer.finish(), QString());
}

void TestSerialPort::bytesFromBeforeAreDropped()
{
    ScriptedPeer peer;
    TSerialPort port;
    QVERIFY(openPort(port, peer));
    peer.sendNow(peerFrame(anyOpcode, "old"));
    QTest::qWait(50); // the event loop takes one part into the port's own buffer
    peer.sendNow(peerFrame(anyOpcode, "old"));
    QThread::msleep(50); // the other stays in the system's
    peer.expect(peerFrame(anyOpcode), peerFrame(anyOpcode, "new"));
    peer.start();
    QByteArray data;
    QVERIFY(port.exchange(anyOpcode, data));
    QCOMPARE(data, QByteArray("new"));
}

// More than a line takes at once, in both directions.
void TestSerialPort::longFrames()
{
    ScriptedPeer peer;
    peer.otherwise([](const QByteArray& request) { return request; });
    peer.start();
    TSerialPort port;
    QVERIFY(openPort(port, peer, 5000, 65535));
    for (const int size : {4096, 60000, 65535}) {
        QByteArray data(size, '\0');
        for (int i = 0; i < size; ++i)
            data[i] = static_cast<char>(i * 7 + i / 256);
        const QByteArray sent = data;
        QVERIFY2(port.exchange(anyOpcode, data), qPrintable(port.errorString()));
        QVERIFY(data == sent);
    }
}

void TestSerialPort::requestThatCannotBeSent()
{
    ScriptedPeer peer;
    peer.start();
    TSerialPort port;
    QByteArray data(65536, 'x');
    for (const bool open : {false, true}) {
        QCOMPARE(open && openPort(port, peer, 5000, 65535), open);
        QVERIFY(!port.exchange(anyOpcode, data));
        QVERIFY(port.isLinkFailed());
        QCOMPARE(port.errorString(), brokenText);
        QCOMPARE(data.size(), 65536);
    }
    QCOMPARE(peer.finish(), QString());
}

void TestSerialPort::hangUp()
{
    ScriptedPeer peer;
    peer.expect(peerFrame(anyOpcode)).hangUp();
    peer.start();
    TSerialPort port;
    QVERIFY(openPort(port, peer, 5000));
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 2; ++i) {
        QByteArray data;
        QVERIFY(!port.exchange(anyOpcode, data));
        QVERIFY(port.isLinkFailed());
    }
    QVERIFY(clock.elapsed() < 2000);
}

void TestSerialPort::textsOfThePort()
{
    const TestDir dir(TestDir::Empty);
    TSerialPort port;
    QVERIFY(!port.open(dir.file(QStringLiteral("none")), QIODevice::ReadWrite));
    QCOMPARE(port.errorString(), QStringLiteral("text 393"));
    QVERIFY(!port.open(dir.path(), QIODevice::ReadWrite));
    QVERIFY(!port.errorString().isEmpty());
    QVERIFY(port.errorString() != QStringLiteral("text 393"));
}

void TestSerialPort::settingsByIndexAndName()
{
    TSerialPort port;
    const auto* inner = port.findChild<QSerialPort*>();
    const auto state = [inner] {
        return QList<int>{inner->dataBits(), inner->stopBits(), inner->parity(), inner->flowControl()};
    };
    const QList<int> stops = {QSerialPort::OneStop, QSerialPort::OneAndHalfStop, QSerialPort::TwoStop};
    const QList<int> parities = {QSerialPort::NoParity, QSerialPort::OddParity, QSerialPort::EvenParity,
                                 QSerialPort::MarkParity, QSerialPort::SpaceParity};
    const QList<int> flows = {QSerialPort::NoFlowControl, QSerialPort::HardwareControl,
                              QSerialPort::SoftwareControl};
    for (int i = 0; i < 5; ++i) {
        const int bits = qMin(i, 3);
        const int few = qMin(i, 2);
        QVERIFY(port.setDataBits(bits) && port.setStopBits(few));
        QVERIFY(port.setParity(TSerialPort::parities().at(i)));
        QVERIFY(port.setFlowControl(TSerialPort::flowControls().at(few)));
        QCOMPARE(state(), (QList<int>{5 + bits, stops.at(few), parities.at(i), flows.at(few)}));
    }
    const QList<int> before = state();
    QVERIFY(!port.setDataBits(-1) && !port.setDataBits(4) && !port.setDataBits(8));
    QVERIFY(!port.setStopBits(-1) && !port.setStopBits(3));
    for (const char* text : {"", "none", "Odd ", "Custom"})
        QVERIFY(!port.setParity(QLatin1String(text)) && !port.setFlowControl(QLatin1String(text)));
    QCOMPARE(state(), before);
}

// The system's driver doubles 0xFF once a port is told to mark parity errors.
void TestSerialPort::unknownParityKeepsBytesWhole()
{
    ScriptedPeer peer;
    peer.otherwise([](const QByteArray& request) { return request; });
    peer.start();
    TSerialPort port;
    QVERIFY(openPort(port, peer));
    port.setParity(QString());
    port.setFlowControl(QString());
    QByteArray data = hex("FF FF 11 13 FF 00 0A 0D 03 04 7F");
    const QByteArray sent = data;
    QVERIFY(port.exchange(anyOpcode, data));
    QCOMPARE(data, sent);
}

void TestSerialPort::extendedAddressBelongsToTheLink()
{
    ScriptedPeer peer;
    peer.otherwise([](const QByteArray& request) { return request; });
    peer.start();
    TSerialPort port;
    QVERIFY(!port.hasExtendedAddress());
    QVERIFY(openPort(port, peer));
    QByteArray data;
    const std::function<void()> forgetting[] = {
        [&] { QVERIFY(port.exchange(0x84, data)); },
        [&] { port.close(); },
        [&] { QVERIFY(openPort(port, peer)); },
    };
    for (const auto& forget : forgetting) {
        port.setExtendedAddress(3);
        if (port.isOpen())
            QVERIFY(port.exchange(0x83, data));
        QVERIFY(port.hasExtendedAddress());
        QCOMPARE(port.extendedAddress(), 3u);
        forget();
        QVERIFY(!port.hasExtendedAddress());
    }
}

QTEST_GUILESS_MAIN(TestSerialPort)
#include "test_serial_port.moc"
