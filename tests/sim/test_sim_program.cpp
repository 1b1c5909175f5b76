#include "sim/SimClient.h"
#include "support/SimProcess.h"
#include "support/TestDir.h"
#include "support/tables.h"

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <csignal>

/// The simulator as a program: options, link, image, trace, and its end.
class TestSimProgram : public QObject
{
    Q_OBJECT

private slots:
    void wrongUsage_data();
    void wrongUsage();
    void failsBeforeReady_data();
    void failsBeforeReady();
    void endsOnSignal_data();
    void endsOnSignal();
    void replacesStaleLink();
    void leavesForeignFiles();
    void leavesLinkOfAnother();
    void imageIsLoadedAndSaved();
    void refusesImageTooLarge();
    void traceHasEveryFrame();
    void survivesItsHosts();
};

namespace {

const QString program = QStringLiteral(VM_BUILD_DIR "/velmarkion-sim");
const char* const chipBlock = "0100 00 40420F00";

/// Runs the program to its end; a program that goes on is killed and gives -1.
int exitCodeOf(const QStringList& arguments, QByteArray* out = nullptr, QByteArray* err = nullptr)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(5000)) {
        process.kill();
        process.waitForFinished();
        return -1;
    }
    if (out != nullptr)
        *out = process.readAllStandardOutput();
    if (err != nullptr)
        *err = process.readAllStandardError();
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

} // namespace

void TestSimProgram::wrongUsage_data()
{
    tableColumns<QStringList>("arguments");
    const QList<QStringList> wrong = {{"--bogus"},
                                      {"word"},
                                      {"--chip"},
                                      {"--baud", "0"},
                                      {"--interface", "65536"},
                                      {"--max-data", "65536"},
                                      {"--address", "8"},
                                      {"--fault", "silent@0"},
                                      {"--fault", "loud@1"},
                                      {"--fault", "error=x@1"},
                                      {"--image", "file"},
                                      {"--port", ""},
                                      {"--fault=cut@-1"}};
    for (const QStringList& arguments : wrong)
        tableRow(qPrintable(arguments.join(' ')), arguments);
}

void TestSimProgram::wrongUsage()
{
    QFETCH(QStringList, arguments);
    QByteArray out;
    QByteArray err;
    QCOMPARE(exitCodeOf(arguments, &out, &err), 2);
    QVERIFY(out.isEmpty());
    QVERIFY(err.contains("--help"));
}

void TestSimProgram::failsBeforeReady_data()
{
    tableColumns<QStringList>("arguments");
    tableRow("unknown chip", QStringList{"--chip", "W25Q9999"});
    tableRow("no folder of chips", QStringList{"--chip", "W25Q64JV", "--devices", "/nowhere"});
    tableRow("trace in no folder", QStringList{"--trace", "/nowhere/trace"});
    tableRow("image is a folder", QStringList{"--chip", "W25Q64JV", "--image", "/"});
}

void TestSimProgram::failsBeforeReady()
{
    QFETCH(QStringList, arguments);
    const TestDir dir(TestDir::Empty);
    if (!arguments.contains("--port"))
        arguments << "--port" << dir.file("sim");
    QByteArray out;
    QByteArray err;
    QCOMPARE(exitCodeOf(arguments, &out, &err), 1);
    QVERIFY(out.isEmpty());
    QVERIFY(!err.isEmpty());
    QVERIFY(!QFileInfo(dir.file("sim")).isSymLink());
}

void TestSimProgram::endsOnSignal_data()
{
    tableColumns<int>("number");
    tableRow("SIGTERM", SIGTERM);
}

