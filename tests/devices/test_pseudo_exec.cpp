#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDevProg.h"
#include "devices/TDevToolsExec.h"
#include "devices/run_process.h"
#include "link/TSerialPort.h"
#include "support/BenchProject.h"
#include "support/ScriptedPeer.h"
#include "support/tables.h"

#include <QThread>
#include <QtTest>

#include <memory>

using Count = TDevToolsExec::Count;

namespace {

// Command | its frame.
const char frames[] = R"(
set_device device=chip file=chip.dev | 84 0300A5
reset duration=-400 | 86 70FE
reset duration=400 | 86 9001
reset duration=40000 | 86 FF7F
set_freq freq=16909060 duty_cycle=90 | 87 040302018403
set_freq freq=4294967295 duty_cycle=100 | 87 FFFFFFFFE803
set_io state=HL | 88 0000050400
set_io state=x?ZI | 88 0000000008
set_vcc vcc=3.3 | 89 21
set_vcc vcc=3.29999 | 89 20
set_vcc vcc=25.7 | 89 01
set_vcc vcc=1e300 | 89 00
set_vpp vpp=12.5 | 8A 7D
set_vicc vcc=5 icc=100000.5 ocp=true | 8B 32F4E2F50501
set_vicc vcc=5 icc=1 ocp=false | 8B 32E803000000
set_vipp vpp=12 ipp=20.5 ocp=true | 8C 78145001
set_vipp vpp=12 ipp=65.537 ocp=0 | 8C 78010000
)";

// How it goes on | frames | where the run is then, and the port | error | events. The chip is identified by
// the text of the answer: 4131 is A1. Routes lead from A1 and A2 to the configurations 1 and 2.
const char detections[] = R"(
execute=0 stop=1 | 84 07 >, 03 > 4131 | start of 1, closed | | 2:T401 One (A1); 3:--> T394 "Second"
execute=0 stop=0 | 84 07 >, 03 > 4132 | start of 2, closed | | 2:T401 Two (A2); 3:--> T394 "Third"
execute=1 stop=1 | 84 07 >, 03 > 4132 | here, closed | | 2:T401 Two (A2); 2:T403 Third; start:2
execute=0 stop=1 | 84 07 >, 03 > 4230 | here, open | T402 Other (B0) | 2:T401 Other (B0)
execute=0 stop=0 | 84 07 >, 03 > 4230 | here, open | | 2:T401 Other (B0); 2:T402 Other (B0)
execute=0 stop=1 | 84 07 >, 03 > 4134 | here, open | T402  (A4) | 2:T401  (A4)
execute=0 stop=0 | 84 07 >, 03 > 4135 | here, open | | 2:T401  (A5); 2:T402  (A5)
execute=0 stop=0 | 84 07 >, 03 > 4136 | here, open | T397 | 2:T401  (A6)
execute=0 stop=1 | 84 07 >, 03 > 3F | here, open | unreadable |
execute=0 stop=0 | 84 07 >, 03 > 3F | here, open | | 2:T401  (?); 2:T402  (?)
execute=0 stop=1 | 84 07 >, 03 > !7 | here, open | T412 |
execute=0 stop=0 | 84 07 >, 03 > !7 | here, open | | 2:T401  (); 2:T402  ()
execute=0 stop=0 | 84 07 >, 03 | here, open | T389 |
execute=0 stop=1 | 84 07 > !6 | here, open | T411 |
execute=0 stop=0 | 84 07 > !6, 03 > 4131 | start of 1, closed | | 2:T401 One (A1); 3:--> T394 "Second"
execute=0 stop=0 | 84 07 | here, open | T389 |
)";

// Identity in the description | frames | error | events. Only 16 bits count, and 0 is any programmer.
const char links[] = R"(
4660 | 80 > 3412, 81 > 4DC3A46B6572 | | 4:Mäker
4660 | 80 > 3413, 81 > 4D | T399 | 4:M
52 | 80 > 34, 81 > 4D | | 4:M
65536 | 80 >, 81 > 4D | | 4:M
4660 | 80 | T389 |
4660 | 80 > 3412, 81 > !1 | T406 |
)";

