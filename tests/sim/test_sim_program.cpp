#include "sim/SimClient.h"
#include "support/SimProcess.h"
#include "support/TestDir.h"
#include "support/tables.h"

#include <QFileInfo>
#include <QProcess>

namespace {

// Options | exit code: 2 for words that make no sense, 1 for what cannot be done.
const char refused[] = R"(
--bogus | 2
word | 2
--chip | 2
--baud 0 | 2
--interface 65536 | 2
--max-data 65536 | 2
--address 8 | 2
--fault silent@0 | 2
--fault loud@1 | 2
--fault error=x@1 | 2
--fault=cut@-1 | 2
--image file | 2
--port= | 2
--chip W25Q9999 | 1
--chip W25Q64JV --devices /nowhere | 1
--trace /nowhere/trace | 1
--chip W25Q64JV --image / | 1
)";

const QString program = QStringLiteral(VM_BUILD_DIR "/velmarkion-sim");

/// What a program that ends at once leaves behind; a program that goes on is killed and has the code -1.
struct Ended
{
    explicit Ended(const QStringList& arguments)
    {
        QProcess process;
        process.start(program, arguments);
        if (!process.waitForFinished(5000))
            process.kill();
        else if (process.exitStatus() == QProcess::NormalExit)
            code = process.exitCode();
        process.waitForFinished();
        out = process.readAllStandardOutput();
        err = process.readAllStandardError();
    }

    int code = -1;
    QByteArray out;
    QByteArray err;
};

} // namespace

/// The simulator as a program: options, link, image, trace, and its end.
class TestSimProgram : public QObject
{
    Q_OBJECT

private slots:
    void refuses_data() { textRows(refused, {"options", "code"}); }
    void refuses();
    void replacesStaleLinkAndEndsOnSignal();
    void leavesForeignFiles();
    void imageIsLoadedAndSaved();
    void refusesImageTooLarge();
    void traceHasEveryFrame();
    void survivesItsHosts();
};

void TestSimProgram::refuses()
{
    QFETCH(QString, options);
    const TestDir dir(TestDir::Empty);
    QStringList arguments = options.split(' ');
    if (!options.contains("--port"))
        arguments = QStringList{"--port", dir.file("sim")} + arguments;
    const Ended ended(arguments);
    QTEST(QString::number(ended.code), "code");
    QVERIFY(ended.out.isEmpty() && !ended.err.isEmpty());
    QCOMPARE(ended.err.contains("--help"), ended.code == 2);
    QVERIFY(!QFileInfo(dir.file("sim")).isSymLink());
}

void TestSimProgram::replacesStaleLinkAndEndsOnSignal()
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
    QCOMPARE(second.readAllStandardOutput(), "ready " + link.toUtf8() + "\n");
    QCOMPARE(SimClient(link).play("80 > D204"), QString());
    second.terminate();
    QVERIFY(second.waitForFinished(5000));
    QVERIFY(second.exitStatus() == QProcess::NormalExit && second.exitCode() == 0);
    QVERIFY(!QFileInfo(link).isSymLink());
    QVERIFY(second.readAllStandardOutput().isEmpty());
}

void TestSimProgram::leavesForeignFiles()
{
    const TestDir dir(TestDir::Empty);
    QVERIFY(QFile::link(dir.write("notes", "keep me"), dir.file("link")));
    for (const char* name : {"notes", "link"}) {
        QCOMPARE(Ended({"--port", dir.file(name)}).code, 1);
        QCOMPARE(dir.read(name), QByteArray("keep me"));
    }
    SimProcess running({"--name", "first"});
    QVERIFY2(running.isReady(), running.output().constData());
    QCOMPARE(Ended({"--port", running.path()}).code, 1);
    QCOMPARE(SimClient(running.path()).play("81 > 6669727374"), QString());
}

void TestSimProgram::imageIsLoadedAndSaved()
{
    const TestDir dir(TestDir::Empty);
    const QString image = dir.write("chip.bin", QByteArray::fromHex("F00F55"));
    SimProcess sim({"--chip", "W25Q64JV", "--image", image});
    QVERIFY2(sim.isReady(), sim.output().constData());
    QCOMPARE(SimClient(sim.path()).play("SPI, 03 0400 0B 000000 00 > F00F55FF, 04 02 7FFFFF 12 >"),
             QString());
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
    QCOMPARE(Ended({"--chip", "24C16", "--image", image, "--port", dir.file("sim")}).code, 1);
    QCOMPARE(dir.read("chip.bin"), QByteArray(2049, 'x'));
}

void TestSimProgram::traceHasEveryFrame()
{
    const TestDir dir(TestDir::Empty);
    SimProcess sim({"--trace", dir.file("trace"), "--fault", "cut@2", "--fault", "silent@3"});
    QVERIFY2(sim.isReady(), sim.output().constData());
    SimClient client(sim.path());
    for (const char* frame : {"C0800000C0", "C0800000C0", "C083010001BB"}) {
        client.send(QByteArray::fromHex(frame));
        client.receive(150);
    }
    const QRegularExpression line("^\\d\\d:\\d\\d:\\d\\d\\.\\d{6} ([<>])((?: [0-9A-F]{2})*)$");
    QStringList frames;
    for (const QByteArray& row : dir.read("trace").trimmed().split('\n')) {
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
        QCOMPARE(client.play("SPI"), QString());
        client.send(QByteArray::fromHex("C0030700FFFF0B00000000") + char(0x2D) +
                    QByteArray::fromHex("C0040010"));
    }
    QTest::qWait(700);
    SimClient next(sim.path());
    next.clear();
    next.send(QByteArray(5, '\0'));
    QTest::qWait(50);
    next.clear();
    QCOMPARE(next.play("80 > D204"), QString());
}

QTEST_GUILESS_MAIN(TestSimProgram)
#include "test_sim_program.moc"
