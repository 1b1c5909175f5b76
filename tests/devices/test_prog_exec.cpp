#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDevProg.h"
#include "devices/TDevProgExec.h"
#include "link/TSerialPort.h"
#include "support/BenchProject.h"
#include "support/ScriptedPeer.h"

#include <QtTest>

#include <memory>

namespace {

QByteArray refusal(int code)
{
    return peerFrame(0xFF, QByteArray(1, static_cast<char>(code)) + QByteArray(1, '\0'));
}

void openPort(TSerialPort& port, const ScriptedPeer& peer)
{
    QVERIFY(port.open(peer.path(), QIODevice::ReadWrite));
    port.setTimeout(300);
    port.setMaxData(64);
}

} // namespace

/// The programmer's commands on the wire.
class TestProgExec : public QObject
{
    Q_OBJECT

private slots:
    void frames_data();
    void frames();
    void framesOnly();
    void refused();
    void closedPort();
    void selectsTheChip_data();
    void selectsTheChip();
    void detects_data();
    void detects();
    void detectsWithoutAFamily();
    void executesTheRoute();

private:
    TDevProg m_prog{dev_class::prog, {}};
};

void TestProgExec::frames_data()
{
    QTest::addColumn<QString>("cmd");
    QTest::addColumn<TData>("params");
    QTest::addColumn<int>("opcode");
    QTest::addColumn<QByteArray>("payload");
    const auto row = [](const char* name, const QString& cmd, const TData& params, int opcode,
                        const char* payload) {
        QTest::newRow(qPrintable(cmd + QLatin1Char(' ') + QLatin1String(name)))
            << cmd << params << opcode << QByteArray::fromHex(payload);
    };
    row("negative", cmd::reset, {{key::duration, "-400"}}, 0x86, "70FE");
    row("positive", cmd::reset, {{key::duration, 400}}, 0x86, "9001");
    row("keeps its polarity", cmd::reset, {{key::duration, 40000}}, 0x86, "FF7F");
    row("", cmd::set_freq, {{key::freq, "16909060"}, {key::duty_cycle, "90"}}, 0x87, "040302018403");
    row("largest", cmd::set_freq, {{key::freq, "4294967295"}, {key::duty_cycle, "100"}}, 0x87,
        "FFFFFFFFE803");
    row("short", cmd::set_io, {{key::state, "HL"}}, 0x88, "0000050400");
    row("long, foreign letters", cmd::set_io, {{key::state, "x?ZI"}}, 0x88, "0000000008");
    row("3.3", cmd::set_vcc, {{key::vcc, "3.3"}}, 0x89, "21");
    row("cut, not rounded", cmd::set_vcc, {{key::vcc, "3.29999"}}, 0x89, "20");
    row("more than the field", cmd::set_vcc, {{key::vcc, "25.7"}}, 0x89, "01");
    row("no number", cmd::set_vcc, {{key::vcc, "1e300"}}, 0x89, "00");
    row("", cmd::set_vpp, {{key::vpp, 12.5}}, 0x8A, "7D");
    row("", cmd::set_vicc, {{key::vcc, "5"}, {key::icc, "100000.5"}, {key::ocp, "true"}}, 0x8B,
        "32F4E2F50501");
    row("unprotected", cmd::set_vicc, {{key::vcc, "5"}, {key::icc, "1"}, {key::ocp, "false"}}, 0x8B,
        "32E803000000");
    row("", cmd::set_vipp, {{key::vpp, "12"}, {key::ipp, "20.5"}, {key::ocp, "true"}}, 0x8C, "78145001");
    row("16 bits", cmd::set_vipp, {{key::vpp, "12"}, {key::ipp, "65.537"}, {key::ocp, 0}}, 0x8C, "78010000");
}

void TestProgExec::frames()
{
    QFETCH(QString, cmd);
    QFETCH(TData, params);
    QFETCH(int, opcode);
    QFETCH(QByteArray, payload);
    ScriptedPeer peer;
    peer.expect(peerFrame(static_cast<quint8>(opcode), payload),
                peerFrame(static_cast<quint8>(opcode), "any"));
    peer.start();
    BenchProject bench;
    bench.add(cmd::set_prog, {{key::prog, "bench"}});
    TSerialPort port;
    openPort(port, peer);
    const BenchRun run = runCommand(m_prog, bench.add(cmd, params), port);
    QVERIFY2(run.ok, qPrintable(run.errorText));
    QVERIFY(!run.exit && run.events.isEmpty());
    QCOMPARE(peer.finish(), QString());
}

