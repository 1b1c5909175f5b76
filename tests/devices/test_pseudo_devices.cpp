#include "base/keys.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "devices/prog/TDevProg.h"
#include "devices/tools/TDevToolsExec.h"
#include "devices/tools/run_process.h"
#include "link/wire/TSerialPort.h"
#include "settings/TAppData.h"
#include "support/BenchProject.h"
#include "support/ScriptedPeer.h"
#include "support/tables.h"

#include <memory>
#include <thread>

using Count = TDevToolsExec::Count;

namespace {

// Command with a value for "*" | values that are good | values that are not. What rounds to the limit in
// tenths is inside.
const char limits[] = R"(
counter limit=0 delta=0 value=* | 0 2147483647 | -1 2147483648 9223372036854775807
counter value=0 delta=0 limit=* | 0 2147483647 | -1 2147483648
counter value=0 limit=0 delta=* | -2147483648 2147483647 | -2147483649 2147483648
delay value=* | 0 2147483647 | -1 2147483648 x 18446744073709551617
calc_crc count=* | 0 4294967296 | x
execute cfg=* | 0 | x -1 4294967296
jamp to_cmd=* | 0 | x -1 4294967296
process file=x must_succeed=* | 0 1 true false | yes 4294967296
set_vcc vcc=* | 1.8 1.75 5 5.04 | 1.74 5.06 x nan inf 1e300
set_vpp vpp=* | 9 12.5 25.59 | 3.3 25.6
set_vicc vcc=3.3 icc=* | 1 200.04 | 200.06 0
set_vicc icc=10 vcc=* | 5 | 5.1
set_vipp vpp=12 ipp=* | 65.5359 | 0.9 65.536 71
set_vipp ipp=12 vpp=* | 25.5 | 25.6 27
auto_detect name=chip execute=0 stop=1 route=* | A1=0 A1=-1|B=2 | A1=x A1= A1=0|B=4294967296
auto_detect name=chip route= execute=0 stop=* | 0 1 false | skip
reset duration=* | -400 1000 | x 4294967396 0 5 -1001 -2147483648
set_io state=* | -IHL ------- | -o
set_freq duty_cycle=50 freq=* | 1000 8000000 | 999 8000001 4295967296
set_freq freq=1000 duty_cycle=* | 10 90 | 9 91
)";

// Command | its text in the table | valid or not. The command 0 is a set_prog in the configuration 0.
const char shown[] = R"(
counter value=5 limit=7 delta=-2 | Value: 5, Limit: 7, Delta: -2 | valid
process file= | | wrong
calc_crc crc_name=%2 file=%1.bin | %2: %1.bin | valid
jamp to_cmd=0 | "First"."Set Prog" | valid
jamp to_cmd=99 | | wrong
jamp | | wrong
execute | | wrong
execute cfg=0 | First | valid
execute cfg=-1 | | wrong
set_prog prog=bench | bench: /dev/tty%2, Model | valid
set_prog prog=bench alt_enabled=true alt_port=other | bench: other, Model | valid
set_prog prog=unknown | unknown | wrong
auto_detect name=%2 execute=0 stop=1 | %2: Jamp, @RouteStop | wrong
set_io state=HILIL | HIL | valid
set_freq freq=1500000 duty_cycle=50 | 1.5 MHz | valid
set_vcc vcc=3.26 | 3.3 V | valid
set_vicc vcc=3.3 icc=0.0624 ocp=true | 3.3 V, 0.062 mA, OCP | wrong
set_vipp vpp=12.5 ipp=1000 ocp=false | 12.5 V, 1000.000 mA | wrong
)";

// Command | parameters of a new one | the same where no programmer and no command are in force.
const char defaults[] = R"(
set_prog | prog=bench alt_enabled=false alt_port= | prog= alt_enabled=false alt_port=
jamp | to_cmd=0 | to_cmd=-1
execute | cfg=-1 | cfg=-1
process | file= must_succeed=0 | file= must_succeed=0
counter | value=0 limit=0 delta=1 | value=0 limit=0 delta=1
delay | value=100 | value=100
auto_detect | name= route= execute=0 stop=1 | name= route= execute=0 stop=1
reset | duration=-400 |
set_io | state= |
set_freq | freq=1000000 duty_cycle=50 |
set_vcc | vcc=3.3 |
set_vicc | vcc=3.3 icc=50 ocp=true |
set_vipp | vpp=12 ipp=20.5 ocp=true |
)";

