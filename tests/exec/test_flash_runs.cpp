#include "core/TDataPrj.h"
#include "core/globals.h"
#include "exec/RunBench.h"
#include "support/SimProcess.h"
#include "support/tables.h"

#include <QRandomGenerator>
#include <QtTest>

#include <memory>
#include <vector>

namespace {

const QString chip = QStringLiteral("W25Q64");

/// Reproducible bytes, different for each seed.
QByteArray pattern(int words, uint seed)
{
    QByteArray bytes(words * 4, 0);
    QRandomGenerator(seed).fillRange(reinterpret_cast<quint32*>(bytes.data()), words);
    return bytes;
}

/// Opcodes of the request frames of a trace, in their order.
QString requestsOf(const QByteArray& trace)
{
    QStringList list;
    for (const QByteArray& line : trace.split('\n')) {
        const QList<QByteArray> parts = line.simplified().split(' ');
        const int start = parts.indexOf("C0");
        if (line.contains('>') && start >= 0 && parts.size() > start + 1)
            list.append(QString::fromLatin1(parts.at(start + 1)));
    }
    return list.join(QLatin1Char(' '));
}

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

class TestFlashRuns : public QObject
{
    Q_OBJECT

private slots:
    void twelveSideBySide();
    void stopEndsWithinAnExchange_data() { textRows(longCommands, {"command"}); }
    void stopEndsWithinAnExchange();
    void endsAsTheChipAnswers_data() { textRows(faults, {"options", "command", "last", "requests"}); }
    void endsAsTheChipAnswers();
};

void TestFlashRuns::twelveSideBySide()
{
    constexpr int count = 12;
    std::vector<std::unique_ptr<SimProcess>> sims;
    RunBench bench;
    QList<int> ids;
    for (int i = 0; i < count; ++i) {
        sims.push_back(std::make_unique<SimProcess>(QStringList{"--chip", chip}));
        QVERIFY2(sims.back()->isReady(), sims.back()->output().constData());
        const QString alias = QStringLiteral("P%1").arg(i);
        bench.dir().write("source" + alias, pattern(5000 + i, static_cast<uint>(i)));
        bench.addProgrammer(alias, sims.back()->path());
        const int cfg = bench.addCfg(alias);
        bench.addLink(cfg, alias, chip);
        bench.addCmd(cfg, "erase_blocks size=0x10000 begin=0 count=1");
        const QString range = QStringLiteral(" format=BIN addr_file=0 addr_device=%1 count=%2 file=");
        const QString file = range.arg(100 + i).arg(4 * (5000 + i));
        bench.addCmd(cfg, "file_write" + file + "source" + alias);
        bench.addCmd(cfg, "file_verify" + file + "source" + alias);
        bench.addCmd(cfg, "file_read" + file + "result" + alias);
        ids.append(cfg);
    }
    bench.bind();
    QVERIFY(bench.run(ids, 60000));
    for (int i = 0; i < count; ++i) {
        QCOMPARE(project().cfgStatus(ids.at(i)), int(csDone));
        QCOMPARE(bench.dir().read(QStringLiteral("resultP%1").arg(i)),
                 pattern(5000 + i, static_cast<uint>(i)));
    }
}

void TestFlashRuns::stopEndsWithinAnExchange()
{
    QFETCH(QString, command);
    const SimProcess sim({"--chip", chip, "--baud", "115200"});
    QVERIFY(sim.isReady());
    RunBench bench;
    bench.addProgrammer("P", sim.path());
    const int cfg = bench.addCfg("A");
    bench.addLink(cfg, "P", chip);
    bench.addCmd(cfg, command);
    bench.addCmd(cfg, "ident");
    bench.bind();
    bench.onEvent([&](const LogEvent& event) {
        if (bench.texts(ceCmdBegin).size() == 3 && event.code == ceCmdBegin)
            QTimer::singleShot(60, &bench.control(), &TRunControl::stopAll);
    });
    QElapsedTimer clock;
    clock.start();
    QVERIFY(bench.run({cfg}, 10000));
    // 16 short exchanges at this speed may pass between two looks at the stop.
    QVERIFY2(clock.elapsed() < 3000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(bench.last().text1, langText(390));
    QCOMPARE(bench.texts(ceCmdBegin).size(), 3);
    QCOMPARE(project().cfgStatus(cfg), int(csDone));
    const QByteArray hex = bench.dir().read("out.hex");
    if (command.contains("out.hex"))
        QVERIFY2(hex.size() > 100 && hex.endsWith("\r\n:00000001FF\r\n"), hex.right(60).constData());
}

void TestFlashRuns::endsAsTheChipAnswers()
{
    QFETCH(QString, options);
    QFETCH(QString, command);
    QFETCH(QString, last);
    RunBench bench;
    SimProcess sim(options.split(' ') + QStringList{"--trace", bench.dir().file("trace")});
    QVERIFY(sim.isReady());
    bench.addProgrammer("P", sim.path());
    const int cfg = bench.addCfg("A");
    bench.addLink(cfg, "P", chip);
    bench.addCmd(cfg, command);
    bench.addCmd(cfg, "set_vcc vcc=3.3");
    bench.bind();
    QVERIFY(bench.run({cfg}));
    sim.stop();
    const QString line = QStringLiteral("%1 %2").arg(QString::number(bench.last().code), bench.last().text1);
    QVERIFY2(last == "6" ? line.trimmed() == last : line.startsWith(last), qPrintable(line));
    QCOMPARE(project().cfgStatus(cfg), int(last.startsWith('5') ? csDone : csFailed));
    QTEST(requestsOf(bench.dir().read("trace")), "requests");
}

QTEST_GUILESS_MAIN(TestFlashRuns)
#include "test_flash_runs.moc"
