#include "support/SimProcess.h"
#include "support/TestDir.h"
#include "support/tables.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

#include <csignal>
#include <memory>

namespace {

constexpr int patience = 20000; // ms

/// One configuration of a project file; each command is an object without its braces.
QByteArray config(const QByteArray& name, const QList<QByteArray>& commands)
{
    QByteArray text = "{\"name\": \"" + name + "\", \"description\": \"\", \"commands\": [";
    for (int i = 0; i < commands.size(); ++i)
        text += (i ? ", {" : "{") + commands.at(i) + "}";
    return text + "]}";
}

QByteArray projectOf(const QList<QByteArray>& configs)
{
    return "{\"version\": 1, \"configurations\": [" + configs.join(", ") + "]}";
}

QByteArray command(const QByteArray& word, const QByteArray& more = {})
{
    return "\"status\": \"1\", \"cmd\": \"" + word + "\"" + more;
}

const QByteArray setProg =
    command("set_prog", R"(, "alt_enabled": "false", "alt_port": "", "prog": "Simulator")");
const QByteArray setDevice =
    command("set_device", R"(, "clk": "4000000", "device": "W25Q64", "file": "spi-flash/W25Q64FV.dev")");
const QByteArray shortDelay = command("delay", R"(, "value": "10")");
const QByteArray longDelay = command("delay", R"(, "value": "60000")");

QList<QJsonObject> objects(const QByteArray& lines)
{
    QList<QJsonObject> list;
    for (const QByteArray& line : lines.split('\n')) {
        if (!line.isEmpty())
            list.append(QJsonDocument::fromJson(line).object());
    }
    return list;
}

/// The events of a kind, as "config:value".
QStringList eventsOf(const QByteArray& lines, const QString& kind, const QString& value)
{
    QStringList texts;
    for (const QJsonObject& event : objects(lines)) {
        if (event.value("event").toString() == kind)
            texts.append(event.value("config").toString() + ':' + event.value(value).toVariant().toString());
    }
    return texts;
}

} // namespace

class TestConsole : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_program = m_dir.addProgram(QStringLiteral("velmarkion")); }
    void init();
    void cleanup();
    void usage();
    void check();
    void checkJson();
    void checkExitCode();
    void list();
    void wrongRun();
    void logOfOneRun();
    void events();
    void failedRun();
    void pauseAndInput();
    void inputWhileAnotherRuns();
    void interrupted_data();
    void interrupted();
    void readerGone();
    void executedConfigCounts();
    void portAndSave();

private:
    int start(const QStringList& arguments, const QByteArray& input = {});
    void begin(const QStringList& options);
    bool hasPrinted(const char* text, int times = 1);
    bool ends();
    QString write(const QByteArray& project)
    {
        return m_dir.write(QStringLiteral("projects/test.prj"), project);
    }

    TestDir m_dir;
    QString m_program;
    std::unique_ptr<QProcess> m_process;
    QByteArray m_out;
    QByteArray m_error;
};

void TestConsole::init()
{
    m_process = std::make_unique<QProcess>();
    m_process->setWorkingDirectory(m_dir.file(QStringLiteral("projects")));
}

// Nothing that the program does on the console writes settings.
void TestConsole::cleanup()
{
    QFile shipped(QStringLiteral(VM_DATA_DIR "/velmarkion.ini"));
    QVERIFY(shipped.open(QIODevice::ReadOnly));
    QCOMPARE(m_dir.read(QStringLiteral("velmarkion.ini")), shipped.readAll());
}

/// Runs the program in another folder than its own and waits for its end; gives its exit code.
int TestConsole::start(const QStringList& arguments, const QByteArray& input)
{
    m_out.clear();
    m_process->start(m_program, arguments);
    m_process->write(input);
    m_process->closeWriteChannel();
    return ends() ? m_process->exitCode() : -1;
}

/// Starts a run of the project that is watched and spoken to.
void TestConsole::begin(const QStringList& options)
{
    m_out.clear();
    m_process->start(m_program, QStringList{"run", "--events"} + options + QStringList{"test.prj"});
}

