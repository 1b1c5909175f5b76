#include "support/SimProcess.h"
#include "support/TestDir.h"
#include "support/tables.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

#include <csignal>

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
    void initTestCase();
    void cleanup();
    void usage_data();
    void usage();
    void checkText();
    void checkJson();
    void checkExitCode_data();
    void checkExitCode();
    void list_data();
    void list();
    void wrongRun_data();
    void wrongRun();
    void logOfOneRun();
    void events();
    void failedRun();
    void pauseAndInput_data();
    void pauseAndInput();
    void inputWhileAnotherRuns();
    void interrupted_data();
    void interrupted();
    void readerGone();
    void executedConfigCounts();
    void portAndSave();

private:
    int start(const QStringList& arguments, const QByteArray& input = {});
    QString write(const QByteArray& project)
    {
        return m_dir.write(QStringLiteral("projects/test.prj"), project);
    }

    TestDir m_dir;
    QString m_program;
    QByteArray m_out;
    QByteArray m_error;
};

void TestConsole::initTestCase()
{
    m_program = m_dir.addProgram(QStringLiteral("velmarkion"));
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
    QProcess process;
    process.setWorkingDirectory(m_dir.file(QStringLiteral("projects")));
    process.start(m_program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(patience))
        process.kill();
    m_out = process.readAllStandardOutput();
    m_error = process.readAllStandardError();
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

void TestConsole::usage_data()
{
    tableColumns<QStringList, int, QByteArray>("arguments", "exitCode", "out");
    tableRow("help", QStringList{"--help"}, 0, QByteArray("Usage: velmarkion"));
    tableRow("version", QStringList{"--version"}, 0, QByteArray("Velmarkion Studio 0.0.2\n"));
    tableRow("wrong word", QStringList{"go"}, 2, QByteArray());
}

void TestConsole::usage()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, out);
    QCOMPARE(start(arguments), exitCode);
    QVERIFY(out.isEmpty() ? m_out.isEmpty() : m_out.startsWith(out));
    QCOMPARE(m_error.contains("--help"), exitCode == 2);
}

void TestConsole::checkText()
{
    write(projectOf({config("First", {setProg, command("ident"), setDevice, command("ident")}),
                     config("Tab\\there", {command("process", R"(, "file": "a\tb\nc")"),
                                           command("delay", R"(, "value": "-1")"), command("nonsense")})}));
    const QByteArray before = m_dir.read("projects/test.prj");
    QCOMPARE(start({"check", "test.prj"}), 1);
    QCOMPARE(m_dir.read("projects/test.prj"), before);
    QCOMPARE(m_error, QByteArray());
    const QList<QByteArray> lines = m_out.split('\n');
    QCOMPARE(lines.size(), 7 + 1);
    QList<QByteArrayList> rows;
    for (int i = 0; i < 7; ++i) {
        rows.append(lines.at(i).split('\t'));
        QCOMPARE(rows.last().size(), 6);
        QCOMPARE(rows.last().at(0), QByteArray::number(i));
    }
    QCOMPARE(rows.at(0).mid(1, 4), (QByteArrayList{"First", "set_prog", "ok", "Set Prog"}));
    QCOMPARE(rows.at(1).mid(1, 4), (QByteArrayList{"First", "ident", "device", "Identification"}));
    QCOMPARE(rows.at(3).mid(1, 4), (QByteArrayList{"First", "ident", "ok", "Identification"}));
    QCOMPARE(rows.at(4).at(1), QByteArray("Tab here"));
    QVERIFY(rows.at(4).at(5).contains("a b c"));
    QCOMPARE(rows.at(5).mid(2, 2), (QByteArrayList{"delay", "params"}));
    QCOMPARE(rows.at(6).mid(2, 2), (QByteArrayList{"nonsense", "device"}));
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

void TestConsole::checkExitCode_data()
{
    tableColumns<QByteArray, int>("content", "exitCode");
    tableRow("no command", projectOf({config("C", {})}), 0);
    tableRow("checked and wrong", projectOf({config("C", {command("ident")})}), 1);
    tableRow("unchecked and wrong", projectOf({config("C", {R"("status": "0", "cmd": "ident")"})}), 0);
    tableRow("deep", QByteArray(100000, '['), 2);
}

void TestConsole::checkExitCode()
{
    QFETCH(QByteArray, content);
    QFETCH(int, exitCode);
    write(content);
    QCOMPARE(start({"check", "test.prj"}), exitCode);
    QCOMPARE(m_error.isEmpty(), exitCode != 2);
}

void TestConsole::list_data()
{
    tableColumns<QString, int, QByteArray>("what", "fields", "line");
    tableRow("chips", "chips", 3, QByteArray("W25Q64\tDev25\tspi-flash/W25Q64FV.dev"));
    tableRow("programmers", "programmers", 4, QByteArray("Simulator\t./sim\tSimulator\t1"));
    tableRow("checksums", "checksums", 1, QByteArray("CRC-32"));
}

void TestConsole::list()
{
    QFETCH(QString, what);
    QFETCH(int, fields);
    QFETCH(QByteArray, line);
    QCOMPARE(start({"list", what}), 0);
    QList<QByteArray> lines = m_out.trimmed().split('\n');
    QVERIFY2(std::any_of(lines.begin(), lines.end(), [&](const QByteArray& l) { return l.startsWith(line); }),
             m_out.constData());
    for (const QByteArray& l : lines)
        QCOMPARE(l.split('\t').size(), fields);
    if (what == "chips")
        QVERIFY(std::is_sorted(lines.begin(), lines.end()));
}

void TestConsole::wrongRun_data()
{
    tableColumns<QStringList, QByteArray, QByteArray>("options", "content", "hint");
    const QByteArray good = projectOf({config("Only", {shortDelay})});
    tableRow("no such configuration", QStringList{"-c", "Only", "-c", "Other"}, good, QByteArray("Only"));
    tableRow("no configuration", QStringList{}, projectOf({}), QByteArray("configuration"));
    tableRow("no project", QStringList{}, QByteArray("x"), QByteArray("test.prj"));
}

void TestConsole::wrongRun()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, hint);
    write(content);
    QCOMPARE(start(QStringList{"run"} + options + QStringList{"test.prj"}), 2);
    QVERIFY2(m_error.contains(hint), m_error.constData());
    QCOMPARE(m_out, QByteArray());
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

