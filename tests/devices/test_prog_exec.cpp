#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDevProg.h"
#include "link/TSerialPort.h"
#include "support/BenchProject.h"
#include "support/ScriptedPeer.h"
#include "support/tables.h"

#include <QtTest>

namespace {

QByteArray refusal(int code)
{
    return peerFrame(0xFF, QByteArray(1, static_cast<char>(code)) + QByteArray(1, '\0'));
}

} // namespace

/// The programmer's commands on the wire.
class TestProgExec : public QObject
{
    Q_OBJECT

private slots:
    void frames_data();
    void frames();
    void nothingIsSent();
    void selectsTheChip();
    void detects_data();
    void detects();

private:
    /// Runs the command against the script and gives its outcome, the script's report as a last event.
    BenchRun play(int id_cmd, ScriptedPeer& peer, bool* stillOpen = nullptr) const;

    TDevProg m_prog{dev_class::prog, {}};
};

BenchRun TestProgExec::play(int id_cmd, ScriptedPeer& peer, bool* stillOpen) const
{
    peer.start();
    TSerialPort port;
    if (!port.open(peer.path(), QIODevice::ReadWrite))
        return {};
    port.setTimeout(300);
    port.setMaxData(64);
    BenchRun run = runCommand(m_prog, id_cmd, port);
    if (stillOpen)
        *stillOpen = port.isOpen();
    const QString report = peer.finish();
    if (!report.isEmpty())
        run.events.append(report);
    return run;
}

