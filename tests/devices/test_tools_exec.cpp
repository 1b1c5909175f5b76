#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDevTools.h"
#include "devices/TDevToolsExec.h"
#include "devices/run_process.h"
#include "link/TSerialPort.h"
#include "support/BenchProject.h"
#include "support/ScriptedPeer.h"

#include <QThread>
#include <QtTest>

#include <memory>

using Count = TDevToolsExec::Count;
Q_DECLARE_METATYPE(Count)

namespace {

const QByteArray idFrame = peerFrame(0x80);
const QByteArray nameFrame = peerFrame(0x81);

/// A command on a thread of its own, as in a run.
class Worker
{
public:
    explicit Worker(const TData& data)
        : m_exec(new TDevToolsExec(data))
    {
        m_exec->moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::started, m_exec, [this] {
            TSerialPort port;
            bool exit = false;
            int cfg = 0;
            int cmd = 0;
            m_ok = m_exec->execute(&port, exit, cfg, cmd);
            delete m_exec;
            m_thread.quit();
        });
    }
    ~Worker() { m_thread.wait(); }

    TDevToolsExec* exec() const { return m_exec; }
    void start() { m_thread.start(); }
    /// True when the command ended well within ms.
    bool ends(int ms)
    {
        return QTest::qWaitFor([this] { return m_thread.isFinished(); }, ms) && m_ok;
    }

private:
    TDevToolsExec* m_exec;
    QThread m_thread;
    std::atomic<bool> m_ok{false};
};

} // namespace

/// The flow and tool commands at work.
class TestToolsExec : public QObject
{
    Q_OBJECT

private slots:
    void counterRounds_data();
    void counterRounds();
    void counterInTheModel();
    void jampLandsOnItsTarget_data();
    void jampLandsOnItsTarget();
    void jampWithoutATarget();
    void delayTakesItsTime_data();
    void delayTakesItsTime();
    void delayReportsItsPercent();
    void delayIsStoppedFromOutside();
    void pauseResumedFromInsideItsSignal();
    void pauseIsStopped();
    void stopAndExecute();
    void processRunsInTheProgramFolder();
    void processNeverFails_data();
    void processNeverFails();
    void longProcessOutlivesTheCommand();
    void link_data();
    void link();
    void linkToAnotherPort();
    void linkWithoutAPort();
    void linkWithoutADescription();

private:
    TDevTools m_tools{dev_class::tools, {}};
};

void TestToolsExec::counterRounds_data()
{
    QTest::addColumn<qint64>("value");
    QTest::addColumn<qint64>("limit");
    QTest::addColumn<int>("delta");
    QTest::addColumn<Count>("count");
    QTest::addColumn<qint64>("stored");
    constexpr qint64 max = 0x7FFFFFFF;
    const auto row = [](const char* name, qint64 value, qint64 limit, int delta, Count count, qint64 stored) {
        QTest::newRow(name) << value << limit << delta << count << stored;
    };
    row("up", 0, 3, 1, Count::GoesOn, 1);
    row("up, arrives", 2, 3, 1, Count::Arrived, 3);
    row("up, steps over", 2, 3, 5, Count::Arrived, 7);
    row("up, is there", 3, 3, 1, Count::Arrived, 3);
    row("up, is past it", 9, 3, 1, Count::Arrived, 9);
    row("up, no limit", 5, 0, 1, Count::GoesOn, 6);
    row("up, no limit, arrives", max - 1, 0, 1, Count::Arrived, max);
    row("up, no limit, used up", max, 0, 1, Count::OutOfRange, max);
    row("up, over the end", max - 1, 0, 2, Count::OutOfRange, max - 1);
    row("up, far over the end", max - 1, max, 0x7FFFFFFF, Count::OutOfRange, max - 1);
    row("no step", 1, 3, 0, Count::GoesOn, 1);
    row("down", 5, 0, -2, Count::GoesOn, 3);
    row("down, below zero", 1, 0, -2, Count::OutOfRange, 1);
    row("down, to zero", 2, 0, -2, Count::Arrived, 0);
    row("down, used up", 0, 0, -1, Count::OutOfRange, 0);
    row("down, is there", 3, 3, -1, Count::Arrived, 3);
    row("down, is past it", 2, 3, -1, Count::Arrived, 2);
    row("down, smallest step", 5, 0, std::numeric_limits<int>::min(), Count::OutOfRange, 5);
    row("hand-made negative", -7, 3, 1, Count::OutOfRange, -7);
}

