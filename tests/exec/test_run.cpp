#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/TLang.h"
#include "core/globals.h"
#include "core/keys.h"
#include "exec/RunBench.h"
#include "exec/TProgTask.h"
#include "support/ScriptedPeer.h"
#include "support/tables.h"

#include <QtTest>

namespace {

/// A programmer that agrees with everything, but has another answer for the requests that begin as a PeerLine
/// tells.
struct AgreeingPeer : ScriptedPeer
{
    explicit AgreeingPeer(const QString& odd = QStringLiteral("FF"))
    {
        otherwise([line = PeerLine(odd)](const QByteArray& request) {
            const auto opcode = static_cast<quint8>(request.at(1));
            const QByteArray sent = request.mid(1, 1) + request.mid(4, request.size() - 5);
            if (sent.startsWith(line.request))
                return line.answer;
            const char* reply = opcode == 0x80 ? "\xD2\x04" : opcode == 0x81 ? "Bench" : "";
            return peerFrame(opcode, reply);
        });
        start();
    }
};

// Commands behind the set_prog | a request that has another answer, FF for none | all frames | status, kind
// and text of the last line.
const char frames[] = R"(
set_vcc vcc=3.3 | FF | 80 81 83:01 89:21 85 83:00 | 3 5 Done
set_vcc vcc=3.3; stop; set_vcc vcc=5 | FF | 80 81 83:01 89:21 85 83:00 | 3 5 Done
set_vcc vcc=3.3; set_vcc vcc=5 | 89 > !3 | 80 81 83:01 89:21 85 83:02 | 4 6 Programmer: wrong parameter
set_vcc vcc=3.3; set_vcc vcc=5 | 89 | 80 81 83:01 89:21 | 4 6 No answer from the programmer
set_vcc vcc=3.3 | 80 > 0102 | 80 81 85 83:02 | 4 6 The programmer does not fit its description
set_vcc vcc=3.3 | 83 01 > !3 | 80 81 83:01 85 83:02 | 4 6 Programmer: wrong parameter
set_vcc vcc=3.3 | 85 > !3 | 80 81 83:01 89:21 85 83:02 | 3 6
set_vcc vcc=3.3 | 85 | 80 81 83:01 89:21 85 | 3 6
set_vcc vcc=99 | FF | 80 81 83:01 85 83:02 | 4 6 The command "Set Vcc" has wrong parameters
erase | FF | 80 81 83:01 83:02 | 4 6 The command "Erase" does not fit the selected device or programmer
set_device device=W25Q64FV file=spi-flash/W25Q64FV.dev clk=4000000; leave | FF | 80 81 83:01 84:01000000093d00 01:0000000000000000 83:00 | 3 5 Done
)";

// Commands of a configuration A, and behind " / " of a second one B; "-" is an unchecked one; they are
// numbered from 0 | lines of A | status of both: 0 never run, 3 done. A jump stays in the log of A.
const char flows[] = R"(
-delay value=1 | Done | 3 0
counter value=0 limit=3 delta=1; delay value=0; jamp to_cmd=0 | Counter, Delay 0 ms, Jamp, Counter, Delay 0 ms, Jamp, Counter, Done | 3 0
delay value=1; stop; delay value=2 | Delay 1 ms, Stop, Done | 3 0
-delay value=1; delay value=2 | Delay 2 ms, Done | 3 0
jamp to_cmd=2; delay value=1 / -delay value=2; delay value=3 | Jamp, --> Configuration "B", Delay 3 ms, Done | 3 0
execute cfg=0; execute cfg=1; delay value=1 / delay value=2 | Execute, Execute, Delay 1 ms, Done | 3 3
)";

// ID Prog or Reset | commands | a request that has another answer | all frames | kind and text of the last
// line. The pulse is -400 ms by the programmer's description; the chip's reset line is low.
const char tasks[] = R"(
identify | set_prog | FF | 80 81 83:03 | 5 Done
identify | stop | FF | | 6
identify | set_prog | 83 03 > !3 | 80 81 83:03 | 6 Programmer: wrong parameter
identify | set_prog | 80 | 80 | 6 No answer from the programmer
reset | set_prog | FF | 80 81 83:01 86:70fe 83:00 | 5 Done
reset | set_prog | 86 > !3 | 80 81 83:01 86:70fe 83:02 | 6 Programmer: wrong parameter
reset | set_prog | 86 | 80 81 83:01 86:70fe | 6 No answer from the programmer
reset | stop | FF | | 6
)";

} // namespace