// Value | limit | delta | outcome | value behind it.
const char rounds[] = R"(
0 | 3 | 1 | goes on | 1
2 | 3 | 1 | arrived | 3
3 | 3 | 1 | arrived | 3
5 | 0 | 1 | goes on | 6
2147483646 | 0 | 1 | arrived | 2147483647
2147483647 | 0 | 1 | out of range | 2147483647
2147483646 | 2147483647 | 2147483647 | out of range | 2147483646
5 | 0 | -2 | goes on | 3
1 | 0 | -2 | out of range | 1
2 | 0 | -2 | arrived | 0
2 | 3 | -1 | arrived | 2
-7 | 3 | 1 | out of range | -7
)";

} // namespace

/// The commands that belong to no chip at work: frames of the programmer, its link, flow and tools.
class TestPseudoExec : public QObject
{
    Q_OBJECT

private slots:
    void sends_data() { textRows(frames, {"command", "frame"}); }
    void sends();
    void nothingIsSent();
    void detects_data() { textRows(detections, {"mode", "frames", "place", "error", "events"}); }
    void detects();
    void link_data() { textRows(links, {"interface", "frames", "error", "events"}); }
    void link();
    void linkToTheRightPort();
    void counts_data() { textRows(rounds, {"value", "limit", "delta", "outcome", "stored"}); }
    void counts();
    void counterInTheModel();
    void jampLandsOnItsTarget();
    void delayTakesItsTime();
    void stopAndExecute();
    void processNeverFails();
    void longProcessOutlivesTheCommand();

private:
    TDevTools m_tools{dev_class::tools, {}};
    TDevProg m_prog{dev_class::prog, {}};
};

void TestPseudoExec::sends()
{
    QFETCH(QString, command);
    QFETCH(QString, frame);
    BenchProject bench;
    bench.setChip({{"block", "0300A5"}});
    bench.addProg();
    const int id = bench.add(command);
    for (const QString& reply : {QString(" > 00"), QString(" > !9")}) {
        ScriptedPeer peer;
        const BenchRun run = runCommands(m_prog, {id}, peer.expectText(frame + reply));
        QCOMPARE(run.errorText, QString(reply == " > !9" ? "T414" : ""));
        QVERIFY(run.ok == run.errorText.isEmpty() && run.events.isEmpty());
    }
}

void TestPseudoExec::nothingIsSent()
{
    BenchProject bench;
    for (const QString& word : m_prog.commandKeys()) {
        TSerialPort closed;
        const BenchRun run = runCommand(m_prog, bench.add(word), closed);
        QVERIFY(!run.ok && run.errorText == QLatin1String("T392"));
    }
    // No chip, no detection of that name, no command of the programmer.
    for (const char* word : {"set_device", "auto_detect name=x stop=0", "set_prog"}) {
        ScriptedPeer peer;
        const BenchRun run = runCommands(m_prog, {bench.add(word)}, peer);
        QVERIFY(!run.ok && run.errorText.isEmpty() && run.events.isEmpty());
    }
}

void TestPseudoExec::detects()
{
    QFETCH(QString, mode);
    QFETCH(QString, frames);
    BenchProject bench;
    bench.setChip({{"block", "07"}});
    bench.dir().write("auto.lst", "Kit=kit.dev|kit.sig\n");
    bench.dir().write("kit.sig", "A1=One\nA2=Two\nB0=Other\n");
    bench.addCfg("Second");
    bench.addCfg("Third");
    const int id = bench.add("auto_detect name=Kit route=A1=1|A2=2|A3=0|A4=-1|A5=x|A6=9 " + mode);
    ScriptedPeer peer;
    const BenchRun run = runCommands(m_prog, {id}, peer.expectText(frames));
    QTEST(run.errorText, "error");
    QTEST(run.events.join("; ").remove('\n'), "events");
    QString place = run.cur_cmd == -1 ? QStringLiteral("start of %1").arg(run.cur_cfg) : "elsewhere";
    if (run.cur_cmd == id && run.cur_cfg == 2)
        place = "here";
    QTEST(place + (run.isOpen ? ", open" : ", closed"), "place");
    QCOMPARE(run.ok, run.errorText.isEmpty());
}

