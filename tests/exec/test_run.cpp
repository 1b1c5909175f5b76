#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/TDataCmd.h"
#include "exec/RunBench.h"
#include "exec/TProgTask.h"
#include "support/ScriptedPeer.h"
#include "support/SimProcess.h"
#include "support/tables.h"

#include <vector>

namespace {

/// A programmer that agrees with everything, but has another answer for the requests that begin as a PeerLine
/// tells.
struct AgreeingPeer : ScriptedPeer
{
    explicit AgreeingPeer(const QString& odd = "FF")
        : line(odd)
    {
        otherwise([this](const QByteArray& request) {
            const auto opcode = static_cast<quint8>(request.at(1));
            const QByteArray sent = request.mid(1, 1) + request.mid(4, request.size() - 5);
            if (sent.startsWith(line.request))
                return line.answer;
            const char* reply = opcode == 0x80 ? "\xD2\x04" : opcode == 0x81 ? "Bench" : "";
            return peerFrame(opcode, reply);
        });
        start();
    }
    bool isSilent() const { return line.answer.isEmpty() && line.request != "\xFF"; }

    const PeerLine line;
};

// Commands behind the set_prog | a request that has another answer, FF for none | all frames | status of the
// run, and the lines behind the one of the set_prog: kind, text and parameters.
const char frames[] = R"(
set_vcc vcc=3.3 | FF | 80 81 83:01 89:21 85 83:00 | 1 3: 4 Bench; 0 Set Vcc 3.3 V; 5 Done
set_prog prog=P | FF | 80 81 83:01 85 83:00 80 81 83:01 85 83:00 | 1 3: 4 Bench; 0 Set Prog; 4 Bench; 5 Done
set_prog prog=P | 85 > !3 | 80 81 83:01 85 85 83:02 |
    1 4: 4 Bench; 6 The programmer did not confirm the end of the work: Programmer: wrong parameter
set_vcc vcc=3.3; set_vcc vcc=5 | 89 > !3 | 80 81 83:01 89:21 85 83:02 |
    1 4: 4 Bench; 0 Set Vcc 3.3 V; 6 Programmer: wrong parameter
set_vcc vcc=3.3; set_vcc vcc=5 | 89 | 80 81 83:01 89:21 | 1 4: 4 Bench; 0 Set Vcc 3.3 V; 6 No answer from the programmer
set_vcc vcc=3.3 | 80 > 0102 | 80 81 85 83:02 | 1 4: 4 Bench; 6 The programmer does not fit its description
set_vcc vcc=3.3 | 83 01 > !3 | 80 81 83:01 85 83:02 | 1 4: 4 Bench; 6 Programmer: wrong parameter
set_vcc vcc=3.3 | 85 > !3 | 80 81 83:01 89:21 85 83:02 |
    1 3: 4 Bench; 0 Set Vcc 3.3 V; 6 The programmer did not confirm the end of the work: Programmer: wrong parameter
set_vcc vcc=3.3 | 85 | 80 81 83:01 89:21 85 |
    1 3: 4 Bench; 0 Set Vcc 3.3 V; 6 The programmer did not confirm the end of the work: No answer from the programmer
set_vcc vcc=99 | FF | 80 81 83:01 85 83:02 |
    1 4: 4 Bench; 0 Set Vcc 99.0 V; 6 The command "Set Vcc" has wrong parameters
erase | FF | 80 81 83:01 83:02 |
    1 4: 4 Bench; 0 Erase; 6 The command "Erase" does not fit the selected device or programmer
process file=false; process file=false must_succeed=1; set_vcc vcc=5 | FF | 80 81 83:01 85 83:02 |
    1 4: 4 Bench; 0 Process false; 3 The program ended with code 1: false; 0 Process false; 6 The program ended with code 1: false
set_device device=W25Q64FV file=spi-flash/W25Q64FV.dev clk=4000000; leave | FF |
    80 81 83:01 84:01000000093d00 01:0000000000000000 83:00 | 1 3: 4 Bench; 0 Set Device W25Q64FV; 0 Leave ------; 5 Done
)";

