#include "link/wire/TSerialPort.h"
#include "support/ScriptedPeer.h"
#include "support/SimProcess.h"
#include "support/TestDir.h"
#include "support/namedTexts.h"
#include "support/tables.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr quint8 anyOpcode = 0x02;
const QString brokenText = "@NoAnswer";
const QByteArray good = peerFrame(anyOpcode, "abc");

bool openPort(TSerialPort& port, const ScriptedPeer& peer, int timeout = 10000, quint16 maxData = 64)
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
    return peerFrame(0xFF, QByteArray(1, static_cast<char>(code & 0xFF)) + static_cast<char>(code >> 8));
}

QByteArray damaged(QByteArray frame)
{
    frame[frame.size() - 1] = static_cast<char>(frame.at(frame.size() - 1) ^ 0x10);
    return frame;
}

/// A programmer that sends each frame back.
struct Echo
{
    explicit Echo(quint16 maxData = 64)
    {
        peer.otherwise([](const QByteArray& request) { return request; });
        peer.start();
        openPort(port, peer, 10000, maxData);
    }
    ScriptedPeer peer;
    TSerialPort port;
};

} // namespace

class TestSerialPort : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { loadNamedTexts(); }
    void frames_data()
    {
        tableColumns<QByteArray, QByteArray, QString>("reply", "payload", "error");
        const QString none;
        tableRow("literal frame", hex("C0 02 03 00 11 22 33 D5"), hex("112233"), none);
        tableRow("empty payload of another command", hex("C0 00 00 00 40"), QByteArray(), none);
        tableRow("noise before the sync", hex("00 FF 80 3F") + good, QByteArray("abc"), none);
        tableRow("as long as allowed", peerFrame(anyOpcode, QByteArray(64, 'x')), QByteArray(64, 'x'), none);
        tableRow("much noise", QByteArray(100000, '\x55') + good, QByteArray("abc"), none);
        tableRow("sync byte as checksum", hex("C0 02 01 00 7D C0"), hex("7D"), none);
        tableRow("bytes behind the frame", good + hex("C0C0FF"), QByteArray("abc"), none);

        const auto failed = [](const QByteArray& name, const QByteArray& reply, const QString& text) {
            tableRow(name.constData(), reply, hex("0102"), text);
        };
        failed("one byte longer than allowed", peerFrame(anyOpcode, QByteArray(65, 'x')), brokenText);
        failed("longest length", hex("C0 02 FF FF"), brokenText);
        failed("wrong checksum", damaged(good), brokenText);
        failed("wrong checksum of an error reply", damaged(errorFrame(3)), brokenText);
        failed("cut in the header", hex("C0 02 03"), brokenText);
        failed("cut before the checksum", good.left(7), brokenText);
        failed("noise holds a sync byte", hex("C0") + good, brokenText);
        for (const int code : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 255, 256, 0x8001, 0xFFFF}) {
            const QString text = code < 12 ? langText(Text(int(Text::ProgUnspecified) + code))
                                           : QString("@ProgOtherError %1").arg(code);
            failed("error " + QByteArray::number(code), errorFrame(code), text);
        }
        failed("error without code", peerFrame(0xFF), "@ProgOtherError -");
        failed("error with half a code", peerFrame(0xFF, hex("03")), "@ProgOtherError -");
        failed("error with more than a code", peerFrame(0xFF, hex("0300AA")), "@ProgWrongParam");
    }

    void frames()
    {
        QFETCH(QByteArray, reply);
        QFETCH(QString, error);
        const int cuts = qMin(reply.size(), 7);
        ScriptedPeer peer;
        // At once, and in two pieces that are cut anywhere in the head.
        for (int cut = 0; cut <= cuts; ++cut)
            peer.expect(hex("C0 02 02 00 01 02 39"), reply.left(cut)).send(reply.mid(cut), cut > 0 ? 1 : 0);
        peer.start();
        TSerialPort port;
        QVERIFY(openPort(port, peer, error == brokenText ? 60 : 10000));
        for (int cut = 0; cut <= cuts; ++cut) {
            QByteArray data = hex("0102");
            QCOMPARE(port.exchange(anyOpcode, data), error.isEmpty());
            QTEST(data, "payload");
            QCOMPARE(port.isLinkFailed(), error == brokenText);
            if (!error.isEmpty())
                QCOMPARE(port.errorString(), error);
        }
        QCOMPARE(peer.finish(), QString());
    }

    void waits_data()
    {
        // Bytes that come back, the silence before each in ms, baud rate; the least and most time it takes,
        // in ms.
        tableColumns<QByteArray, int, int, bool, int, int>("bytes", "gap", "baud", "ok", "least", "most");
        tableRow("no slower than the line", good, 90, 110, true, 700, 1300);
        tableRow("slower than the line", good, 90, 115200, false, 450, 700);
        tableRow("silence in the middle", good.left(5), 1, 110, false, 390, 800);
        tableRow("noise and nothing else", QByteArray(300, '\x55'), 5, 115200, false, 390, 900);
        tableRow("noise, then a reply", QByteArray(10, '\x55') + good, 5, 115200, true, 90, 900);
    }

    void waits()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, gap);
        ScriptedPeer peer;
        peer.expect(peerFrame(anyOpcode));
        for (const char byte : bytes)
            peer.send(QByteArray(1, byte), gap);
        peer.start();
        TSerialPort port;
        QVERIFY(openPort(port, peer, 400));
        QFETCH(int, baud);
        QVERIFY(port.setBaudRate(baud));
        QElapsedTimer clock;
        clock.start();
        QByteArray data;
        QTEST(port.exchange(anyOpcode, data), "ok");
        QCOMPARE(port.isLinkFailed(), data.isEmpty());
        const qint64 ms = clock.elapsed();
        QFETCH(int, least);
        QFETCH(int, most);
        QVERIFY2(ms >= least && ms < most, QByteArray::number(ms).constData());
    }

    void noiseWithoutAGap()
    {
        ScriptedPeer peer;
        TSerialPort port;
        QVERIFY(openPort(port, peer, 300, 65535) && port.setBaudRate(921600));
        std::atomic<bool> isOver{false};
        std::thread talk([&] {
            for (int i = 0; i < 100000 && !isOver; ++i)
                peer.sendNow(QByteArray(500, '\x55'));
        });
        // The longer request is more than the line holds while the other end does not listen.
        QList<qint64> times;
        for (const int size : {0, 65535}) {
            QElapsedTimer clock;
            clock.start();
            QByteArray data(size, 'x');
            times.append(port.exchange(anyOpcode, data) || !port.isLinkFailed() ? -1 : clock.elapsed());
        }
        isOver = true;
        QByteArray none;
        (void)port.exchange(anyOpcode, none); // makes room for the last word
        talk.join();
        QVERIFY2(times[0] >= 290 && times[0] < 3000, QByteArray::number(times[0]).constData());
        QVERIFY2(times[1] >= 1000 && times[1] < 4000, QByteArray::number(times[1]).constData());
    }

    void timeThatWasNotSeenDoesNotCount()
    {
        ScriptedPeer peer;
        const pid_t host = fork();
        if (host == 0) {
            TSerialPort port;
            QByteArray data;
            _exit(openPort(port, peer, 300) && port.exchange(anyOpcode, data) && data == "abc" ? 0 : 1);
        }
        // The request is out, then all stands still for longer than the time-out.
        peer.otherwise([host](const QByteArray&) {
            kill(host, SIGSTOP);
            QThread::msleep(700);
            kill(host, SIGCONT);
            QThread::msleep(100);
            return good;
        });
        peer.start();
        int status = -1;
        QCOMPARE(waitpid(host, &status, 0), host);
        QVERIFY(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }

    void oldBytesAreDropped()
    {
        ScriptedPeer peer;
        TSerialPort port;
        QVERIFY(openPort(port, peer));
        const QByteArray old = peerFrame(anyOpcode, "old");
        peer.sendNow(old);
        QTest::qWait(50); // the event loop takes one part into the port's own buffer
        peer.sendNow(old);
        QThread::msleep(50); // the other stays in the system's
        peer.expect(peerFrame(anyOpcode, "1"), good);
        // The rest of a frame that is given up by its length.
        peer.expect(peerFrame(anyOpcode, "2"), hex("C0 02 FF 00") + old + old);
        peer.expect(peerFrame(anyOpcode, "3"), good);
        peer.start();
        for (const char* request : {"1", "2", "3"}) {
            QByteArray data = request;
            const bool gone = data == "2";
            QCOMPARE(port.exchange(anyOpcode, data), !gone);
            QCOMPARE(data, QByteArray(gone ? "2" : "abc"));
            QCOMPARE(port.isLinkFailed(), gone);
            QTest::qWait(50);
        }
        QCOMPARE(peer.finish(), QString());
    }

    void bytesComeWhole()
    {
        // More than a line takes at once, in both directions.
        Echo echo(65535);
        const auto comesBack = [&echo](const QByteArray& sent) {
            QByteArray data = sent;
            return echo.port.exchange(anyOpcode, data) && data == sent;
        };
        QByteArray data(65535, '\0');
        for (int i = 0; i < data.size(); ++i)
            data[i] = static_cast<char>(i * 7 + i / 256);
        QVERIFY(comesBack(data.left(4096)) && comesBack(data.left(60000)) && comesBack(data));
        // The system's driver doubles 0xFF once a port is told to mark parity errors.
        echo.port.setParity(QString());
        echo.port.setFlowControl(QString());
        QVERIFY(comesBack(hex("FF FF 11 13 FF 00 0A 0D 03 04 7F")));
    }

    void requestThatCannotBeSent()
    {
        ScriptedPeer peer;
        peer.start();
        TSerialPort port;
        QByteArray data(65536, 'x');
        for (const bool open : {false, true}) {
            QCOMPARE(open && openPort(port, peer, 10000, 65535), open);
            QVERIFY(!port.exchange(anyOpcode, data) && port.isLinkFailed());
            QCOMPARE(port.errorString(), brokenText);
            QCOMPARE(data.size(), 65536);
        }
        QCOMPARE(peer.finish(), QString());
    }

    void hangUp()
    {
        ScriptedPeer peer;
        peer.expect(peerFrame(anyOpcode)).hangUp();
        peer.start();
        TSerialPort port;
        QVERIFY(openPort(port, peer));
        QElapsedTimer clock;
        clock.start();
        QByteArray data;
        for (int i = 0; i < 2; ++i)
            QVERIFY(!port.exchange(anyOpcode, data) && port.isLinkFailed() && data.isEmpty());
        QVERIFY(clock.elapsed() < 2000);
    }

    void textsOfThePort()
    {
        const TestDir dir(TestDir::Empty);
        TSerialPort port;
        QVERIFY(!port.open(dir.file("none"), QIODevice::ReadWrite));
        QCOMPARE(port.errorString(), QString("@PortMissing"));
        QVERIFY(!port.open(dir.path(), QIODevice::ReadWrite));
        QVERIFY(!port.errorString().isEmpty() && port.errorString() != QString("@PortMissing"));

        // One terminal under two names: for this process, and for other programs by the system's lock.
        const ScriptedPeer peer;
        QVERIFY(QFile::link(peer.path(), dir.file("link")));
        for (const QString& name : {peer.path(), dir.file("link"), peer.path().mid(5)}) {
            TSerialPort holder;
            holder.setUser("A");
            QVERIFY(holder.open(dir.file("link"), QIODevice::ReadWrite));
            QVERIFY(!port.open(name, QIODevice::ReadWrite));
            QCOMPARE(port.errorString(), QString("@PortUsedByCfg A"));
            holder.close();
            QSerialPort foreign(peer.path());
            QVERIFY(foreign.open(QIODevice::ReadWrite));
            QVERIFY(!port.open(name, QIODevice::ReadWrite));
            QVERIFY2(port.errorString().startsWith("@PortUsedByProgram "), qPrintable(port.errorString()));
            foreign.close();
            QVERIFY(port.open(name, QIODevice::ReadWrite));
            port.close();
        }
        const QHash<QString, QString> names{
            {"ttyUSB0 (Maker Chip (rev 2))", "ttyUSB0"}, {"./sim", "./sim"}, {"(odd)", "(odd)"}};
        for (auto it = names.begin(); it != names.end(); ++it)
            QCOMPARE(TSerialPort::portNameOf(it.key()), it.value());
    }

    void settingsByIndexAndName()
    {
        TSerialPort port;
        const auto* inner = port.findChild<QSerialPort*>();
        const auto state = [inner] {
            return QList<int>{inner->dataBits(), inner->stopBits(), inner->parity(), inner->flowControl()};
        };
        const QList<int> stops = {QSerialPort::OneStop, QSerialPort::OneAndHalfStop, QSerialPort::TwoStop};
        const QStringList parities{"None", "", "Even", "Odd", "Space", "Mark"}; // by their numbers
        const QStringList flows{"None", "Hardware", "Software"};
        for (const int i : {0, 2, 3, 4, 5}) {
            const int few = i % 3;
            QVERIFY(port.setDataBits(i % 4) && port.setStopBits(few));
            QVERIFY(port.setParity(parities.at(i)) && port.setFlowControl(flows.at(few)));
            QCOMPARE(state(), (QList<int>{5 + i % 4, stops.at(few), i, few}));
        }
        const QList<int> before = state();
        QVERIFY(!port.setDataBits(-1) && !port.setDataBits(4) && !port.setDataBits(8));
        QVERIFY(!port.setStopBits(-1) && !port.setStopBits(3));
        for (const char* text : {"", "none", "Odd ", "Custom"})
            QVERIFY(!port.setParity(text) && !port.setFlowControl(text));
        QCOMPARE(state(), before);
    }

    void notesBelongToTheLink()
    {
        Echo echo;
        TSerialPort& port = echo.port;
        QVERIFY(!port.note("key").isValid());
        QByteArray data;
        const std::function<void()> forgetting[] = {
            [&] { QVERIFY(port.exchange(0x84, data)); },
            [&] { port.close(); },
            [&] { QVERIFY(openPort(port, echo.peer)); },
        };
        for (const auto& forget : forgetting) {
            port.setNote("key", 3);
            if (port.isOpen())
                QVERIFY(port.exchange(0x83, data));
            QCOMPARE(port.note("key"), QVariant(3));
            forget();
            QVERIFY(!port.note("key").isValid());
        }
    }

    // What the description shows as a session is what the simulated programmer does.
    void documentedSession()
    {
        SimProcess sim({"--chip", "W25Q64JV"});
        QVERIFY2(sim.isReady(), sim.output().constData());
        QSerialPort port(sim.path());
        QVERIFY(port.open(QIODevice::ReadWrite));
        QFile description(VM_SOURCE_DIR "/docs/protocol.md");
        QVERIFY(description.open(QIODevice::ReadOnly));
        int requests = 0;
        int replies = 0;
        for (const QByteArray& line : description.readAll().split('\n')) {
            const QByteArray frame = QByteArray::fromHex(line.mid(6));
            if (line.startsWith("    > "))
                requests += port.write(frame) == frame.size() ? 1 : 0;
            if (!line.startsWith("    < "))
                continue;
            QByteArray reply;
            while (reply.size() < frame.size() && port.waitForReadyRead(5000))
                reply += port.readAll();
            QCOMPARE(reply.toHex(' '), frame.toHex(' '));
            ++replies;
        }
        QVERIFY(requests > 10);
        QCOMPARE(replies, requests);
    }
};

QTEST_GUILESS_MAIN(TestSerialPort)
#include "test_serial_port.moc"