class TestRun : public QObject
{
    Q_OBJECT

private slots:
    void sends_data() { textRows(frames, {"commands", "odd", "frames", "outcome"}); }
    void sends();
    void flow_data() { textRows(flows, {"commands", "lines", "status"}); }
    void flow();
    void progTask_data() { textRows(tasks, {"task", "link", "odd", "frames", "last"}); }
    void progTask();
    void twoProgrammersInOneRun();
    void eventsOfAGoodRun();
    void pauseResume_data() { textRows("pause\njamp to_cmd=1 / pause", {"commands"}); }
    void pauseResume();
    void resumesFromInsideTheSignal();
    void stopInPauseAndDelay_data()
    {
        textRows("pause |\ndelay value=60000 |\npause | at its line", {"command", "when"});
    }
    void stopInPauseAndDelay();
    void deletedRunningCommandEndsTheRun();
    void sameConfigurationAgainRightBehindItsResult();

private:
    /// Adds the configurations A and B with such commands; the first has a set_prog if an alias is given.
    static int addAll(RunBench& bench, const QString& commands, const QString& alias = QString());
};

int TestRun::addAll(RunBench& bench, const QString& commands, const QString& alias)
{
    const int a = bench.addCfg("A");
    bench.addCfg("B");
    if (!alias.isEmpty())
        bench.addLink(a, alias);
    int cfg = a;
    for (const QString& part : commands.split(" / ")) {
        for (const QString& text : part.split("; ", Qt::SkipEmptyParts)) {
            const bool isChecked = !text.startsWith('-');
            project().setCmdStatus(bench.addCmd(cfg, text.mid(isChecked ? 0 : 1)), isChecked);
        }
        ++cfg;
    }
    bench.bind();
    return a;
}

void TestRun::sends()
{
    QFETCH(QString, commands);
    QFETCH(QString, odd);
    AgreeingPeer peer(odd);
    RunBench bench;
    bench.addProgrammer("P", peer.path());
    const int cfg = addAll(bench, commands, "P");
    QVERIFY(bench.run({cfg}));
    QCOMPARE(peer.finish(), QString());
    QTEST(peer.requestText(), "frames");
    const QString outcome = QStringLiteral("%1 %2 %3").arg(project().cfgStatus(cfg)).arg(bench.last().code);
    QTEST(outcome.arg(bench.last().text1).trimmed(), "outcome");
    QCOMPARE(bench.view(cfg).ended, 1);
}

void TestRun::flow()
{
    QFETCH(QString, commands);
    RunBench bench;
    const int a = addAll(bench, commands);
    project().clearChanged();
    QVERIFY(bench.run({a}));
    QStringList lines;
    for (const LogEvent& event : bench.log()) {
        if (event.idCfg == a)
            lines.append(event.text1.trimmed() + (event.text2.endsWith(" ms") ? ' ' + event.text2 : ""));
    }
    QTEST(lines.join(", "), "lines");
    QTEST(QStringLiteral("%1 %2").arg(project().cfgStatus(a)).arg(project().cfgStatus(a + 1)), "status");
    QCOMPARE(bench.view(a).begun, 1);
    QCOMPARE(project().isChanged(), commands.contains("counter"));
}

void TestRun::progTask()
{
    QFETCH(QString, task);
    QFETCH(QString, link);
    QFETCH(QString, odd);
    AgreeingPeer peer(odd);
    RunBench bench;
    bench.addProgrammer("bench", peer.path());
    const int cfg = bench.addCfg("A");
    if (link == cmd::set_prog)
        bench.addLink(cfg, "bench", "ATmega328P");
    const int id = bench.addCmd(cfg, cmd::ident);
    bench.bind();

    TProgTask progTask(id);
    QString last;
    connect(&progTask, &TProgTask::signalEventText, this, [&](TCodeExec code, const QString& text) {
        last = QStringLiteral("%1 %2").arg(QString::number(code), text).trimmed();
    });
    const bool done = task == "reset" ? progTask.reset() : progTask.identify();
    QTEST(last, "last");
    QCOMPARE(done, last.startsWith('5'));
    peer.finish();
    QTEST(peer.requestText(), "frames");
}

void TestRun::twoProgrammersInOneRun()
{
    AgreeingPeer first;
    AgreeingPeer second;
    RunBench bench;
    bench.addProgrammer("P", first.path());
    bench.addProgrammer("Q", second.path());
    const int cfg = bench.addCfg("A");
    bench.addLink(cfg, "P");
    bench.addLink(cfg, "Q");
    bench.bind();
    QVERIFY(bench.run({cfg}));
    QCOMPARE(first.finish() + second.finish(), QString());
    QCOMPARE(first.requestText(), QStringLiteral("80 81 83:01 85 83:00"));
    QCOMPARE(second.requestText(), QStringLiteral("80 81 83:01 85 83:00"));
    QCOMPARE(project().cfgStatus(cfg), int(csDone));
}