void TestToolsExec::counterRounds()
{
    QFETCH(qint64, value);
    QFETCH(qint64, limit);
    QFETCH(int, delta);
    QFETCH(Count, count);
    QVERIFY(TDevToolsExec::countRound(value, limit, delta) == count);
    QTEST(value, "stored");
}

void TestToolsExec::counterInTheModel()
{
    BenchProject bench;
    const int id = bench.add(cmd::counter, {{key::value, "0"}, {key::limit, "2"}, {key::delta, "1"}});
    TSerialPort port;
    const std::unique_ptr<IDeviceExec> first(m_tools.createExec(bench.data(id)));
    project().clearChanged();
    for (const int round : {1, 2, 2}) {
        // One and the same copy of the command: only the model tells what the last round left.
        bool exit = false;
        int cfg = 0;
        int cmd = id;
        QVERIFY(first->execute(&port, exit, cfg, cmd));
        QCOMPARE(bench.data(id).value(key::value).toInt(), round);
        QCOMPARE(exit, round == 2);
    }
    QVERIFY(project().isChanged());
    project().setCmdParam(id, {{key::id_cmd, id}, {key::value, 0x7FFFFFFF}});
    const BenchRun run = runCommand(m_tools, id, port);
    QVERIFY(!run.ok);
    QCOMPARE(run.errorText, QStringLiteral("T395"));
}

void TestToolsExec::jampLandsOnItsTarget_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("cur_cfg");
    QTest::addColumn<int>("cur_cmd");
    // Commands 0 to 2 are in configuration 0, 3 to 5 in configuration 1.
    QTest::newRow("first of all") << 1 << 0 << 0 << -1;
    QTest::newRow("itself") << 2 << 2 << 0 << 1;
    QTest::newRow("first of the next configuration") << 0 << 3 << 1 << -1;
    QTest::newRow("inside the next configuration") << 0 << 5 << 1 << 4;
    QTest::newRow("back") << 4 << 1 << 0 << 0;
}

void TestToolsExec::jampLandsOnItsTarget()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(int, cur_cfg);
    BenchProject bench;
    for (int i = 0; i < 6; ++i) {
        if (i == 3)
            bench.addCfg("Sec \"%1\"");
        QCOMPARE(bench.add(cmd::jamp), i);
    }
    project().setCmdParam(from, {{key::id_cmd, from}, {key::to_cmd, QString::number(to)}});
    TSerialPort port;
    const BenchRun run = runCommand(m_tools, from, port);
    QVERIFY(run.ok);
    QCOMPARE(run.cur_cfg, cur_cfg);
    QTEST(run.cur_cmd, "cur_cmd");
    const TDataCmd* next = project().nextCmd(run.cur_cfg, run.cur_cmd);
    QVERIFY(next);
    QCOMPARE(next->id(), to);
    QStringList line;
    if (cur_cfg != project().cfgOfCmd(from))
        line.append(QStringLiteral("3:\n--> T394 \"%1\"").arg(project().cfgName(cur_cfg)));
    QCOMPARE(run.events, line);
}

void TestToolsExec::jampWithoutATarget()
{
    BenchProject bench;
    const int id = bench.add(cmd::jamp, {{key::to_cmd, 77}});
    TSerialPort port;
    const BenchRun run = runCommand(m_tools, id, port);
    QVERIFY(!run.ok);
    QCOMPARE(run.errorText, QString());
    TDevToolsExec exec(bench.data(id));
    bool exit = false;
    int cfg = 0;
    int gone = 55;
    QVERIFY(!exec.execute(&port, exit, cfg, gone));
}