void TestPseudoExec::link()
{
    QFETCH(QString, interface);
    QFETCH(QString, frames);
    QFETCH(QString, error);
    ScriptedPeer peer;
    peer.expectText(frames).start();
    BenchProject bench;
    bench.setPort(peer.path());
    bench.setProg("[Main]\nInterface=" + interface.toLatin1());
    TSerialPort port;
    const BenchRun run = runCommand(m_tools, bench.addProg(), port);
    QCOMPARE(peer.finish(), QString());
    QCOMPARE(run.errorText, error);
    QTEST(run.events.join("; "), "events");
    QVERIFY(run.ok == error.isEmpty() && run.isOpen);
    QCOMPARE(port.isLinkFailed(), error == QLatin1String("T389"));
}

void TestPseudoExec::linkToTheRightPort()
{
    ScriptedPeer first;
    ScriptedPeer second;
    first.expectText("80 > 3412, 81 >").start();
    second.expectText("80 > 3412, 81 >").start();
    BenchProject bench;
    bench.setPort(first.path());
    TSerialPort port;
    QVERIFY(runCommand(m_tools, bench.addProg(), port).ok);
    const QString other = "set_prog prog=bench alt_enabled=true alt_port=";
    QVERIFY(runCommand(m_tools, bench.add(other + second.path()), port).ok);
    QCOMPARE(first.finish() + second.finish(), QString());

    QVERIFY(runCommand(m_tools, bench.add(other), port).errorText.startsWith("Port : "));
    QVERIFY(!port.isOpen());
    bench.setPort("no-%2-port");
    QCOMPARE(runCommand(m_tools, bench.addProg(), port).errorText, QStringLiteral("Port no-%2-port: T393"));
    QCOMPARE(runCommand(m_tools, bench.add("set_prog prog=unknown"), port).errorText, QStringLiteral("T398"));
}

void TestPseudoExec::counts()
{
    const auto cell = [](const char* column) {
        return static_cast<QString*>(QTest::qData(column, qMetaTypeId<QString>()))->toLongLong();
    };
    const QMap<Count, QString> outcomes{
        {Count::GoesOn, "goes on"}, {Count::Arrived, "arrived"}, {Count::OutOfRange, "out of range"}};
    qint64 value = cell("value");
    QTEST(outcomes.value(TDevToolsExec::countRound(value, cell("limit"), int(cell("delta")))), "outcome");
    QCOMPARE(value, cell("stored"));
}

void TestPseudoExec::counterInTheModel()
{
    BenchProject bench;
    const int id = bench.add("counter value=0 limit=2 delta=1");
    TSerialPort port;
    const std::unique_ptr<IDeviceExec> exec(m_tools.createExec(bench.data(id)));
    project().clearChanged();
    for (const int round : {1, 2, 2}) {
        // One and the same copy of the command: only the model tells what the last round left.
        bool exit = false;
        int cfg = 0;
        int cmd = id;
        QVERIFY(exec->execute(&port, exit, cfg, cmd));
        QCOMPARE(bench.data(id).value(key::value).toInt(), round);
        QCOMPARE(exit, round == 2);
    }
    QVERIFY(project().isChanged());
    const BenchRun run = runCommand(m_tools, bench.add("counter value=0x7FFFFFFF limit=0 delta=1"), port);
    QVERIFY(!run.ok && run.errorText == QLatin1String("T395"));
}