// Command | its frame.
const char frames[] = R"(
set_device device=chip file=chip.dev | 84 0300A5
reset duration=-400 | 86 70FE
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
execute=0 stop=1 | 84 07 >, 03 > 4131 | start of 1, closed | | 2:@DeviceFound One (A1); 3:--> @JumpToCfg "Second"
execute=0 stop=0 | 84 07 >, 03 > 4132 | start of 2, closed | | 2:@DeviceFound Two (A2); 3:--> @JumpToCfg "Third"
execute=1 stop=1 | 84 07 >, 03 > 4132 | here, closed | | 2:@DeviceFound Two (A2); 2:@CfgStarted Third; start:2
execute=0 stop=1 | 84 07 >, 03 > 4230 | here, open | @RouteMissing Other (B0) | 2:@DeviceFound Other (B0)
execute=0 stop=0 | 84 07 >, 03 > 4230 | here, open | | 2:@DeviceFound Other (B0); 2:@RouteMissing Other (B0)
execute=0 stop=1 | 84 07 >, 03 > 4134 | here, open | @RouteMissing  (A4) | 2:@DeviceFound  (A4)
execute=0 stop=0 | 84 07 >, 03 > 4135 | here, open | | 2:@DeviceFound  (A5); 2:@RouteMissing  (A5)
execute=0 stop=0 | 84 07 >, 03 > 4136 | here, open | @CfgMissing | 2:@DeviceFound  (A6)
execute=0 stop=1 | 84 07 >, 03 > 3F | here, open | unreadable |
execute=0 stop=0 | 84 07 >, 03 > 3F | here, open | | 2:@DeviceFound  (?); 2:@RouteMissing  (?)
execute=0 stop=1 | 84 07 >, 03 > !7 | here, open | @ProgDeviceNoAnswer |
execute=0 stop=0 | 84 07 >, 03 > !7 | here, open | | 2:@DeviceFound  (); 2:@RouteMissing  ()
execute=0 stop=0 | 84 07 >, 03 | here, open | @NoAnswer |
execute=0 stop=1 | 84 07 > !6 | here, open | @ProgUnsupportedDevice |
execute=0 stop=0 | 84 07 > !6, 03 > 4131 | start of 1, closed | | 2:@DeviceFound One (A1); 3:--> @JumpToCfg "Second"
execute=0 stop=0 | 84 07 | here, open | @NoAnswer |
)";

// Identity in the description | frames | error | events. Only 16 bits count, and 0 is any programmer.
const char links[] = R"(
4660 | 80 > 3412, 81 > 4DC3A46B6572 | | 4:Mäker
4660 | 80 > 3413, 81 > 4D | @ProgMismatch | 4:M
52 | 80 > 34, 81 > 4D | | 4:M
65536 | 80 >, 81 > 4D | | 4:M
4660 | 80 | @NoAnswer |
4660 | 80 > 3412, 81 > !1 | @ProgUnknownCmd |
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

/// The commands that belong to no chip: defaults, checks and texts, frames of the programmer, its link, flow
/// and tools.
class TestPseudoDevices : public QObject
{
    Q_OBJECT

private slots:
    void checks_data() { textRows(limits, {"command", "good", "bad"}); }
    void checks()
    {
        QFETCH(QString, command);
        QFETCH(QString, good);
        QFETCH(QString, bad);
        BenchProject bench;
        bench.dir().write("auto.lst", "chip=chip.dev|chip.sig\n");
        bench.setChip({{"good", true}});
        const auto isGood = [&](const QString& value) {
            return isValid(bench, bench.add(QString(command).replace('*', value)));
        };
        QCOMPARE(isGood(good.section(' ', 0, 0)), m_tools.hasCommand(command.section(' ', 0, 0)));
        bench.addProg();
        for (const QString& value : good.split(' '))
            QVERIFY2(isGood(value), qPrintable(value));
        for (const QString& value : bad.split(' '))
            QVERIFY2(!isGood(value), qPrintable(value));
    }

    void familyDecides()
    {
        for (const bool good : {true, false}) {
            BenchProject bench;
            bench.dir().write("auto.lst", "chip=chip.dev|chip.sig\n");
            bench.setChip({{"good", good}});
            bench.addProg();
            for (const int id : {bench.addChip(), bench.add("auto_detect name=chip")})
                QCOMPARE(isValid(bench, id), good);
            // An unreadable chip is a wrong parameter, not a command that does not fit the programmer.
            const int none = bench.add(cmd::set_device);
            QVERIFY(project().cmdById(none)->validDev() && !project().cmdById(none)->validParam());
        }
    }

    void show_data() { textRows(shown, {"command", "text", "valid"}); }
    void show()
    {
        QFETCH(QString, command);
        BenchProject bench;
        bench.setPort("/dev/tty%2");
        bench.addProg();
        const int id = bench.add(command);
        QTEST(deviceOf(project().cmdById(id)->cmd()).paramsText(bench.data(id), nullptr), "text");
        const QString valid = isValid(bench, id) ? "valid" : "wrong";
        QTEST(valid, "valid");
    }