void TestToolsExec::delayTakesItsTime_data()
{
    QTest::addColumn<int>("ms");
    QTest::addColumn<bool>("stopped");
    QTest::addColumn<bool>("waits");
    QTest::newRow("0") << 0 << false << true;
    QTest::newRow("1") << 1 << false << true;
    QTest::newRow("150") << 150 << false << true;
    QTest::newRow("499 cannot be stopped") << 499 << true << true;
    QTest::newRow("500 can be stopped") << 500 << true << false;
}

void TestToolsExec::delayTakesItsTime()
{
    QFETCH(int, ms);
    QFETCH(bool, stopped);
    QFETCH(bool, waits);
    TDevToolsExec exec({{key::cmd, QString(cmd::delay)}, {key::value, QString::number(ms)}});
    QSignalSpy percents(&exec, &IDeviceExec::signalEventProc);
    if (stopped)
        exec.slotStop();
    TSerialPort port;
    bool exit = false;
    int cfg = 0;
    int cmd = 0;
    QElapsedTimer time;
    time.start();
    QVERIFY(exec.execute(&port, exit, cfg, cmd));
    QVERIFY(time.elapsed() >= (waits ? ms - 1 : 0));
    QVERIFY(time.elapsed() < (waits ? ms : 0) + 300);
    QCOMPARE(percents.size(), 1);
    QCOMPARE(percents.last().first().toInt(), 0);
}

void TestToolsExec::delayReportsItsPercent()
{
    TDevToolsExec exec({{key::cmd, QString(cmd::delay)}, {key::value, 600}});
    QSignalSpy percents(&exec, &IDeviceExec::signalEventProc);
    TSerialPort port;
    bool exit = false;
    int cfg = 0;
    int cmd = 0;
    QVERIFY(exec.execute(&port, exit, cfg, cmd));
    QVERIFY(percents.size() > 10);
    QCOMPARE(percents.takeLast().first().toInt(), 0);
    QCOMPARE(percents.last().first().toInt(), 100);
    for (int i = 1; i < percents.size(); ++i)
        QVERIFY(percents.at(i).first().toInt() > percents.at(i - 1).first().toInt());
}

void TestToolsExec::delayIsStoppedFromOutside()
{
    Worker worker({{key::cmd, QString(cmd::delay)}, {key::value, 20000}});
    TDevToolsExec* exec = worker.exec();
    QTimer::singleShot(100, exec, [exec] { exec->slotStop(); });
    worker.start();
    QVERIFY(worker.ends(2000));
}

void TestToolsExec::pauseResumedFromInsideItsSignal()
{
    Worker worker({{key::cmd, QString(cmd::pause)}, {key::id_cfg, 4}});
    TDevToolsExec* exec = worker.exec();
    QStringList events;
    connect(
        exec, &TDevToolsExec::signalPauseFromCmd, this,
        [&](int id) {
            events.append(QString::number(id));
            // As a click on the start button that is handled before the slot returns.
            QMetaObject::invokeMethod(exec, "slotPauseReset", Qt::QueuedConnection);
        },
        Qt::BlockingQueuedConnection);
    connect(
        exec, &IDeviceExec::signalEventText, this,
        [&](TCodeExec code, const QString& text) { events.append(QString::number(code) + text); },
        Qt::BlockingQueuedConnection);
    worker.start();
    QVERIFY(worker.ends(2000));
    QCOMPARE(events, QStringList({"4", "3T396"}));
}

void TestToolsExec::pauseIsStopped()
{
    Worker worker({{key::cmd, QString(cmd::pause)}});
    TDevToolsExec* exec = worker.exec();
    worker.start();
    QVERIFY(!worker.ends(400));
    QMetaObject::invokeMethod(exec, "slotStop", Qt::QueuedConnection);
    QVERIFY(worker.ends(1000));
}