bool TestConsole::hasPrinted(const char* text, int times)
{
    m_process->waitForReadyRead(100);
    m_out += m_process->readAllStandardOutput();
    return m_out.count(text) >= times;
}

bool TestConsole::ends()
{
    if (m_process->state() != QProcess::NotRunning && !m_process->waitForFinished(patience))
        m_process->kill();
    m_out += m_process->readAllStandardOutput();
    m_error = m_process->readAllStandardError();
    return m_process->exitStatus() == QProcess::NormalExit;
}

void TestConsole::usage()
{
    QCOMPARE(start({"--help"}), 0);
    QVERIFY(m_out.startsWith("Usage: velmarkion"));
    QCOMPARE(start({"--version"}), 0);
    QCOMPARE(m_out, QByteArray("Velmarkion Studio 0.0.2\n"));
    QCOMPARE(start({"go"}), 2);
    QVERIFY(m_out.isEmpty() && m_error.contains("--help"));
}

void TestConsole::check()
{
    write(projectOf({config("First", {setProg, command("ident"), setDevice, command("ident")}),
                     config("Tab\\there", {command("process", R"(, "file": "a\tb\nc")"),
                                           command("delay", R"(, "value": "-1")"), command("nonsense")})}));
    const QByteArray before = m_dir.read("projects/test.prj");
    QCOMPARE(start({"check", "test.prj"}), 1);
    QCOMPARE(m_dir.read("projects/test.prj"), before);
    QCOMPARE(m_error, QByteArray());
    const QList<QByteArray> lines = m_out.split('\n');
    const QByteArrayList expected{
        "0\tFirst\tset_prog\tok\tSet Prog\t",       "1\tFirst\tident\tdevice\tIdentification\t",
        "2\tFirst\tset_device\tok\tSet Device\t",   "3\tFirst\tident\tok\tIdentification\t",
        "4\tTab here\tprocess\tok\tProcess\ta b c", "5\tTab here\tdelay\tparams\tDelay\t",
        "6\tTab here\tnonsense\tdevice\t\t"};
    QCOMPARE(lines.size(), expected.size() + 1);
    for (int i = 0; i < expected.size(); ++i)
        QVERIFY2(lines.at(i).startsWith(expected.at(i)) && lines.at(i).count('\t') == 5,
                 lines.at(i).constData());
}

void TestConsole::checkJson()
{
    write(projectOf({config("A\\tB", {shortDelay, R"("status": "0", "cmd": "delay", "value": "-1")"})}));
    QCOMPARE(start({"check", "--json", "test.prj"}), 0);
    const QList<QJsonObject> rows = objects(m_out);
    QCOMPARE(rows.size(), 2);
    const QJsonObject first{{"pos", 0},         {"config", "A\tB"},  {"cmd", "delay"},
                            {"status", true},   {"valid_dev", true}, {"valid_param", true},
                            {"title", "Delay"}, {"params", "10 ms"}};
    QCOMPARE(rows.at(0), first);
    QCOMPARE(rows.at(1).value("status").toBool(true), false);
    QCOMPARE(rows.at(1).value("valid_param").toBool(true), false);
}

void TestConsole::checkExitCode()
{
    const QMap<QByteArray, int> rows{
        {projectOf({config("no command", {})}), 0},
        {projectOf({config("checked and wrong", {command("ident")})}), 1},
        {projectOf({config("unchecked and wrong", {R"("status": "0", "cmd": "ident")"})}), 0},
        {QByteArray(100000, '['), 2}};
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        write(row.key());
        compareRow(row.key().left(100), start({"check", "test.prj"}), row.value());
        compareRow(row.key().left(100), m_error.isEmpty(), row.value() != 2);
    }
}