void TestProgExec::framesOnly()
{
    ScriptedPeer peer;
    peer.start();
    BenchProject bench;
    TSerialPort port;
    openPort(port, peer);
    const BenchRun run = runCommand(m_prog, bench.add(cmd::set_prog), port);
    QVERIFY(!run.ok);
    QCOMPARE(run.errorText, QString());
    QCOMPARE(peer.finish(), QString());
}

void TestProgExec::refused()
{
    ScriptedPeer peer;
    peer.expect(peerFrame(0x89, "\x21"), refusal(9));
    peer.start();
    BenchProject bench;
    TSerialPort port;
    openPort(port, peer);
    const BenchRun run = runCommand(m_prog, bench.add(cmd::set_vcc, {{key::vcc, 3.3}}), port);
    QVERIFY(!run.ok);
    QCOMPARE(run.errorText, QStringLiteral("T414"));
    QCOMPARE(peer.finish(), QString());
}

void TestProgExec::closedPort()
{
    BenchProject bench;
    bench.addProgAndChip();
    for (const QString& key : m_prog.commandKeys()) {
        TSerialPort port;
        const BenchRun run = runCommand(m_prog, bench.add(key), port);
        QVERIFY(!run.ok);
        QCOMPARE(run.errorText, QStringLiteral("T392"));
    }
}

void TestProgExec::selectsTheChip_data()
{
    QTest::addColumn<QString>("block");
    QTest::newRow("block") << "0300A5";
    QTest::newRow("empty") << "";
}

void TestProgExec::selectsTheChip()
{
    QFETCH(QString, block);
    ScriptedPeer peer;
    peer.expect(peerFrame(0x84, QByteArray::fromHex(block.toLatin1())), peerFrame(0x84));
    peer.start();
    BenchProject bench;
    bench.setChip({{"block", block}});
    TSerialPort port;
    openPort(port, peer);
    QVERIFY(runCommand(m_prog, bench.add(cmd::set_device, {{key::device, "c"}, {key::file, "f"}}), port).ok);
    const BenchRun run = runCommand(m_prog, bench.add(cmd::set_device), port);
    QVERIFY(!run.ok);
    QCOMPARE(run.errorText, QString());
    QCOMPARE(peer.finish(), QString());
}

void TestProgExec::detects_data()
{
    QTest::addColumn<QByteArray>("selectReply");
    QTest::addColumn<QByteArray>("idReply"); // null: is not asked for
    QTest::addColumn<QString>("ok");         // with stop, without stop
    QTest::addColumn<int>("cfg");            // where the run goes on
    QTest::addColumn<QString>("errorText");  // with stop; "T397" and "T389" without it, too
    QTest::addColumn<QStringList>("events"); // without stop
    const QByteArray selected = peerFrame(0x84);
    const auto jump = [](const char* chip, const char* cfg) {
        return QStringList{QStringLiteral("2:T401 %1").arg(QLatin1String(chip)),
                           QStringLiteral("3:\n--> T394 \"%1\"").arg(QLatin1String(cfg))};
    };
    const auto none = [](const char* chip) {
        return QStringList{QStringLiteral("2:T401 %1").arg(QLatin1String(chip)),
                           QStringLiteral("2:T402 %1").arg(QLatin1String(chip))};
    };
    QTest::newRow("first chip") << selected << peerFrame(3, "A1") << "yy" << 1 << ""
                                << jump("One (A1)", "Second");
    QTest::newRow("second chip") << selected << peerFrame(3, "A2") << "yy" << 2 << ""
                                 << jump("Two (A2)", "Third");
    QTest::newRow("third chip, not in the list")
        << selected << peerFrame(3, "A3") << "yy" << 0 << "" << jump(" (A3)", "First");
    QTest::newRow("no route") << selected << peerFrame(3, "B0") << "ny" << -1 << "T402 Other (B0)"
                              << none("Other (B0)");
    QTest::newRow("route of -1") << selected << peerFrame(3, "A4") << "ny" << -1 << "T402  (A4)"
                                 << none(" (A4)");
    QTest::newRow("route that is no number")
        << selected << peerFrame(3, "A5") << "ny" << -1 << "T402  (A5)" << none(" (A5)");
    QTest::newRow("configuration is gone")
        << selected << peerFrame(3, "A6") << "nn" << -1 << "T397" << QStringList{"2:T401  (A6)"};
    QTest::newRow("identification is empty")
        << selected << peerFrame(3) << "ny" << -1 << "T402  ()" << none(" ()");
    QTest::newRow("cannot be read") << selected << peerFrame(3, "?") << "ny" << -1 << "unreadable"
                                    << none(" (?)");
    QTest::newRow("reading is refused") << selected << refusal(7) << "ny" << -1 << "T412" << none(" ()");
    QTest::newRow("reading gets no answer")
        << selected << QByteArray("") << "nn" << -1 << "T389" << QStringList();
    QTest::newRow("chip is refused") << refusal(6) << peerFrame(3, "A1") << "ny" << 1 << "T411"
                                     << jump("One (A1)", "Second");
    QTest::newRow("no answer at all")
        << QByteArray("") << QByteArray() << "nn" << -1 << "T389" << QStringList();
}