void TestToolsExec::stopAndExecute()
{
    BenchProject bench;
    TSerialPort port;
    const int stop = bench.add(cmd::stop);
    BenchRun run = runCommand(m_tools, stop, port);
    QVERIFY(run.ok && run.exit);

    TDevToolsExec exec({{key::cmd, QString(cmd::execute)}, {key::cfg, "0"}});
    QSignalSpy started(&exec, &TDevToolsExec::signalExecuteFromCmd);
    bool exit = false;
    int cfg = 5;
    int cmd = 6;
    QVERIFY(exec.execute(&port, exit, cfg, cmd));
    QCOMPARE(started.size(), 1);
    QCOMPARE(started.first().first().toInt(), 0);
    QVERIFY(!exit && cfg == 5 && cmd == 6);

    run = runCommand(m_tools, bench.add(cmd::execute, {{key::cfg, -1}}), port);
    QVERIFY(!run.ok);
    QCOMPARE(run.errorText, QStringLiteral("T397"));
    run = runCommand(m_tools, bench.add(cmd::separator), port);
    QVERIFY(!run.ok);
}

void TestToolsExec::processRunsInTheProgramFolder()
{
    const TestDir dir(TestDir::Empty);
    runCommandLine(QStringLiteral("sh -c \"pwd > %1\"").arg(dir.file("out")), 10000, this);
    QCOMPARE(QString::fromUtf8(dir.read("out")).trimmed(), QCoreApplication::applicationDirPath());
}

void TestToolsExec::processNeverFails_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("no such program") << "/no/such/program -x";
    QTest::newRow("exit code") << "sh -c \"exit 3\"";
    QTest::newRow("talkative") << "sh -c \"head -c 3000000 /dev/zero; head -c 3000000 /dev/zero >&2\"";
    QTest::newRow("reads its input") << "cat";
    QTest::newRow("blank") << "  ";
}

void TestToolsExec::processNeverFails()
{
    QFETCH(QString, line);
    BenchProject bench;
    TSerialPort port;
    QElapsedTimer time;
    time.start();
    const int id = bench.add(cmd::process, {{key::file, line}});
    QVERIFY(runCommand(m_tools, id, port).ok);
    QVERIFY(time.elapsed() < 5000);
}

void TestToolsExec::longProcessOutlivesTheCommand()
{
    const TestDir dir(TestDir::Empty);
    const QString line = QStringLiteral("sh -c \"sleep 0.5; echo done > %1\"").arg(dir.file("out"));
    QThread thread;
    QObject owner;
    owner.moveToThread(&thread);
    connect(&thread, &QThread::started, &owner, [&] {
        QObject command;
        runCommandLine(line, 50, &command);
        thread.quit();
    });
    thread.start();
    QVERIFY(thread.wait(400));
    QVERIFY(dir.read("out").isEmpty());
    QTRY_COMPARE(dir.read("out"), QByteArray("done\n"));
}

void TestToolsExec::link_data()
{
    QTest::addColumn<QByteArray>("model");
    QTest::addColumn<QByteArray>("idReply");
    QTest::addColumn<QByteArray>("nameReply"); // null: is not asked for
    QTest::addColumn<QString>("errorText");
    const QByteArray name = peerFrame(0x81, "M\xC3\xA4ker 1");
    QTest::newRow("fits") << QByteArray() << peerFrame(0x80, "\x34\x12") << name << QString();
    QTest::newRow("differs") << QByteArray() << peerFrame(0x80, "\x34\x13") << name << "T399";
    QTest::newRow("one byte") << QByteArray("[Main]\nInterface=52") << peerFrame(0x80, "\x34") << name
                              << QString();
    QTest::newRow("no byte") << QByteArray() << peerFrame(0x80) << name << "T399";
    QTest::newRow("any") << QByteArray("[Main]\nInterface=0") << peerFrame(0x80, "\x99\x99") << name
                         << QString();
    QTest::newRow("any, by the low 16 bits")
        << QByteArray("[Main]\nInterface=65536") << peerFrame(0x80) << name << QString();
    QTest::newRow("identity refused")
        << QByteArray() << peerFrame(0xFF, QByteArray("\1\0", 2)) << QByteArray() << "T406";
    QTest::newRow("no answer") << QByteArray() << QByteArray() << QByteArray() << "T389";
    QTest::newRow("name refused") << QByteArray() << peerFrame(0x80, "\x34\x12")
                                  << peerFrame(0xFF, QByteArray("\2\0", 2)) << "T407";
}