    void byDefault_data() { textRows(defaults, {"word", "params", "alone"}); }
    void byDefault()
    {
        QFETCH(QString, word);
        QFETCH(QString, params);
        QFETCH(QString, alone);
        for (const bool isAlone : {false, true}) {
            BenchProject bench;
            const int id = isAlone ? -1 : bench.addProg();
            if (isAlone)
                appData().ProgDefault = -1;
            TData data{{key::cmd, word}, {key::id_cfg, 0}, {key::id_cmd, id}};
            deviceOf(word).setDefaultParams(data);
            const TData expected = textParams(isAlone ? alone : params);
            for (auto it = expected.begin(); it != expected.end(); ++it)
                QCOMPARE(it.key() + data.value(it.key()).toString(), it.key() + it.value().toString());
            QCOMPARE(data.size(), expected.size() + 3);
        }
    }

    void sends_data() { textRows(frames, {"command", "frame"}); }
    void sends()
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
            QCOMPARE(run.errorText, QString(reply == " > !9" ? "@ProgVoltage" : ""));
            QVERIFY(run.ok == run.errorText.isEmpty() && run.events.isEmpty());
        }
    }

    void failsAlone()
    {
        BenchProject bench;
        TSerialPort closed;
        for (const QString& word : m_prog.commandKeys())
            QCOMPARE(runCommand(m_prog, bench.add(word), closed).errorText, QString("@PortNotOpen"));
        // No chip, no detection of that name, no command of the programmer, targets that are gone.
        for (const char* text : {"set_device", "auto_detect name=x stop=0", "set_prog"}) {
            ScriptedPeer peer;
            const BenchRun run = runCommands(m_prog, {bench.add(text)}, peer);
            QVERIFY(!run.ok && run.errorText.isEmpty() && run.events.isEmpty());
        }
        for (const char* text : {"jamp to_cmd=77", "separator", "execute cfg=-1"}) {
            const BenchRun run = runCommand(m_tools, bench.add(text), closed);
            QVERIFY(!run.ok && run.events.isEmpty());
            QCOMPARE(run.errorText, QString(qstrcmp(text, "execute cfg=-1") == 0 ? "@CfgMissing" : ""));
        }
    }

    void detects_data() { textRows(detections, {"mode", "frames", "place", "error", "events"}); }
    void detects()
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

    void link_data() { textRows(links, {"interface", "frames", "error", "events"}); }
    void link()
    {
        QFETCH(QString, interface);
        QFETCH(QString, frames);
        QFETCH(QString, error);
        ScriptedPeer peer;
        peer.expectText(frames).start();
        BenchProject bench;
        bench.setPort(peer.path());
        bench.setProg((peer.hasSilence() ? "[Port]\nTimeOut=300\n[Main]\nInterface=" : "[Main]\nInterface=") +
                      interface.toLatin1());
        TSerialPort port;
        const BenchRun run = runCommand(m_tools, bench.addProg(), port);
        QCOMPARE(peer.finish(), QString());
        QCOMPARE(run.errorText, error);
        QTEST(run.events.join("; "), "events");
        QVERIFY(run.ok == error.isEmpty() && run.isOpen);
        QCOMPARE(port.isLinkFailed(), error == "@NoAnswer");
    }

    void linkToTheRightPort()
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
        QCOMPARE(runCommand(m_tools, bench.addProg(), port).errorText,
                 QString("Port no-%2-port: @PortMissing"));
        QCOMPARE(runCommand(m_tools, bench.add("set_prog prog=unknown"), port).errorText,
                 QString("@ProgDescriptionMissing"));
    }

    void counts_data() { textRows(rounds, {"value", "limit", "delta", "outcome", "stored"}); }
    void counts()
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

    // What somebody else stores between the reading and the storing of a round counts.
    void countsInOneStep()
    {
        BenchProject bench;
        const int id = bench.add("counter value=0 limit=0 delta=1");
        const auto count = [id] {
            bool exit = false;
            int place = id;
            for (int i = 0; i < 1000; ++i)
                (void)TDevToolsExec({{key::cmd, cmd::counter}, {key::id_cmd, id}})
                    .execute(nullptr, exit, place, place);
        };
        std::thread other(count);
        count();
        other.join();
        QCOMPARE(bench.data(id).value(key::value).toInt(), 2000);
    }

    void delayTakesItsTime()
    {
        using Row = std::tuple<int, bool, int>;
        for (const auto& [ms, stopped, least] :
             {Row(0, false, 0), Row(150, false, 149), Row(499, true, 498), Row(500, true, 0)}) {
            TDevToolsExec exec({{key::cmd, QString(cmd::delay)}, {key::value, QString::number(ms)}});
            if (stopped)
                exec.slotStop();
            QSignalSpy percents(&exec, &IDeviceExec::signalEventProc);
            TSerialPort port;
            bool exit = false;
            int none = 0;
            QElapsedTimer time;
            time.start();
            QVERIFY(exec.execute(&port, exit, none, none));
            QVERIFY(time.elapsed() >= least && time.elapsed() < least + 300);
            QVERIFY(percents.size() == 1 && percents.first().first() == 0);
        }
    }

    void process_data()
    {
        // The command line | how it is told; nothing for a good end.
        textRows("sh -c \"pwd > out\" |\n/no/such/program -x | @ProcessNotStarted\n~~ | @ProcessNotStarted\n"
                 "sh -c \"exit 3\" | @ProcessCode\nsh -c \"kill -9 $$\" | @ProcessCrashed\ncat |\n"
                 "sh -c \"head -c 3000000 /dev/zero; head -c 3000000 /dev/zero >&2\" |",
                 {"line", "told"});
    }
    void process()
    {
        QFETCH(QString, line);
        QFETCH(QString, told);
        BenchProject bench;
        TSerialPort port;
        QElapsedTimer time;
        time.start();
        line.replace("out", bench.dir().file("out")).replace('~', ' ');
        for (const bool must : {false, true}) {
            const int id = bench.add(cmd::process, {{key::file, line}, {key::must_succeed, int(must)}});
            const BenchRun run = runCommand(m_tools, id, port);
            QCOMPARE(run.ok, !must || told.isEmpty());
            QCOMPARE(run.events.size(), must || told.isEmpty() ? 0 : 1);
            const QString text = run.errorText + run.events.join('|');
            const QString wanted = (must ? "" : "3:") + told + ' ' + line;
            QVERIFY2(told.isEmpty() ? text.isEmpty() : text.startsWith(wanted), qPrintable(text));
        }
        QVERIFY(time.elapsed() < 10000);
        if (line.contains("pwd"))
            QCOMPARE(bench.dir().read("out").trimmed(), QCoreApplication::applicationDirPath().toUtf8());
    }

    // A stop ends a program that has to succeed, also one that does not listen, and waits for another one.
    void stopOfAProcess_data()
    {
        textRows(
            "sleep 60 | 1 | 0 | 1500\nsh -c \"trap '' TERM; while :; do sleep 0.1; done\" | 1 | 1900 | 4000\n"
            "sleep 0.5 | 0 | 450 | 2000",
            {"line", "must", "least", "most"});
    }
    void stopOfAProcess()
    {
        QFETCH(QString, line);
        QFETCH(QString, must);
        QFETCH(QString, least);
        QFETCH(QString, most);
        TDevToolsExec exec({{key::cmd, QString(cmd::process)}, {key::file, line}, {key::must_succeed, must}});
        exec.slotStop();
        QSignalSpy lines(&exec, &IDeviceExec::signalEventText);
        TSerialPort port;
        bool exit = false;
        int none = 0;
        QElapsedTimer time;
        time.start();
        QVERIFY(exec.execute(&port, exit, none, none));
        QVERIFY2(time.elapsed() >= least.toInt() && time.elapsed() < most.toInt(),
                 qPrintable(QString::number(time.elapsed())));
        QCOMPARE(lines.size(), must.toInt());
    }

    void longProcessOutlivesTheCommand()
    {
        const TestDir dir(TestDir::Empty);
        const QString line = QStringLiteral("sh -c \"sleep 1.5; echo done > %1\"").arg(dir.file("out"));
        const std::unique_ptr<QThread> thread(QThread::create([&line] {
            QObject command;
            QVERIFY(runCommandLine(line, 50, {}, &command).kind == TProcessEnd::Kind::GivenUp);
        }));
        thread->start();
        QVERIFY(thread->wait(1200) && dir.read("out").isEmpty());
        QTRY_COMPARE(dir.read("out"), QByteArray("done\n"));
    }

private:
    const IDevice& deviceOf(const QString& word) const
    {
        return m_tools.hasCommand(word) ? static_cast<const IDevice&>(m_tools) : m_prog;
    }
    bool isValid(const BenchProject& bench, int id) const
    {
        return deviceOf(project().cmdById(id)->cmd()).checkParams(bench.data(id));
    }

    TDevTools m_tools{dev_class::tools, {}};
    TDevProg m_prog{dev_class::prog, {}};
};

QTEST_GUILESS_MAIN(TestPseudoDevices)
#include "test_pseudo_devices.moc"
