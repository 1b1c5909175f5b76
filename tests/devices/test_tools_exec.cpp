#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
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

bool runDirectly(TDevToolsExec& exec)
{
    TSerialPort port;
    bool exit = false;
    int cfg = 0;
    int cmd = 0;
    return exec.execute(&port, exit, cfg, cmd);
}

/// A command on a thread of its own, as in a run.
class Worker
{
public:
    explicit Worker(const TData& data)
        : m_exec(new TDevToolsExec(data))
    {
        m_exec->moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::started, m_exec, [this] {
            m_ok = runDirectly(*m_exec);
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
    void counterRounds();
    void counterInTheModel();
    void jampLandsOnItsTarget();
    void delayTakesItsTime();
    void delayAndPauseAreStopped();
    void pauseResumedFromInsideItsSignal();
    void stopAndExecute();
    void processNeverFails();
    void longProcessOutlivesTheCommand();
    void link_data();
    void link();
    void linkToTheRightPort();

private:
    TDevTools m_tools{dev_class::tools, {}};
};

void TestToolsExec::counterRounds()
{
    constexpr qint64 max = 0x7FFFFFFF;
    constexpr int most = 0x7FFFFFFF;
    const struct
    {
        qint64 value;
        qint64 limit;
        int delta;
        Count count;
        qint64 stored;
    } rows[] = {
        {0, 3, 1, Count::GoesOn, 1},
        {2, 3, 1, Count::Arrived, 3},
        {3, 3, 1, Count::Arrived, 3},
        {5, 0, 1, Count::GoesOn, 6}, // no limit
        {max - 1, 0, 1, Count::Arrived, max},
        {max, 0, 1, Count::OutOfRange, max},
        {max - 1, max, most, Count::OutOfRange, max - 1},
        {5, 0, -2, Count::GoesOn, 3},
        {1, 0, -2, Count::OutOfRange, 1}, // below zero is no end of the run
        {2, 0, -2, Count::Arrived, 0},
        {2, 3, -1, Count::Arrived, 2},
        {-7, 3, 1, Count::OutOfRange, -7},
    };
    for (const auto& row : rows) {
        const QByteArray name = QByteArray::number(row.value) + ' ' + QByteArray::number(row.limit) + ' ' +
                                QByteArray::number(row.delta);
        qint64 value = row.value;
        QVERIFY2(TDevToolsExec::countRound(value, row.limit, row.delta) == row.count, name.constData());
        QVERIFY2(value == row.stored, name.constData());
    }
}

void TestToolsExec::counterInTheModel()
{
    BenchProject bench;
    const int id = bench.add(cmd::counter, {{key::value, "0"}, {key::limit, "2"}, {key::delta, "1"}});
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
    project().setCmdParam(id, {{key::id_cmd, id}, {key::value, 0x7FFFFFFF}});
    const BenchRun run = runCommand(m_tools, id, port);
    QVERIFY(!run.ok && run.errorText == QLatin1String("T395"));
}

void TestToolsExec::jampLandsOnItsTarget()
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
    const BenchRun lost = runCommand(m_tools, bench.add(cmd::jamp, {{key::to_cmd, 77}}), port);
    QVERIFY(!lost.ok && lost.errorText.isEmpty());
    TDevToolsExec exec(bench.data(0));
    project().removeCmd(0);
    QVERIFY(!runDirectly(exec));
}

void TestToolsExec::delayTakesItsTime()
{
    const struct
    {
        int ms;
        bool stopped;
        int least;
    } rows[] = {{0, false, 0}, {1, false, 0}, {150, false, 149}, {499, true, 498}, {500, true, 0}};
    for (const auto& row : rows) {
        TDevToolsExec exec({{key::cmd, QString(cmd::delay)}, {key::value, QString::number(row.ms)}});
        QSignalSpy percents(&exec, &IDeviceExec::signalEventProc);
        if (row.stopped)
            exec.slotStop();
        QElapsedTimer time;
        time.start();
        QVERIFY(runDirectly(exec));
        QVERIFY(time.elapsed() >= row.least && time.elapsed() < row.least + 300);
        QVERIFY(percents.size() == 1 && percents.first().first() == 0);
    }
}

void TestToolsExec::delayAndPauseAreStopped()
{
    for (const QString& word : {QString(cmd::delay), QString(cmd::pause)}) {
        Worker worker({{key::cmd, word}, {key::value, 20000}});
        TDevToolsExec* exec = worker.exec();
        worker.start();
        QVERIFY(!worker.ends(300));
        QMetaObject::invokeMethod(exec, &IDeviceExec::slotStop, Qt::QueuedConnection);
        QVERIFY(worker.ends(1000));
    }
}

void TestToolsExec::pauseResumedFromInsideItsSignal()
{
    Worker worker({{key::cmd, QString(cmd::pause)}, {key::id_cfg, 4}});
    TDevToolsExec* exec = worker.exec();
    QStringList events;
    const auto paused = [&](int id) {
        events.append(QString::number(id));
        // As a click on the start button that is handled before the slot returns.
        QMetaObject::invokeMethod(exec, &TDevToolsExec::slotPauseReset, Qt::QueuedConnection);
    };
    const auto said = [&](TCodeExec code, const QString& text) {
        events.append(QString::number(code) + text);
    };
    connect(exec, &TDevToolsExec::signalPauseFromCmd, this, paused, Qt::BlockingQueuedConnection);
    connect(exec, &IDeviceExec::signalEventText, this, said, Qt::BlockingQueuedConnection);
    worker.start();
    QVERIFY(worker.ends(2000));
    QCOMPARE(events, QStringList({"4", "3T396"}));
}

void TestToolsExec::stopAndExecute()
{
    BenchProject bench;
    TSerialPort port;
    QVERIFY(runCommand(m_tools, bench.add(cmd::stop), port).exit);
    const int next = bench.addCfg("Next");
    BenchRun run = runCommand(m_tools, bench.add(cmd::execute, {{key::cfg, "0"}}), port);
    QVERIFY(run.ok && !run.exit && run.cur_cfg == next);
    QCOMPARE(run.events, QStringList{"start:0"});
    run = runCommand(m_tools, bench.add(cmd::execute, {{key::cfg, -1}}), port);
    QVERIFY(!run.ok && run.errorText == QLatin1String("T397"));
    QVERIFY(!runCommand(m_tools, bench.add(cmd::separator), port).ok);
}

void TestToolsExec::processNeverFails()
{
    BenchProject bench;
    TSerialPort port;
    const QString out = bench.dir().file("out");
    QElapsedTimer time;
    time.start();
    for (const QString& line :
         {QStringLiteral("sh -c \"pwd > %1\"").arg(out), QStringLiteral("/no/such/program -x"),
          QStringLiteral("sh -c \"exit 3\""), QStringLiteral("cat"), QStringLiteral("  "),
          QStringLiteral("sh -c \"head -c 3000000 /dev/zero; head -c 3000000 /dev/zero >&2\"")})
        QVERIFY(runCommand(m_tools, bench.add(cmd::process, {{key::file, line}}), port).ok);
    QVERIFY(time.elapsed() < 10000);
    QCOMPARE(bench.dir().read("out").trimmed(), QCoreApplication::applicationDirPath().toUtf8());
}

void TestToolsExec::longProcessOutlivesTheCommand()
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

void TestToolsExec::link_data()
{
    tableColumns<QByteArray, QByteArray, QByteArray, QString>("interface", "idReply", "nameReply",
                                                              "errorText"); // null: is not asked for
    const QByteArray name = peerFrame(0x81, "M\xC3\xA4ker 1");
    const auto row = [](const char* what, const char* interface, const QByteArray& idReply,
                        const QByteArray& nameReply, const char* errorText) {
        tableRow(what, QByteArray(interface), idReply, nameReply, QString::fromLatin1(errorText));
    };
    const QByteArray refusal = peerFrame(0xFF, QByteArray("\1\0", 2));
    row("fits", "4660", peerFrame(0x80, "\x34\x12"), name, "");
    row("differs", "4660", peerFrame(0x80, "\x34\x13"), name, "T399");
    row("one byte", "52", peerFrame(0x80, "\x34"), name, "");
    row("any, by the low 16 bits", "65536", peerFrame(0x80), name, "");
    row("no answer", "4660", {}, {}, "T389");
    row("name refused", "4660", peerFrame(0x80, "\x34\x12"), refusal, "T406");
}

void TestToolsExec::link()
{
    QFETCH(QByteArray, interface);
    QFETCH(QByteArray, idReply);
    QFETCH(QByteArray, nameReply);
    QFETCH(QString, errorText);
    ScriptedPeer peer;
    peer.expect(peerFrame(0x80), idReply);
    if (!nameReply.isNull())
        peer.expect(peerFrame(0x81), nameReply);
    peer.start();
    BenchProject bench;
    bench.setPort(peer.path());
    bench.setProg("[Main]\nInterface=" + interface);
    TSerialPort port;
    const BenchRun run = runCommand(m_tools, bench.addProg(), port);
    QCOMPARE(run.errorText, errorText);
    QCOMPARE(run.ok, errorText.isEmpty());
    QCOMPARE(port.isLinkFailed(), errorText == QLatin1String("T389"));
    const bool isNamed = !nameReply.isNull() && errorText != QLatin1String("T406");
    QCOMPARE(run.events, isNamed ? QStringList{QString::fromUtf8("4:M\xC3\xA4ker 1")} : QStringList());
    QVERIFY(port.isOpen());
    QCOMPARE(peer.finish(), QString());
}

void TestToolsExec::linkToTheRightPort()
{
    ScriptedPeer first;
    ScriptedPeer second;
    for (ScriptedPeer* peer : {&first, &second})
        peer->expect(peerFrame(0x80), peerFrame(0x80, "\x34\x12"))
            .expect(peerFrame(0x81), peerFrame(0x81))
            .start();
    BenchProject bench;
    bench.setPort(first.path());
    TSerialPort port;
    QVERIFY(runCommand(m_tools, bench.addProg(), port).ok);
    TData other{{key::prog, "bench"}, {key::alt_enabled, "true"}, {key::alt_port, second.path()}};
    QVERIFY(runCommand(m_tools, bench.add(cmd::set_prog, other), port).ok);
    QCOMPARE(first.finish() + second.finish(), QString());

    other[key::alt_port] = QString();
    QVERIFY(runCommand(m_tools, bench.add(cmd::set_prog, other), port).errorText.startsWith("Port : "));
    QVERIFY(!port.isOpen());
    bench.setPort("no-%2-port");
    QCOMPARE(runCommand(m_tools, bench.addProg(), port).errorText, QStringLiteral("Port no-%2-port: T393"));
    const int unknown = bench.add(cmd::set_prog, {{key::prog, "unknown"}});
    QCOMPARE(runCommand(m_tools, unknown, port).errorText, QStringLiteral("T398"));
}

QTEST_GUILESS_MAIN(TestToolsExec)
#include "test_tools_exec.moc"
