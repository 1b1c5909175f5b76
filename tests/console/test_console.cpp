#include "support/SimProcess.h"
#include "support/TestDir.h"
#include "support/tables.h"

#include <csignal>

namespace {

constexpr int patience = 20000; // ms

const QString setProg = "set_prog prog=Simulator";
const QString setDevice = "set_device device=W25Q64|file=spi-flash/W25Q64FV.dev|clk=4000000";
const QString shortDelay = "delay value=10";
const QString longDelay = "delay value=60000";

/// Names of configurations and their commands: "word key=value|key=value", unchecked with a "-" in front.
using Configs = QList<QPair<QString, QStringList>>;

QByteArray projectOf(const Configs& configs)
{
    QJsonArray all;
    for (const auto& [name, commands] : configs) {
        QJsonArray objects;
        for (const QString& text : commands) {
            const bool isOff = text.startsWith('-');
            QJsonObject object{{"status", isOff ? "0" : "1"}, {"cmd", text.section(' ', 0, 0).mid(isOff)}};
            for (const QString& pair : text.section(' ', 1).split('|', Qt::SkipEmptyParts))
                object.insert(pair.section('=', 0, 0), pair.section('=', 1));
            objects.append(object);
        }
        all.append(QJsonObject{{"name", name}, {"commands", objects}});
    }
    return QJsonDocument(QJsonObject{{"configurations", all}}).toJson();
}

/// The events of a kind, as "config:value".
QStringList eventsOf(const QByteArray& lines, const QString& kind, const QString& value)
{
    QStringList texts;
    for (const QByteArray& line : lines.split('\n')) {
        const QJsonObject event = QJsonDocument::fromJson(line).object();
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
    void initTestCase()
    {
        m_program = m_dir.addProgram("velmarkion");
        m_process.setWorkingDirectory(m_dir.file("projects"));
        m_settings = m_dir.read("velmarkion.ini");
        QVERIFY(!m_settings.isEmpty());
    }

    // Nothing that the program does on the console writes settings.
    void cleanup() { QCOMPARE(m_dir.read("velmarkion.ini"), m_settings); }

    void usage()
    {
        QCOMPARE(start({"--help"}), 0);
        QVERIFY(m_out.startsWith("Usage: velmarkion"));
        QCOMPARE(start({"--version"}), 0);
        QCOMPARE(m_out, QByteArray("Velmarkion Studio 0.0.2\n"));
        QCOMPARE(start({"go"}), 2);
        QVERIFY(m_out.isEmpty() && m_error.contains("--help"));
    }

    void check()
    {
        write({{"First", {setProg, "ident", setDevice, "ident"}},
               {"Tab\there", {"process file=a\tb\nc", "delay value=-1", "-nonsense"}}});
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
            QVERIFY2(lines[i].startsWith(expected[i]) && lines[i].count('\t') == 5, lines[i].constData());

        QCOMPARE(start({"check", "--json", "test.prj"}), 1);
        QVERIFY(m_out.contains(
            "{\"pos\":5,\"config\":\"Tab\\there\",\"cmd\":\"delay\",\"status\":true,"
            "\"valid_dev\":true,\"valid_param\":false,\"title\":\"Delay\",\"params\":\"-1 ms\"}\n"));
        QVERIFY(m_out.contains("\"cmd\":\"nonsense\",\"status\":false,\"valid_dev\":false,"));
    }

    void checkWarns()
    {
        const QString chip = "set_device device=SST26VF016B|file=spi-flash/SST26VF016B.dev|clk=4000000";
        write({{"First", {setProg, chip, '-' + chip, setDevice}}});
        QCOMPARE(start({"check", "test.prj"}), 0);
        QVERIFY(m_error.startsWith("velmarkion: warning: SST26VF016B: The blocks of this chip are locked"));
        QCOMPARE(m_error.count('\n'), 1);
    }

    void checkExitCode()
    {
        const QMap<QByteArray, int> rows{{projectOf({{"no command", {}}}), 0},
                                         {projectOf({{"checked and wrong", {"ident"}}}), 1},
                                         {projectOf({{"unchecked and wrong", {"-ident"}}}), 0},
                                         {"{\"version\": 1}", 2},
                                         {QByteArray(100000, '['), 2}};
        for (auto row = rows.begin(); row != rows.end(); ++row) {
            m_dir.write("projects/test.prj", row.key());
            compareRow(row.key().left(200), start({"check", "test.prj"}), row.value());
            compareRow(row.key().left(200), m_error.isEmpty(), row.value() != 2);
        }
    }

    void list()
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

    void wrongRun()
    {
        const auto row = [this](const QStringList& options, const Configs& configs, const QByteArray& hint) {
            write(configs);
            compareRow(hint, start(QStringList("run") + options + QStringList("test.prj")), 2);
            QVERIFY2(m_error.contains(hint) && m_out.isEmpty(), m_error.constData());
        };
        row({"-c", "Only", "-c", "Other"}, {{"Only", {shortDelay}}}, "there are: Only");
        row({"--port", "Nobody=x"}, {{"Only", {shortDelay}}}, "Nobody");
        row({}, {}, "has no configuration");
        row({"absent.prj"}, {}, "unexpected argument");
        m_dir.write("projects/test.prj", "x");
        QVERIFY(start({"run", "test.prj"}) == 2 && m_error.contains("test.prj: "));
    }

    void goodRun()
    {
        write({{"C", {shortDelay}}, {"Second", {longDelay}}});
        const QByteArray before = m_dir.read("projects/test.prj");
        QCOMPARE(start({"run", "--save", "test.prj"}), 0);
        QCOMPARE(m_dir.read("projects/test.prj"), before); // nothing has changed it
        const QRegularExpression log("^[0-9:.]{12} Delay \\(10 ms\\)\n[0-9:.]{12} Done\n$");
        QVERIFY2(log.match(m_out).hasMatch() && m_error.isEmpty(), m_out.constData());
        QCOMPARE(start({"run", "--events", "test.prj"}), 0);
        QVERIFY(m_out.startsWith(
            "{\"event\":\"status\",\"config\":\"C\",\"status\":1}\n"
            "{\"event\":\"line\",\"config\":\"C\",\"code\":0,\"text1\":\"Delay\",\"text2\":\"10 ms\"}\n"));
        QVERIFY(m_out.endsWith(
            "{\"event\":\"status\",\"config\":\"C\",\"status\":3}\n{\"event\":\"end\",\"exit\":0}\n"));
        QCOMPARE(eventsOf(m_out, "line", "code"), (QStringList{"C:0", "C:5"}));
        QVERIFY(eventsOf(m_out, "progress", "percent").contains("C:0"));
    }

    void failedRun()
    {
        write({{"C", {setProg, shortDelay}}});
        QCOMPARE(start({"run", "--events", "--port", "Simulator=./absent", "test.prj"}), 1);
        QCOMPARE(eventsOf(m_out, "status", "status"), (QStringList{"C:1", "C:4"}));
        const QStringList lines = eventsOf(m_out, "line", "text1");
        QVERIFY2(lines.last().contains("projects/absent: The port does not exist"), qPrintable(lines.last()));
        // A run that another one has started counts: its lines, its failure, and the program waits for it.
        write({{"Caller", {"execute cfg=1"}}, {"Called", {"delay value=300", "ident"}}});
        QCOMPARE(start({"run", "--events", "test.prj"}), 1);
        const QStringList statuses = eventsOf(m_out, "status", "status");
        QVERIFY(statuses.first() == "Caller:1" && statuses.contains("Caller:3"));
        QCOMPARE(statuses.last(), QString("Called:4"));
        QVERIFY(m_out.endsWith("{\"event\":\"end\",\"exit\":1}\n"));
    }

    void pauseAndInput()
    {
        write({{"C", {"pause", shortDelay, "pause"}}});
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
    void inputWhileAnotherRuns()
    {
        write({{"P", {"pause"}}, {"W", {shortDelay, shortDelay}}});
        begin({"-c", "P", "-c", "W"});
        QTRY_VERIFY(hasPrinted("\"config\":\"P\",\"status\":2}"));
        QTRY_VERIFY(hasPrinted("\"config\":\"W\",\"status\":3}"));
        QCOMPARE(m_process.state(), QProcess::Running);
        m_process.write("\n");
        QVERIFY(ends());
        QCOMPARE(m_process.exitCode(), 0);
    }

    void interrupted()
    {
        const auto row = [this](int number, const QString& at) {
            write({{"C", {shortDelay, at}}});
            begin({});
            QTRY_VERIFY(hasPrinted("\"code\":0", 2));
            // Twice at once, as a terminal and a script that watches it send it.
            ::kill(static_cast<pid_t>(m_process.processId()), number);
            ::kill(static_cast<pid_t>(m_process.processId()), number);
            QVERIFY(ends());
            compareRow(at, m_process.exitCode(), 130);
            compareRow(at, eventsOf(m_out, "line", "text1").last(), QString("C:Stopped by the user"));
            compareRow(at, eventsOf(m_out, "status", "status").last(), QString("C:3"));
            QVERIFY(m_out.endsWith("{\"event\":\"end\",\"exit\":130}\n"));
        };
        row(SIGINT, longDelay);
        row(SIGTERM, "pause");
        row(SIGINT, "jamp to_cmd=0"); // an endless loop
    }

    // "| head" must not end a run in the middle, with the chip under power.
    void readerGone()
    {
        write({{"C", {shortDelay, shortDelay, "process file=touch projects/done"}}});
        m_process.start("sh", {"-c", "\"$0\" run test.prj | true", m_program});
        QVERIFY(ends());
        QTRY_VERIFY(QFile::exists(m_dir.file("projects/done")));
    }

    void portAndSave()
    {
        SimProcess sim({"--chip", "W25Q64"});
        QVERIFY2(sim.isReady(), sim.output().constData());
        write({{"C", {setProg, setDevice, "ident", "unique_id_read data=0000000000000000"}},
               {"Hex",
                {setProg, setDevice,
                 "file_read file=out.hex|format=hex|addr_device=65520|count=17|"
                 "addr_file=65520"}}});
        const QByteArray before = m_dir.read("projects/test.prj");
        const QStringList run{"run", "--port", "Simulator=" + sim.path(), "test.prj"};
        QCOMPARE(start(run), 0);
        QCOMPARE(m_dir.read("projects/test.prj"), before);
        for (const bool linear : {false, true}) {
            const QStringList option = linear ? QStringList("--hex-linear") : QStringList();
            QCOMPARE(start(run + QStringList{"-c", "Hex"} + option), 0);
            QCOMPARE(m_dir.read("projects/out.hex").count(linear ? ":02000004" : ":02000002"), 2);
            QCOMPARE(m_out.contains("/Main/HexLinear"), !linear);
        }

        QCOMPARE(start(run + QStringList{"--save"}), 0);
        const QByteArray after = m_dir.read("projects/test.prj");
        QVERIFY(after.contains("unique_id_read") && !after.contains("0000000000000000"));

        // Somebody else saves the project during the run.
        m_dir.write("projects/theirs", "{}");
        write({{"C",
                {"counter value=0|limit=5|delta=1", "process file=cp projects/theirs projects/test.prj"}}});
        QCOMPARE(start({"run", "--save", "test.prj"}), 1);
        QCOMPARE(m_dir.read("projects/test.prj"), QByteArray("{}"));
        QVERIFY2(m_error.contains("test.prj"), m_error.constData());
    }

private:
    /// Runs the program in another folder than its own and waits for its end; gives its exit code.
    int start(const QStringList& arguments, const QByteArray& input = {})
    {
        m_out.clear();
        m_process.start(m_program, arguments);
        m_process.write(input);
        m_process.closeWriteChannel();
        return ends() ? m_process.exitCode() : -1;
    }

    /// Starts a run of the project that is watched and spoken to.
    void begin(const QStringList& options)
    {
        m_out.clear();
        m_process.start(m_program, QStringList{"run", "--events"} + options + QStringList{"test.prj"});
    }

    bool hasPrinted(const char* text, int times = 1)
    {
        m_process.waitForReadyRead(100);
        m_out += m_process.readAllStandardOutput();
        return m_out.count(text) >= times;
    }

    bool ends()
    {
        if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(patience))
            m_process.kill();
        m_out += m_process.readAllStandardOutput();
        m_error = m_process.readAllStandardError();
        return m_process.exitStatus() == QProcess::NormalExit;
    }

    void write(const Configs& configs) { m_dir.write("projects/test.prj", projectOf(configs)); }

    TestDir m_dir;
    QString m_program;
    QProcess m_process;
    QByteArray m_settings; ///< as shipped
    QByteArray m_out;
    QByteArray m_error;
};

QTEST_GUILESS_MAIN(TestConsole)
#include "test_console.moc"