void TestPseudoExec::jampLandsOnItsTarget()
{
    // Commands 0 to 2 are in configuration 0, 3 to 5 in configuration 1.
    const int rows[][3] = {
        {1, 0, -1}, {2, 2, 1}, {0, 3, -1}, {0, 5, 4}, {4, 1, 0}}; // from, to, cur_cmd behind it
    BenchProject bench;
    for (int i = 0; i < 6; ++i) {
        if (i == 3)
            bench.addCfg("\"%1\"");
        bench.add(cmd::jamp);
    }
    TSerialPort port;
    for (const auto& row : rows) {
        project().setCmdParam(row[0], {{key::id_cmd, row[0]}, {key::to_cmd, QString::number(row[1])}});
        const BenchRun run = runCommand(m_tools, row[0], port);
        QVERIFY(run.ok);
        QCOMPARE(run.cur_cfg, project().cfgOfCmd(row[1]));
        QCOMPARE(run.cur_cmd, row[2]);
        QCOMPARE(project().nextCmd(run.cur_cfg, run.cur_cmd)->id(), row[1]);
        const QString line = QStringLiteral("3:\n--> T394 \"%1\"").arg(project().cfgName(run.cur_cfg));
        QCOMPARE(run.events, project().cfgOfCmd(row[0]) == run.cur_cfg ? QStringList() : QStringList{line});
    }
    const BenchRun lost = runCommand(m_tools, bench.add("jamp to_cmd=77"), port);
    QVERIFY(!lost.ok && lost.errorText.isEmpty());
}

void TestPseudoExec::delayTakesItsTime()
{
    const struct
    {
        int ms;
        bool stopped;
        int least;
    } rows[] = {{0, false, 0}, {150, false, 149}, {499, true, 498}, {500, true, 0}};
    for (const auto& row : rows) {
        TDevToolsExec exec({{key::cmd, QString(cmd::delay)}, {key::value, QString::number(row.ms)}});
        if (row.stopped)
            exec.slotStop();
        QSignalSpy percents(&exec, &IDeviceExec::signalEventProc);
        TSerialPort port;
        bool exit = false;
        int none = 0;
        QElapsedTimer time;
        time.start();
        QVERIFY(exec.execute(&port, exit, none, none));
        QVERIFY(time.elapsed() >= row.least && time.elapsed() < row.least + 300);
        QVERIFY(percents.size() == 1 && percents.first().first() == 0);
    }
}

void TestPseudoExec::stopAndExecute()
{
    BenchProject bench;
    TSerialPort port;
    QVERIFY(runCommand(m_tools, bench.add(cmd::stop), port).exit);
    const int next = bench.addCfg("Next");
    BenchRun run = runCommand(m_tools, bench.add("execute cfg=0"), port);
    QVERIFY(run.ok && !run.exit && run.cur_cfg == next);
    QCOMPARE(run.events, QStringList{"start:0"});
    run = runCommand(m_tools, bench.add("execute cfg=-1"), port);
    QVERIFY(!run.ok && run.errorText == QLatin1String("T397"));
    QVERIFY(!runCommand(m_tools, bench.add(cmd::separator), port).ok);
}

void TestPseudoExec::processNeverFails()
{
    BenchProject bench;
    TSerialPort port;
    QElapsedTimer time;
    time.start();
    for (const QString& line :
         {QStringLiteral("sh -c \"pwd > %1\"").arg(bench.dir().file("out")),
          QStringLiteral("/no/such/program -x"), QStringLiteral("sh -c \"exit 3\""), QStringLiteral("cat"),
          QStringLiteral("  "),
          QStringLiteral("sh -c \"head -c 3000000 /dev/zero; head -c 3000000 /dev/zero >&2\"")})
        QVERIFY(runCommand(m_tools, bench.add(cmd::process, {{key::file, line}}), port).ok);
    QVERIFY(time.elapsed() < 10000);
    QCOMPARE(bench.dir().read("out").trimmed(), QCoreApplication::applicationDirPath().toUtf8());
}

void TestPseudoExec::longProcessOutlivesTheCommand()
{
    const TestDir dir(TestDir::Empty);
    const QString line = QStringLiteral("sh -c \"sleep 0.5; echo done > %1\"").arg(dir.file("out"));
    const std::unique_ptr<QThread> thread(QThread::create([&line] {
        QObject command;
        runCommandLine(line, 50, &command);
    }));
    thread->start();
    QVERIFY(thread->wait(400));
    QVERIFY(dir.read("out").isEmpty());
    QTRY_COMPARE(dir.read("out"), QByteArray("done\n"));
}

QTEST_GUILESS_MAIN(TestPseudoExec)
#include "test_pseudo_exec.moc"