void TestSimProgram::endsOnSignal()
{
    QFETCH(int, number);
    const TestDir dir(TestDir::Empty);
    const QString link = dir.file("sim");
    QProcess process;
    process.start(program, {"--port", link});
    QVERIFY(process.waitForReadyRead(5000));
    QCOMPARE(process.readAllStandardOutput(), "ready " + link.toUtf8() + "\n");
    QVERIFY(QFileInfo(link).isSymLink());
    ::kill(pid_t(process.processId()), number);
    QVERIFY(process.waitForFinished(5000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    QVERIFY(!QFileInfo(link).isSymLink());
    QVERIFY(process.readAllStandardOutput().isEmpty());
}

void TestSimProgram::replacesStaleLink()
{
    const TestDir dir(TestDir::Empty);
    const QString link = dir.file("sim");
    QProcess first;
    first.start(program, {"--port", link});
    QVERIFY(first.waitForReadyRead(5000));
    first.kill();
    QVERIFY(first.waitForFinished(5000));
    QVERIFY(QFileInfo(link).isSymLink());
    QProcess second;
    second.start(program, {"--port", link});
    QVERIFY(second.waitForReadyRead(5000));
    QCOMPARE(SimClient(link).ask(0x80).payload.size(), 2);
    second.terminate();
    QVERIFY(second.waitForFinished(5000));
}

void TestSimProgram::leavesForeignFiles()
{
    const TestDir dir(TestDir::Empty);
    const QString path = dir.write("notes", "keep me");
    const QString link = dir.file("link");
    QVERIFY(QFile::link(path, link));
    for (const char* name : {"notes", "link"}) {
        QCOMPARE(exitCodeOf({"--port", dir.file(name)}), 1);
        QCOMPARE(dir.read(name), QByteArray("keep me"));
    }
}

void TestSimProgram::leavesLinkOfAnother()
{
    SimProcess running({"--name", "first"});
    QVERIFY2(running.isReady(), running.output().constData());
    QCOMPARE(exitCodeOf({"--port", running.path()}), 1);
    QCOMPARE(SimClient(running.path()).ask(0x81).payload, QByteArray("first"));
}

void TestSimProgram::imageIsLoadedAndSaved()
{
    const TestDir dir(TestDir::Empty);
    const QString image = dir.write("chip.bin", QByteArray::fromHex("F00F55"));
    SimProcess sim({"--chip", "W25Q64JV", "--image", image});
    QVERIFY2(sim.isReady(), sim.output().constData());
    {
        SimClient client(sim.path());
        client.askHex(0x84, chipBlock);
        QCOMPARE(client.askHex(3, "0400 0B 000000 00").payload.toHex(), QByteArray("f00f55ff"));
        client.askHex(4, "02 7FFFFF 12");
    }
    QVERIFY(sim.stop());
    const QByteArray saved = dir.read("chip.bin");
    QCOMPARE(saved.size(), 8 * 1024 * 1024);
    QCOMPARE(saved.left(4).toHex(), QByteArray("f00f55ff"));
    QCOMPARE(saved.right(2).toHex(), QByteArray("ff12"));
}

void TestSimProgram::refusesImageTooLarge()
{
    const TestDir dir(TestDir::Empty);
    const QString image = dir.write("chip.bin", QByteArray(2049, 'x'));
    QCOMPARE(exitCodeOf({"--chip", "24C16", "--image", image, "--port", dir.file("sim")}), 1);
    QCOMPARE(dir.read("chip.bin"), QByteArray(2049, 'x'));
}

void TestSimProgram::traceHasEveryFrame()
{
    const TestDir dir(TestDir::Empty);
    const QString trace = dir.file("trace");
    SimProcess sim({"--trace", trace, "--fault", "cut@2", "--fault", "silent@3"});
    QVERIFY2(sim.isReady(), sim.output().constData());
    SimClient client(sim.path());
    client.ask(0x80);
    client.ask(0x80, {}, 100);
    client.ask(0x83, QByteArray(1, '\x01'), 100);
    const QByteArray log = dir.read("trace");
    const QRegularExpression line("^\\d\\d:\\d\\d:\\d\\d\\.\\d{6} ([<>])((?: [0-9A-F]{2})*)$");
    QStringList frames;
    for (const QByteArray& row : log.trimmed().split('\n')) {
        const QRegularExpressionMatch match = line.match(QString::fromLatin1(row));
        QVERIFY2(match.hasMatch(), row.constData());
        frames << match.captured(1) + match.captured(2);
    }
    const QStringList expected = {"> C0 80 00 00 C0", "< C0 80 02 00 D2 04 E8", "> C0 80 00 00 C0",
                                  "< C0 80 02", "> C0 83 01 00 01 BB"};
    QCOMPARE(frames, expected);
}

void TestSimProgram::survivesItsHosts()
{
    SimProcess sim({"--chip", "W25Q64JV"});
    QVERIFY2(sim.isReady(), sim.output().constData());
    {
        // A host that dies in the middle of a frame, with an answer that it never took.
        SimClient client(sim.path());
        client.askHex(0x84, chipBlock);
        client.send(SimClient::frame(3, QByteArray::fromHex("FFFF0B00000000")));
        client.send(QByteArray::fromHex("C0040010"));
    }
    QTest::qWait(700);
    SimClient next(sim.path());
    next.clear();
    next.send(QByteArray(5, '\0'));
    QTest::qWait(50);
    next.clear();
    QCOMPARE(next.ask(0x80).payload.toHex(), QByteArray("d204"));
}

QTEST_GUILESS_MAIN(TestSimProgram)
#include "test_sim_program.moc"