// Commands of a configuration A, and behind " / " of a second one B; "-" is an unchecked one; they are
// numbered from 0 | lines of A | status of both, 0 never run, 3 done, 4 failed, and the value of the command
// 0. A jump stays in the log of A.
const char flows[] = R"(
-delay value=1 | Done | 3 0 1
-delay value=1; delay value=2 | Delay 2 ms, Done | 3 0 1
delay value=1; stop; delay value=2 | Delay 1 ms, Stop, Done | 3 0 1
counter value=0 limit=3 delta=1; delay value=0; jamp to_cmd=0 | Counter, Delay 0 ms, Jamp, Counter, Delay 0 ms, Jamp, Counter, Done | 3 0 3
counter value=0x7FFFFFFF limit=0 delta=1; stop | Counter, The counter has left its range | 4 0 2147483647
jamp to_cmd=2; delay value=1; delay value=2 | Jamp, Delay 2 ms, Done | 3 0 0
jamp to_cmd=2; delay value=1 / -delay value=2; delay value=3 | Jamp, --> Configuration "B%1", Delay 3 ms, Done | 3 0 0
jamp to_cmd=3; delay value=1 / delay value=2; delay value=3 | Jamp, --> Configuration "B%1", Delay 3 ms, Done | 3 0 0
execute cfg=0; execute cfg=1; delay value=1 / delay value=2 | Execute, Execute, Delay 1 ms, Done | 3 3 0
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

const QString chip = "W25Q64";

// Options of the simulator | a command behind the link, with a set_vcc behind it | last line, or its
// beginning | all requests. The fifth frame is the first one of the command.
const char faults[] = R"(
--chip W25Q64 --fault silent@5 | data_verify addr_device=0 data=FFFFFFFF | 6 No answer from the programmer | 80 81 83 84 03
--chip W25Q64 --fault cut@5 | data_verify addr_device=0 data=FFFFFFFF | 6 No answer from the programmer | 80 81 83 84 03
--chip W25Q64 --fault hangup@5 | data_verify addr_device=0 data=FFFFFFFF | 6 No answer from the programmer | 80 81 83 84 03
--chip W25Q64 --fault error=7@5 | data_verify addr_device=0 data=FFFFFFFF | 6 Programmer: the device does not answer | 80 81 83 84 03 85 83
--chip W25Q64 --fault short@5 | data_verify addr_device=0 data=FFFFFFFF | 6 | 80 81 83 84 03 85 83
--chip W25Q64 --fault flip@5 | data_verify addr_device=0 data=FFFFFFFF | 6 Address: 0x0 | 80 81 83 84 03 85 83
--chip W25Q64 --fault noise@5 | data_verify addr_device=0 data=FFFFFFFF | 5 Done | 80 81 83 84 03 89 85 83
--chip W25Q64 | ident | 5 Done | 80 81 83 84 03 89 85 83
--name empty | ident | 6 Read signature: FFFFFF | 80 81 83 84 03 85 83
)";

// Long commands; the speed of the line slows them down.
const char longCommands[] = R"(
erase
file_read format=HEX file=out.hex addr_file=0 addr_device=0 count=0x800000
char_write addr_device=0 count=0x800000 fill_char=0
)";

} // namespace

/// Runs on a programmer that is played, and on simulated chips.
class TestRun : public QObject
{
    Q_OBJECT

private slots:
    void sends_data() { textRows(frames, {"commands", "odd", "frames", "outcome"}); }
    void sends()
    {
        QFETCH(QString, commands);
        QFETCH(QString, odd);
        AgreeingPeer peer(odd);
        RunBench bench(peer.isSilent());
        bench.addProgrammer("P", peer.path());
        const int cfg = addAll(bench, commands, "P");
        QStringList statuses;
        QObject::connect(&bench.control(), &TRunControl::signalStatusChanged,
                         [&](int, int status) { statuses.append(QString::number(status)); });
        QVERIFY(bench.run({cfg}));
        QCOMPARE(peer.finish(), QString());
        QTEST(peer.requestText(), "frames");
        QStringList lines;
        for (const LogEvent& event : bench.log().mid(1)) {
            const bool namesPort = event.text2.contains(peer.path());
            const QString line = QString("%1 %2 %3").arg(QString::number(event.code), event.text1);
            lines.append(line.arg(namesPort ? "" : event.text2).trimmed());
        }
        QTEST(statuses.join(' ') + ": " + lines.join("; "), "outcome");
        QCOMPARE(bench.log().first().text2, QStringLiteral("P: %1, Simulator").arg(peer.path()));
        QCOMPARE(bench.view(cfg).ended, 1);
        QCOMPARE(bench.view(cfg).percents.value(0, -1), 0);
    }