void TestConsole::pauseAndInput_data()
{
    tableColumns<QStringList, QByteArray, QStringList, QString>("options", "input", "statuses", "last");
    const QStringList twice{"C:1", "C:2", "C:1", "C:2", "C:1", "C:3"};
    tableRow("two lines", QStringList{}, QByteArray("\n\n"), twice, "C:Done");
    tableRow("end", QStringList{}, QByteArray(), QStringList{"C:1", "C:2", "C:3"}, "C:Stopped by the user");
    tableRow("a line, then the end", QStringList{}, QByteArray("go\n"),
             QStringList{"C:1", "C:2", "C:1", "C:2", "C:3"}, "C:Stopped by the user");
}

void TestConsole::pauseAndInput()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, input);
    QFETCH(QString, last);
    write(projectOf({config("C", {command("pause"), shortDelay, command("pause")})}));
    QCOMPARE(start(QStringList{"run", "--events"} + options + QStringList{"test.prj"}, input), 0);
    QTEST(eventsOf(m_out, "status", "status"), "statuses");
    QCOMPARE(eventsOf(m_out, "line", "text1").last(), last);
}

// A pause that waits for a line holds up nothing else.
void TestConsole::inputWhileAnotherRuns()
{
    write(projectOf({config("P", {command("pause")}), config("W", {shortDelay, shortDelay})}));
    QProcess process;
    process.start(m_program, {"run", "--events", "-c", "P", "-c", "W", m_dir.file("projects/test.prj")});
    QByteArray out;
    const auto contains = [&](const char* text) {
        process.waitForReadyRead(100);
        out += process.readAllStandardOutput();
        return out.contains(text);
    };
    QTRY_VERIFY(contains("\"config\":\"P\",\"status\":2}"));
    QTRY_VERIFY(contains("\"config\":\"W\",\"status\":3}"));
    QCOMPARE(process.state(), QProcess::Running);
    process.write("\n");
    QVERIFY(process.waitForFinished(patience));
    QCOMPARE(process.exitCode(), 0);
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
    QProcess process;
    process.start(m_program, {"run", "--events", m_dir.file("projects/test.prj")});
    QByteArray out;
    const auto begun = [&] {
        process.waitForReadyRead(100);
        out += process.readAllStandardOutput();
        return out.count("\"code\":0") >= 2;
    };
    QTRY_VERIFY(begun());
    // Twice at once, as a terminal and a script that watches it send it.
    ::kill(static_cast<pid_t>(process.processId()), number);
    ::kill(static_cast<pid_t>(process.processId()), number);
    QVERIFY(process.waitForFinished(patience));
    out += process.readAllStandardOutput();
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 130);
    QVERIFY(out.endsWith("{\"event\":\"end\",\"exit\":130}\n"));
    QCOMPARE(eventsOf(out, "line", "text1").last(), QStringLiteral("C:Stopped by the user"));
    QCOMPARE(eventsOf(out, "status", "status").last(), QStringLiteral("C:3"));
}

// "| head" must not end a run in the middle, with the chip under power.
void TestConsole::readerGone()
{
    write(projectOf(
        {config("C", {shortDelay, shortDelay, command("process", R"(, "file": "touch projects/done")")})}));
    QProcess process;
    process.start("sh", {"-c", "\"$0\" run \"$1\" | true", m_program, m_dir.file("projects/test.prj")});
    QVERIFY(process.waitForFinished(patience));
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