void TestProgExec::frames_data()
{
    tableColumns<QString, TData, int, QByteArray>("cmd", "params", "opcode", "payload");
    const auto row = [](const char* name, const QString& cmd, const TData& params, int opcode,
                        const char* payload) {
        tableRow(qPrintable(cmd + QLatin1Char(' ') + QLatin1String(name)), cmd, params, opcode,
                 QByteArray::fromHex(payload));
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
    row("beyond all", cmd::set_vcc, {{key::vcc, "1e300"}}, 0x89, "00");
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
    BenchProject bench;
    bench.addProg();
    const int id = bench.add(cmd, params);
    const QByteArray frame = peerFrame(static_cast<quint8>(opcode), payload);
    for (const QByteArray& reply : {peerFrame(0x00, "any"), refusal(9)}) {
        ScriptedPeer peer;
        peer.expect(frame, reply);
        const BenchRun run = play(id, peer);
        QCOMPARE(run.events, QStringList());
        QCOMPARE(run.ok, reply != refusal(9));
        QCOMPARE(run.errorText, QString(run.ok ? "" : "T414"));
    }
}

void TestProgExec::nothingIsSent()
{
    BenchProject bench;
    for (const QString& key : m_prog.commandKeys()) {
        TSerialPort closed;
        const BenchRun run = runCommand(m_prog, bench.add(key), closed);
        QVERIFY(!run.ok && run.errorText == QLatin1String("T392"));
    }
    // No chip, no detection of that name, no command of the programmer.
    for (const QString& key : {QString(cmd::set_device), QString(cmd::auto_detect), QString(cmd::set_prog)}) {
        ScriptedPeer peer;
        const BenchRun run = play(bench.add(key, {{key::name, "x"}, {key::stop, 0}}), peer);
        QVERIFY(!run.ok && run.errorText.isEmpty() && run.events.isEmpty());
    }
}

void TestProgExec::selectsTheChip()
{
    for (const char* block : {"0300A5", ""}) {
        BenchProject bench;
        bench.setChip({{"block", block}});
        ScriptedPeer peer;
        peer.expect(peerFrame(0x84, QByteArray::fromHex(block)), peerFrame(0x84));
        const BenchRun run = play(bench.addChip(), peer);
        QVERIFY(run.ok && run.events.isEmpty());
    }
}

void TestProgExec::detects_data()
{
    tableColumns<QByteArray, QByteArray>("selectReply", "idReply"); // null: is not asked for
    tableColumns<QString>("stopsWith");                             // error with "Stop"; "-" is none
    tableColumns<QString>("skipsWith");                             // error with "Skip"
    tableColumns<int>("cfg");      // where the run goes on; -1 behind the command
    tableColumns<QString>("chip"); // as it is told; null when it is not
    const QByteArray yes = peerFrame(0x84);
    const auto row = [](const char* name, const QByteArray& selectReply, const QByteArray& idReply,
                        const char* stopsWith, const char* skipsWith, int cfg, const char* chip) {
        tableRow(name, selectReply, idReply, QString(stopsWith), QString(skipsWith), cfg,
                 QString::fromLatin1(chip));
    };
    row("first chip", yes, peerFrame(3, "A1"), "-", "-", 1, "One (A1)");
    row("second chip", yes, peerFrame(3, "A2"), "-", "-", 2, "Two (A2)");
    row("no route", yes, peerFrame(3, "B0"), "T402 Other (B0)", "-", -1, "Other (B0)");
    row("route of -1", yes, peerFrame(3, "A4"), "T402  (A4)", "-", -1, " (A4)");
    row("configuration is gone", yes, peerFrame(3, "A6"), "T397", "T397", -1, " (A6)");
    row("cannot be read", yes, peerFrame(3, "?"), "unreadable", "-", -1, " (?)");
    row("reading is refused", yes, refusal(7), "T412", "-", -1, " ()");
    row("reading gets no answer", yes, "", "T389", "T389", -1, nullptr);
    row("chip is refused", refusal(6), peerFrame(3, "A1"), "T411", "-", 1, "One (A1)");
    row("no answer at all", "", {}, "T389", "T389", -1, nullptr);
}

void TestProgExec::detects()
{
    QFETCH(QByteArray, selectReply);
    QFETCH(QByteArray, idReply);
    QFETCH(QString, stopsWith);
    QFETCH(QString, skipsWith);
    QFETCH(int, cfg);
    QFETCH(QString, chip);
    enum Mode { Jamp = 1, Stop = 2 };
    for (const int mode : {Jamp | Stop, Jamp + 0, Stop + 0, 0}) {
        BenchProject bench;
        bench.setChip({{"block", "07"}});
        bench.dir().write("auto.lst", "Kit=kit.dev|kit.sig\n");
        bench.dir().write("kit.sig", "A1=One\nA2=Two\nB0=Other\n");
        bench.addCfg("Second");
        bench.addCfg("Third");
        const int id = bench.add(cmd::auto_detect, {{key::name, "Kit"},
                                                    {key::route, "A1=1|A2=2|A3=0|A4=-1|A5=x|A6=9"},
                                                    {key::execute, mode & Jamp ? "0" : "1"},
                                                    {key::stop, mode & Stop ? "1" : "0"}});
        ScriptedPeer peer;
        peer.expect(peerFrame(0x84, "\x07"), selectReply);
        if (!idReply.isNull() && (selectReply != refusal(6) || !(mode & Stop)))
            peer.expect(peerFrame(3), idReply);
        bool stillOpen = false;
        const BenchRun run = play(id, peer, &stillOpen);

        const QString error = mode & Stop ? stopsWith : skipsWith;
        QCOMPARE(run.ok, error == QLatin1String("-"));
        if (!run.ok)
            QCOMPARE(run.errorText, error);
        const bool routed = run.ok && cfg >= 0;
        QCOMPARE(run.cur_cfg, routed && (mode & Jamp) ? cfg : 2);
        QCOMPARE(run.cur_cmd, routed && (mode & Jamp) ? -1 : id);
        QCOMPARE(stillOpen, !routed);
        QStringList events;
        if (!chip.isNull() && (run.ok || error != QLatin1String("T411")) && error != QLatin1String("T412") &&
            error != QLatin1String("unreadable"))
            events.append("2:T401 " + chip);
        const QString name = project().cfgName(cfg);
        if (routed && (mode & Jamp))
            events.append("3:\n--> T394 \"" + name + '"');
        else if (routed)
            events += {"2:T403 " + name, QStringLiteral("start:%1").arg(cfg)};
        else if (run.ok)
            events.append("2:T402 " + chip);
        QCOMPARE(run.events, events);
    }
}

QTEST_GUILESS_MAIN(TestProgExec)
#include "test_prog_exec.moc"