void TestRun::eventsOfAGoodRun()
{
    AgreeingPeer peer;
    RunBench bench;
    bench.addProgrammer("P", peer.path());
    const int cfg = addAll(bench, "set_vcc vcc=3.3", "P");
    QList<int> statuses;
    QObject::connect(&bench.control(), &TRunControl::signalStatusChanged,
                     [&](int, int status) { statuses.append(status); });
    QVERIFY(bench.run({cfg}));
    QStringList lines;
    for (const LogEvent& event : bench.log())
        lines.append(QStringLiteral("%1|%2|%3").arg(QString::number(event.code), event.text1, event.text2));
    const QString link = QStringLiteral("0|Set Prog|P: %1, Simulator").arg(peer.path());
    QCOMPARE(lines, (QStringList{link, "4|Bench|", "0|Set Vcc|3.3 V", "5|Done|"}));
    QCOMPARE(statuses, (QList<int>{csRun, csDone}));
    QCOMPARE(bench.view(cfg).percents, (QList<int>{0, 0}));
}

void TestRun::pauseResume()
{
    QFETCH(QString, commands);
    RunBench bench;
    const int a = addAll(bench, commands);
    bench.control().start(a);
    QTRY_COMPARE(project().cfgStatus(a), int(csPause));
    // Behind a jump too it is the started configuration that waits, and has one run at most.
    QCOMPARE(project().cfgStatus(a + 1), int(csIdle));
    bench.control().start(a);
    bench.control().resume(a);
    QCOMPARE(project().cfgStatus(a), int(csRun));
    QVERIFY(bench.waitIdle(5000));
    QCOMPARE(bench.texts(ceWork).last(), langText(396));
    QCOMPARE(project().cfgStatus(a), int(csDone));
    QCOMPARE(bench.view(a).begun, 1);
}

void TestRun::resumesFromInsideTheSignal()
{
    RunBench bench;
    const int cfg = addAll(bench, "pause; delay value=1");
    // As a click on the start button that is handled before the worker goes on.
    connect(&bench.control(), &TRunControl::signalStatusChanged, &bench.control(), [&](int id, int status) {
        if (status == csPause)
            bench.control().resume(id);
    });
    QVERIFY(bench.run({cfg}, 3000));
    QCOMPARE(bench.texts(ceCmdBegin), (QStringList{"Pause", "Delay"}));
}

void TestRun::stopInPauseAndDelay()
{
    QFETCH(QString, command);
    QFETCH(QString, when);
    AgreeingPeer peer;
    RunBench bench;
    bench.addProgrammer("P", peer.path());
    const int cfg = addAll(bench, command + "; set_vcc vcc=3.3", "P");
    bench.onEvent([&](const LogEvent& event) {
        if (event.code != ceCmdBegin || event.text1 == QLatin1String("Set Prog"))
            return;
        if (when.isEmpty())
            QTimer::singleShot(50, &bench.control(), &TRunControl::stopAll);
        else
            bench.control().stopAll();
    });
    QVERIFY(bench.run({cfg}, 5000));
    QCOMPARE(peer.finish(), QString());
    QCOMPARE(peer.requestText(), QStringLiteral("80 81 83:01 85 83:00"));
    QCOMPARE(bench.last().text1, langText(390));
    QCOMPARE(project().cfgStatus(cfg), int(csDone));
}

void TestRun::deletedRunningCommandEndsTheRun()
{
    RunBench bench;
    const int cfg = addAll(bench, "delay value=1; delay value=2; delay value=3");
    bench.onEvent([&](const LogEvent& event) {
        if (event.text2 == QLatin1String("2 ms")) {
            project().removeCmd(project().cmdsOfCfg(cfg).at(1)->id());
            project().bindAll();
        }
    });
    QVERIFY(bench.run({cfg}, 5000));
    // It must not begin again at the first command.
    QCOMPARE(bench.texts(ceCmdBegin).size(), 2);
}

void TestRun::sameConfigurationAgainRightBehindItsResult()
{
    RunBench bench;
    const int cfg = addAll(bench, "delay value=1");
    int again = 3;
    QObject::connect(
        &bench.control(), &TRunControl::signalStatusChanged, &bench.control(),
        [&](int id, int status) {
            if (status == csDone && again-- > 0)
                bench.control().start(id);
        },
        Qt::QueuedConnection);
    QVERIFY(bench.run({cfg}));
    QTRY_COMPARE(bench.texts(ceSuccess).size(), 4);
    QVERIFY(bench.waitIdle());
    QCOMPARE(bench.view(cfg).begun, 4);
    QVERIFY(!bench.control().isRunning(cfg));
}

QTEST_GUILESS_MAIN(TestRun)
#include "test_run.moc"