    void flow_data() { textRows(flows, {"commands", "lines", "status"}); }
    void flow()
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
        const int value = project().cmdAt(0)->param(key::value).toInt();
        QTEST(QString("%1 %2 %3").arg(project().cfgStatus(a)).arg(project().cfgStatus(a + 1)).arg(value),
              "status");
        QCOMPARE(bench.view(a).begun, 1);
        QCOMPARE(bench.view(a).stopped, 0);
        QCOMPARE(project().isChanged(), value == 3);
    }

    void progTask_data() { textRows(tasks, {"task", "link", "odd", "frames", "last"}); }
    void progTask()
    {
        QFETCH(QString, task);
        QFETCH(QString, link);
        QFETCH(QString, odd);
        AgreeingPeer peer(odd);
        RunBench bench(peer.isSilent());
        bench.addProgrammer("bench", peer.path());
        const int cfg = addAll(bench, cmd::ident, link == cmd::set_prog ? "bench" : "", "ATmega328P");
        TProgTask progTask(project().cmdsOfCfg(cfg).last()->id());
        QString last;
        connect(&progTask, &TProgTask::signalEventText, this, [&](TCodeExec code, const QString& text) {
            last = QStringLiteral("%1 %2").arg(QString::number(code), text).trimmed();
        });
        QTimer window;
        int ticks = 0;
        connect(&window, &QTimer::timeout, this, [&] { ++ticks; });
        window.start(1);
        const bool done = task == "reset" ? progTask.reset() : progTask.identify();
        QVERIFY(ticks > 0 || !peer.isSilent());
        QTEST(last, "last");
        QCOMPARE(done, last.startsWith('5'));
        peer.finish();
        QTEST(peer.requestText(), "frames");
    }

    void pauseResume_data() { textRows("pause\njamp to_cmd=1 / pause", {"commands"}); }
    void pauseResume()
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
        QCOMPARE(bench.texts(ceWork).last(), langText(Text::Pausing));
        QCOMPARE(project().cfgStatus(a), int(csDone));
        QCOMPARE(bench.view(a).begun, 1);
    }

    void resumesFromInsideTheSignal()
    {
        RunBench bench;
        const int cfg = addAll(bench, "pause; delay value=1");
        // As a click on the start button that is handled before the worker goes on.
        connect(&bench.control(), &TRunControl::signalStatusChanged, this, [&](int id, int status) {
            if (status == csPause)
                bench.control().resume(id);
        });
        QVERIFY(bench.run({cfg}, 3000));
        QCOMPARE(bench.texts(ceCmdBegin), (QStringList{"Pause", "Delay"}));
    }

    void onlyTheNamedRunGoesOn()
    {
        RunBench bench;
        const int a = addAll(bench, "pause / pause");
        bench.control().start(a + 1);
        for (void (TRunControl::*end)(int) : {&TRunControl::resume, &TRunControl::stop}) {
            bench.control().start(a);
            QTRY_COMPARE(project().cfgStatus(a), int(csPause));
            QTRY_COMPARE(project().cfgStatus(a + 1), int(csPause));
            (bench.control().*end)(a);
            QTRY_COMPARE(project().cfgStatus(a), int(csDone));
            QTest::qWait(250); // a pause looks up every 100 ms
            QVERIFY(bench.control().isRunning(a + 1));
        }
    }

    void stopInPauseAndDelay_data()
    {
        textRows("pause | later\npause | at its line\ndelay value=60000 | later", {"command", "when"});
    }

    void stopInPauseAndDelay()
    {
        QFETCH(QString, command);
        QFETCH(QString, when);
        AgreeingPeer peer;
        RunBench bench;
        bench.addProgrammer("P", peer.path());
        const int cfg = addAll(bench, command + "; set_vcc vcc=3.3", "P");
        bench.onEvent([&](const LogEvent& event) {
            if (event.code != ceCmdBegin || event.text1 == "Set Prog")
                return;
            if (when == "later")
                QTimer::singleShot(50, &bench.control(), &TRunControl::stopAll);
            else
                bench.control().stopAll();
        });
        QVERIFY(bench.run({cfg}, 5000));
        QCOMPARE(peer.finish(), QString());
        QCOMPARE(peer.requestText(), QString("80 81 83:01 85 83:00"));
        QCOMPARE(bench.last().text1, langText(Text::StoppedByUser));
        QCOMPARE(bench.view(cfg).stopped, 1);
        QCOMPARE(project().cfgStatus(cfg), int(csDone));
    }

    void deletedRunningCommandEndsTheRun()
    {
        RunBench bench;
        const int cfg = addAll(bench, "delay value=1; delay value=2; delay value=3");
        bench.onEvent([&](const LogEvent& event) {
            if (event.text2 == "2 ms") {
                project().removeCmd(project().cmdsOfCfg(cfg).at(1)->id());
                project().bindAll();
            }
        });
        QVERIFY(bench.run({cfg}, 5000));
        // It must neither begin again at the first command nor leave the third one out and look well.
        QCOMPARE(bench.texts(ceCmdBegin).size(), 2);
        QCOMPARE(bench.last().code, ceFailed);
        QCOMPARE(bench.last().text1, langText(Text::RunningCmdDeleted));
        QCOMPARE(project().cfgStatus(cfg), int(csFailed));
    }

    void sameConfigurationAgainRightBehindItsResult()
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

    void twelveSideBySide()
    {
        std::vector<std::unique_ptr<SimProcess>> sims;
        QList<QByteArray> contents;
        RunBench bench;
        QList<int> ids;
        for (int i = 0; i < 12; ++i) {
            sims.push_back(std::make_unique<SimProcess>(QStringList{"--chip", chip}));
            QVERIFY2(sims.back()->isReady(), sims.back()->output().constData());
            const QString alias = QStringLiteral("P%1").arg(i);
            contents.append(QByteArray::number(100 + i).repeated(7000 + i));
            bench.dir().write("source" + alias, contents.last());
            bench.addProgrammer(alias, sims.back()->path());
            ids.append(bench.addCfg(alias));
            bench.addLink(ids.last(), alias, chip);
            bench.addCmd(ids.last(), "erase_blocks size=0x10000 begin=0 count=1");
            const QString range = QStringLiteral(" format=BIN addr_file=0 addr_device=%1 count=%2 file=");
            const QString file = range.arg(100 + i).arg(contents.last().size());
            bench.addCmd(ids.last(), "file_write" + file + "source" + alias);
            bench.addCmd(ids.last(), "file_verify" + file + "source" + alias);
            bench.addCmd(ids.last(), "file_read" + file + "result" + alias);
        }
        bench.bind();
        QVERIFY(bench.run(ids, 60000));
        for (int i = 0; i < ids.size(); ++i) {
            QCOMPARE(project().cfgStatus(ids.at(i)), int(csDone));
            QCOMPARE(bench.dir().read(QStringLiteral("resultP%1").arg(i)), contents.at(i));
        }
    }

    void oneTerminalIsOpenOnce()
    {
        const SimProcess sim({"--chip", chip});
        const QStringList names = {sim.path(), QFileInfo(sim.path()).canonicalFilePath()};
        RunBench bench;
        QList<int> ids;
        for (const QString& name : names) {
            bench.addProgrammer(name, name);
            ids.append(bench.addCfg("on " + name));
            bench.addLink(ids.last(), name);
            bench.addCmd(ids.last(), "pause");
        }
        bench.bind();
        bench.control().start(ids.at(0));
        QTRY_COMPARE(project().cfgStatus(ids.at(0)), int(csPause));
        bench.control().start(ids.at(1));
        QTRY_COMPARE(project().cfgStatus(ids.at(1)), int(csFailed));
        QCOMPARE(bench.last().text1,
                 QString("Port %1: In use by the configuration \"on %2\"").arg(names.at(1), names.at(0)));
        // Free again when the run that had it is over.
        bench.control().stopAll();
        QVERIFY(bench.waitIdle());
        bench.control().start(ids.at(1));
        QTRY_COMPARE(project().cfgStatus(ids.at(1)), int(csPause));
    }

    void stopEndsWithinAnExchange_data() { textRows(longCommands, {"command"}); }
    void stopEndsWithinAnExchange()
    {
        QFETCH(QString, command);
        // So slow that a stop which waits for more than one exchange shows: one of them takes 0.3 s.
        const SimProcess sim({"--chip", chip, "--baud", "9600"});
        QVERIFY(sim.isReady());
        RunBench bench;
        bench.addProgrammer("P", sim.path());
        if (command.contains("out.hex"))
            bench.dir().write("out.hex", "old");
        const int cfg = addAll(bench, command + "; ident", "P", chip);
        bench.onEvent([&](const LogEvent& event) {
            if (bench.texts(ceCmdBegin).size() == 3 && event.code == ceCmdBegin)
                QTimer::singleShot(450, &bench.control(), &TRunControl::stopAll);
        });
        QElapsedTimer clock;
        clock.start();
        QVERIFY(bench.run({cfg}, 10000));
        QVERIFY2(clock.elapsed() < 3000, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(bench.last().text1, langText(Text::StoppedByUser));
        QCOMPARE(bench.texts(ceCmdBegin).size(), 3);
        QCOMPARE(project().cfgStatus(cfg), int(csDone));
        const bool isRead = command.contains("out.hex");
        QCOMPARE(bench.dir().read("out.hex"), QByteArray(isRead ? "old" : ""));
        QCOMPARE(bench.texts(ceWork).contains(langText(Text::FileUntouched).arg("out.hex")), isRead);
    }

    void endsAsTheChipAnswers_data() { textRows(faults, {"options", "command", "last", "requests"}); }
    void endsAsTheChipAnswers()
    {
        QFETCH(QString, options);
        QFETCH(QString, command);
        QFETCH(QString, last);
        RunBench bench(options.contains("silent") || options.contains("cut"));
        SimProcess sim(options.split(' ') + QStringList{"--trace", bench.dir().file("trace")});
        QVERIFY(sim.isReady());
        bench.addProgrammer("P", sim.path());
        const int cfg = addAll(bench, command + "; set_vcc vcc=3.3", "P", chip);
        QVERIFY(bench.run({cfg}));
        sim.stop();
        const QString line = QString("%1 %2").arg(bench.last().code).arg(bench.last().text1);
        QVERIFY2(last == "6" ? line.trimmed() == last : line.startsWith(last), qPrintable(line));
        QCOMPARE(project().cfgStatus(cfg), int(last.startsWith('5') ? csDone : csFailed));
        QStringList opcodes;
        for (const QString& frame : QString(bench.dir().read("trace")).split('\n').filter("> C0"))
            opcodes.append(frame.section(' ', 3, 3));
        QTEST(opcodes.join(' '), "requests");
    }

private:
    /// Adds the configurations A and B with such commands; the first has a link if an alias is given.
    static int addAll(RunBench& bench, const QString& commands, const QString& alias = {},
                      const QString& chipName = {})
    {
        const int a = bench.addCfg("A");
        bench.addCfg("B%1");
        if (!alias.isEmpty())
            bench.addLink(a, alias, chipName);
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
};

QTEST_GUILESS_MAIN(TestRun)
#include "test_run.moc"