void TestConsole::list()
{
    const auto row = [this](const QString& what, int fields, const QByteArray& line) {
        QCOMPARE(start({"list", what}), 0);
        QVERIFY2(m_out.startsWith(line) || m_out.contains("\n" + line), m_out.constData());
        for (const QByteArray& l : m_out.trimmed().split('\n'))
            QCOMPARE(l.split('\t').size(), fields);
    };
    row("programmers", 4, "Simulator\t./sim\tSimulator\t1\n");
    row("checksums", 1, "CRC-32\n");
    row("families", 1, "Serial flash\n");
    row("chips", 3, "W25Q64\tDev25\tspi-flash/W25Q64FV.dev\n");
    const QList<QByteArray> chips = m_out.trimmed().split('\n');
    QVERIFY(std::is_sorted(chips.begin(), chips.end()));
}

void TestConsole::wrongRun()
{
    const auto row = [this](const QStringList& options, const QByteArray& content, const QByteArray& hint) {
        write(content);
        compareRow(hint, start(QStringList{"run"} + options + QStringList{"test.prj"}), 2);
        QVERIFY2(m_error.contains(hint) && m_out.isEmpty(), m_error.constData());
    };
    const QByteArray good = projectOf({config("Only", {shortDelay})});
    row({"-c", "Only", "-c", "Other"}, good, "there are: Only");
    row({"--port", "Nobody=x"}, good, "Nobody");
    row({}, projectOf({}), "has no configuration");
    row({}, "x", "test.prj");
}

void TestConsole::logOfOneRun()
{
    write(projectOf({config("First", {shortDelay}), config("Second", {longDelay})}));
    QCOMPARE(start({"run", "test.prj"}), 0);
    const QRegularExpression log("^[0-9:.]{12} Delay \\(10 ms\\)\n[0-9:.]{12} Done\n$");
    QVERIFY2(log.match(m_out).hasMatch(), m_out.constData());
    QCOMPARE(m_error, QByteArray());
}

void TestConsole::events()
{
    write(projectOf({config("C", {shortDelay})}));
    QCOMPARE(start({"run", "--events", "test.prj"}), 0);
    QVERIFY(m_out.startsWith(
        "{\"event\":\"status\",\"config\":\"C\",\"status\":1}\n"
        "{\"event\":\"line\",\"config\":\"C\",\"code\":0,\"text1\":\"Delay\",\"text2\":\"10 ms\"}\n"));
    QVERIFY(m_out.endsWith(
        "{\"event\":\"status\",\"config\":\"C\",\"status\":3}\n{\"event\":\"end\",\"exit\":0}\n"));
    QCOMPARE(eventsOf(m_out, "line", "code"), (QStringList{"C:0", "C:5"}));
    QVERIFY(eventsOf(m_out, "progress", "percent").contains("C:0"));
}

void TestConsole::failedRun()
{
    write(projectOf({config("C", {setProg, shortDelay})}));
    QCOMPARE(start({"run", "--events", "--port", "Simulator=./absent", "test.prj"}), 1);
    QCOMPARE(eventsOf(m_out, "status", "status"), (QStringList{"C:1", "C:4"}));
    const QStringList lines = eventsOf(m_out, "line", "text1");
    QVERIFY2(lines.last().contains("projects/absent: The port does not exist"), qPrintable(lines.last()));
    QVERIFY(m_out.endsWith("{\"event\":\"end\",\"exit\":1}\n"));
}

void TestConsole::pauseAndInput()
{
    write(projectOf({config("C", {command("pause"), shortDelay, command("pause")})}));
    const auto row = [this](const QByteArray& input, const QStringList& statuses, const QString& last) {
        compareRow(input, start({"run", "--events", "test.prj"}, input), 0);
        compareRow(input, eventsOf(m_out, "status", "status"), statuses);
        compareRow(input, eventsOf(m_out, "line", "text1").last(), last);
    };
    row("\n\n", {"C:1", "C:2", "C:1", "C:2", "C:1", "C:3"}, "C:Done");
    row("", {"C:1", "C:2", "C:3"}, "C:Stopped by the user");
    row("go\n", {"C:1", "C:2", "C:1", "C:2", "C:3"}, "C:Stopped by the user");
    QCOMPARE(start({"run", "--resume", "test.prj"}), 0);
    QVERIFY(m_out.endsWith("Done\n"));
}