void TestToolsExec::link()
{
    QFETCH(QByteArray, model);
    QFETCH(QByteArray, idReply);
    QFETCH(QByteArray, nameReply);
    QFETCH(QString, errorText);
    ScriptedPeer peer;
    peer.expect(idFrame, idReply);
    if (!nameReply.isNull())
        peer.expect(nameFrame, nameReply);
    peer.start();
    BenchProject bench;
    bench.setPort(peer.path());
    bench.setProg(model);
    TSerialPort port;
    const BenchRun run = runCommand(m_tools, bench.add(cmd::set_prog, {{key::prog, "bench"}}), port);
    QCOMPARE(run.ok, errorText.isEmpty());
    QCOMPARE(run.errorText, errorText);
    QCOMPARE(port.isLinkFailed(), errorText == QLatin1String("T389"));
    const bool isNamed = !nameReply.isNull() && nameReply.at(1) != '\xFF';
    QCOMPARE(run.events, isNamed ? QStringList{QStringLiteral("4:") + QString::fromUtf8("M\xC3\xA4ker 1")}
                                 : QStringList());
    QVERIFY(port.isOpen());
    QCOMPARE(peer.finish(), QString());
}

void TestToolsExec::linkToAnotherPort()
{
    ScriptedPeer first;
    ScriptedPeer second;
    for (ScriptedPeer* peer : {&first, &second})
        peer->expect(idFrame, peerFrame(0x80, "\x34\x12")).expect(nameFrame, peerFrame(0x81, "n")).start();
    BenchProject bench;
    bench.setPort(first.path());
    TSerialPort port;
    QVERIFY(runCommand(m_tools, bench.add(cmd::set_prog, {{key::prog, "bench"}}), port).ok);
    const int other = bench.add(
        cmd::set_prog, {{key::prog, "bench"}, {key::alt_enabled, "true"}, {key::alt_port, second.path()}});
    QVERIFY(runCommand(m_tools, other, port).ok);
    QCOMPARE(first.finish() + second.finish(), QString());
}

void TestToolsExec::linkWithoutAPort()
{
    BenchProject bench;
    bench.setPort("no-%2-port");
    TSerialPort port;
    BenchRun run = runCommand(m_tools, bench.add(cmd::set_prog, {{key::prog, "bench"}}), port);
    QVERIFY(!run.ok);
    QCOMPARE(run.errorText, QStringLiteral("Port no-%2-port: T393"));
    QVERIFY(!port.isOpen());
    run =
        runCommand(m_tools, bench.add(cmd::set_prog, {{key::prog, "bench"}, {key::alt_enabled, true}}), port);
    QVERIFY(!run.ok);
    QVERIFY(run.errorText.startsWith(QLatin1String("Port : ")));
}

void TestToolsExec::linkWithoutADescription()
{
    BenchProject bench;
    TSerialPort port;
    const int id = bench.add(cmd::set_prog, {{key::prog, "unknown"}});
    const BenchRun run = runCommand(m_tools, id, port);
    QVERIFY(!run.ok);
    QCOMPARE(run.errorText, QStringLiteral("T398"));
    TData gone = bench.data(id);
    gone[key::id_cmd] = 99;
    TDevToolsExec exec(gone);
    bool exit = false;
    int cfg = 0;
    int cmd = 0;
    QVERIFY(!exec.execute(&port, exit, cfg, cmd));
    QCOMPARE(exec.errorText(), QString());
}

QTEST_GUILESS_MAIN(TestToolsExec)
#include "test_tools_exec.moc"