void TestProgExec::detects()
{
    QFETCH(QByteArray, selectReply);
    QFETCH(QByteArray, idReply);
    QFETCH(QString, ok);
    QFETCH(int, cfg);
    QFETCH(QString, errorText);
    QFETCH(QStringList, events);
    for (const int stop : {1, 0}) {
        const bool good = ok.at(1 - stop) == QLatin1Char('y');
        ScriptedPeer peer;
        peer.expect(peerFrame(0x84, "\x07"), selectReply);
        const bool asked = !idReply.isNull() && (stop == 0 || selectReply.at(1) != '\xFF');
        if (asked)
            peer.expect(peerFrame(3), idReply);
        peer.start();
        BenchProject bench;
        bench.setChip({{"block", "07"}});
        bench.dir().write("auto.lst", "Kit=kit.dev|kit.sig\n");
        bench.dir().write("kit.sig", "A1=One\nA2=Two\nB0=Other\n");
        bench.addCfg("Second");
        bench.addCfg("Third");
        const int id = bench.add(cmd::auto_detect, {{key::name, "Kit"},
                                                    {key::route, "A1=1|A2=2|A3=0|A4=-1|A5=x|A6=9"},
                                                    {key::execute, "0"},
                                                    {key::stop, QString::number(stop)}});
        TSerialPort port;
        openPort(port, peer);
        const BenchRun run = runCommand(m_prog, id, port);
        QCOMPARE(run.ok, good);
        const bool jumped = good && cfg >= 0;
        QCOMPARE(run.cur_cfg, jumped ? cfg : 2);
        QCOMPARE(run.cur_cmd, jumped ? -1 : id);
        QCOMPARE(port.isOpen(), !jumped);
        if (!good)
            QCOMPARE(run.errorText, errorText);
        if (stop == 0)
            QCOMPARE(run.events, events);
        QCOMPARE(peer.finish(), QString());
    }
}

void TestProgExec::detectsWithoutAFamily()
{
    ScriptedPeer peer;
    peer.start();
    BenchProject bench;
    TSerialPort port;
    openPort(port, peer);
    const BenchRun run =
        runCommand(m_prog, bench.add(cmd::auto_detect, {{key::name, "x"}, {key::stop, 0}}), port);
    QVERIFY(!run.ok);
    QCOMPARE(run.errorText, QString());
    QCOMPARE(peer.finish(), QString());
}

void TestProgExec::executesTheRoute()
{
    ScriptedPeer peer;
    peer.expect(peerFrame(0x84), peerFrame(0x84)).expect(peerFrame(3), peerFrame(3, "A1")).start();
    BenchProject bench;
    bench.dir().write("auto.lst", "Kit=kit.dev|none.sig\n");
    const int target = bench.addCfg("Next");
    const int id = bench.add(cmd::auto_detect, {{key::name, "Kit"},
                                                {key::route, QStringLiteral("A1=%1").arg(target)},
                                                {key::execute, "1"},
                                                {key::stop, "1"}});
    TSerialPort port;
    openPort(port, peer);
    TDevProgExec exec(bench.data(id));
    QSignalSpy started(&exec, SIGNAL(signalExecuteFromCmd(int)));
    QSignalSpy texts(&exec, &IDeviceExec::signalEventText);
    bool exit = false;
    int cur_cfg = 0;
    int cur_cmd = id;
    QVERIFY(exec.execute(&port, exit, cur_cfg, cur_cmd));
    QCOMPARE(started.size(), 1);
    QCOMPARE(started.first().first().toInt(), target);
    QCOMPARE(texts.last().at(1).toString(), QStringLiteral("T403 Next"));
    QCOMPARE(cur_cmd, id);
    QVERIFY(cur_cfg == 0 && !exit && !port.isOpen());
    QCOMPARE(peer.finish(), QString());
}

QTEST_GUILESS_MAIN(TestProgExec)
#include "test_prog_exec.moc"