// A pause that waits for a line holds up nothing else.
void TestConsole::inputWhileAnotherRuns()
{
    write(projectOf({config("P", {command("pause")}), config("W", {shortDelay, shortDelay})}));
    begin({"-c", "P", "-c", "W"});
    QTRY_VERIFY(hasPrinted("\"config\":\"P\",\"status\":2}"));
    QTRY_VERIFY(hasPrinted("\"config\":\"W\",\"status\":3}"));
    QCOMPARE(m_process->state(), QProcess::Running);
    m_process->write("\n");
    QVERIFY(ends());
    QCOMPARE(m_process->exitCode(), 0);
}

void TestConsole::interrupted_data()
{
    tableColumns<int, QByteArray>("number", "at");
    tableRow("SIGINT in a delay", SIGINT, longDelay);
    tableRow("SIGTERM in a pause", SIGTERM, command("pause"));
    tableRow("SIGINT in an endless loop", SIGINT, command("jamp", R"(, "to_cmd": "0")"));
}

void TestConsole::interrupted()
{
    QFETCH(int, number);
    QFETCH(QByteArray, at);
    write(projectOf({config("C", {shortDelay, at})}));
    begin({});
    QTRY_VERIFY(hasPrinted("\"code\":0", 2));
    // Twice at once, as a terminal and a script that watches it send it.
    ::kill(static_cast<pid_t>(m_process->processId()), number);
    ::kill(static_cast<pid_t>(m_process->processId()), number);
    QVERIFY(ends());
    QCOMPARE(m_process->exitCode(), 130);
    QVERIFY(m_out.endsWith("{\"event\":\"end\",\"exit\":130}\n"));
    QCOMPARE(eventsOf(m_out, "line", "text1").last(), QStringLiteral("C:Stopped by the user"));
    QCOMPARE(eventsOf(m_out, "status", "status").last(), QStringLiteral("C:3"));
}

// "| head" must not end a run in the middle, with the chip under power.
void TestConsole::readerGone()
{
    write(projectOf(
        {config("C", {shortDelay, shortDelay, command("process", R"(, "file": "touch projects/done")")})}));
    m_process->start("sh", {"-c", "\"$0\" run test.prj | true", m_program});
    QVERIFY(ends());
    QTRY_VERIFY(QFile::exists(m_dir.file("projects/done")));
}

// A run that another one has started counts: its lines, its failure, and the program waits for it.
void TestConsole::executedConfigCounts()
{
    write(projectOf({config("Caller", {command("execute", R"(, "cfg": "1")")}),
                     config("Called", {command("delay", R"(, "value": "300")"), command("ident")})}));
    QCOMPARE(start({"run", "--events", "test.prj"}), 1);
    const QStringList statuses = eventsOf(m_out, "status", "status");
    QCOMPARE(statuses.first(), QStringLiteral("Caller:1"));
    QVERIFY(statuses.contains("Caller:3"));
    QCOMPARE(statuses.last(), QStringLiteral("Called:4"));
}

void TestConsole::portAndSave()
{
    SimProcess sim({"--chip", "W25Q64"});
    QVERIFY2(sim.isReady(), sim.output().constData());
    const QByteArray before =
        projectOf({config("C", {setProg, setDevice, command("ident"),
                                command("unique_id_read", R"(, "data": "0000000000000000")")})});
    write(before);
    const QStringList run{"run", "--port", "Simulator=" + sim.path(), "test.prj"};
    QCOMPARE(start(run), 0);
    QCOMPARE(m_dir.read("projects/test.prj"), before);

    QCOMPARE(start(run + QStringList{"--save"}), 0);
    const QByteArray after = m_dir.read("projects/test.prj");
    QVERIFY(after.contains("unique_id_read") && !after.contains("0000000000000000"));
}

QTEST_GUILESS_MAIN(TestConsole)
#include "test_console.moc"
