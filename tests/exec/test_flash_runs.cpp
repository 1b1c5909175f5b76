#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "exec/RunBench.h"
#include "support/SimProcess.h"
#include "support/tables.h"

#include <QtTest>

#include <memory>
#include <vector>

namespace {

const QString chip = QStringLiteral("W25Q64");

QVariantList fileParams(const QString& format, const QString& file, qint64 addr, qint64 count)
{
    return {
        key::format,      format, key::file,  file, key::addr_file, format == QLatin1String("BIN") ? 0 : addr,
        key::addr_device, addr,   key::count, count};
}

/// Reproducible bytes, different for each seed.
QByteArray pattern(int size, uint seed)
{
    QByteArray bytes(size, 0);
    for (char& byte : bytes) {
        seed = seed * 1664525 + 1013904223;
        byte = static_cast<char>(seed >> 24);
    }
    return bytes;
}

/// Opcodes of the request frames of a trace, in their order.
QStringList requestsOf(const QByteArray& trace)
{
    QStringList list;
    for (const QByteArray& line : trace.split('\n')) {
        const QList<QByteArray> parts = line.simplified().split(' ');
        const int start = parts.indexOf("C0");
        if (line.contains('>') && start >= 0 && parts.size() > start + 1)
            list.append(QString::fromLatin1(parts.at(start + 1)));
    }
    return list;
}

} // namespace

class TestFlashRuns : public QObject
{
    Q_OBJECT

private slots:
    void twelveSideBySide();
    void stopEndsWithinAnExchange_data();
    void stopEndsWithinAnExchange();
    void faults_data();
    void faults();
    void emptySocketIsNotTheChip();
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
        const QString source = QStringLiteral("source%1.bin").arg(i);
        const QString result = QStringLiteral("result%1.bin").arg(i);
        bench.dir().write(source, pattern(20000 + i, static_cast<uint>(i)));
        bench.addProgrammer(alias, sims.back()->path());
        const int cfg = bench.addCfg(alias);
        bench.addLink(cfg, alias, chip);
        bench.addCmd(cfg, cmd::erase_blocks, {key::size, 0x10000, key::begin, 0, key::count, 1});
        bench.addCmd(cfg, cmd::file_write, fileParams("BIN", source, 100 + i, 20000 + i));
        bench.addCmd(cfg, cmd::file_verify, fileParams("BIN", source, 100 + i, 20000 + i));
        bench.addCmd(cfg, cmd::file_read, fileParams("BIN", result, 100 + i, 20000 + i));
        ids.append(cfg);
    }
    bench.bind();
    QVERIFY(bench.run(ids, 60000));
    for (int i = 0; i < count; ++i) {
        QCOMPARE(project().cfgStatus(ids.at(i)), int(csDone));
        QCOMPARE(bench.dir().read(QStringLiteral("result%1.bin").arg(i)),
                 pattern(20000 + i, static_cast<uint>(i)));
    }
}

void TestFlashRuns::stopEndsWithinAnExchange_data()
{
    tableColumns<QString, QVariantList>("word", "params");
    tableRow("erase", "erase", QVariantList());
    tableRow("read to HEX", "file_read", fileParams("HEX", "out.hex", 0, 0x800000));
    tableRow("fill", "char_write",
             QVariantList{key::addr_device, 0, key::count, 0x800000, key::fill_char, 0});
}

void TestFlashRuns::stopEndsWithinAnExchange()
{
    QFETCH(QString, word);
    QFETCH(QVariantList, params);
    const SimProcess sim({"--chip", chip, "--baud", "115200"});
    QVERIFY(sim.isReady());
    RunBench bench;
    bench.addProgrammer("P", sim.path());
    const int cfg = bench.addCfg("A");
    bench.addLink(cfg, "P", chip);
    bench.addCmd(cfg, word, params);
    bench.addCmd(cfg, cmd::ident);
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
    if (params.contains("out.hex"))
        QVERIFY2(hex.size() > 100 && hex.endsWith("\r\n:00000001FF\r\n"), hex.right(60).constData());
}

void TestFlashRuns::faults_data()
{
    tableColumns<QString, QString, bool>("fault", "message", "closes");
    const QString noAnswer = QStringLiteral("No answer from the programmer");
    // The fifth frame is the read that the verify needs: 80 81 83 84 03.
    tableRow("silent", "silent", noAnswer, false);
    tableRow("cut", "cut", noAnswer, false);
    tableRow("hangup", "hangup", noAnswer, false);
    tableRow("error 7", "error=7", "Programmer: the device does not answer", true);
    tableRow("short", "short", "", true);
    tableRow("flip", "flip", "*", true);
    tableRow("noise is no fault", "noise", "-", true);
}

void TestFlashRuns::faults()
{
    QFETCH(QString, fault);
    QFETCH(QString, message);
    QFETCH(bool, closes);
    RunBench bench;
    const QString trace = bench.dir().file("trace.txt");
    SimProcess sim({"--chip", chip, "--trace", trace, "--fault", fault + "@5"});
    QVERIFY(sim.isReady());
    bench.addProgrammer("P", sim.path());
    const int cfg = bench.addCfg("A");
    bench.addLink(cfg, "P", chip);
    bench.addCmd(cfg, cmd::data_verify, {key::addr_device, 0, key::data, "FFFFFFFF"});
    bench.addCmd(cfg, cmd::delay, {key::value, 0});
    bench.bind();
    QVERIFY(bench.run({cfg}));
    sim.stop();

    const bool good = message == QLatin1String("-");
    QCOMPARE(int(bench.last().code), int(good ? ceSuccess : ceFailed));
    QCOMPARE(project().cfgStatus(cfg), int(good ? csDone : csFailed));
    if (message == QLatin1String("*"))
        QVERIFY(bench.last().text1.contains(QStringLiteral("Data: 0xFF, Read: 0x")));
    else if (!good)
        QCOMPARE(bench.last().text1, message);
    QStringList frames{"80", "81", "83", "84", "03"};
    if (closes)
        frames << "85"
               << "83";
    QCOMPARE(requestsOf(bench.dir().read("trace.txt")), frames);
}

void TestFlashRuns::emptySocketIsNotTheChip()
{
    const SimProcess sim;
    QVERIFY(sim.isReady());
    RunBench bench;
    bench.addProgrammer("P", sim.path());
    const int cfg = bench.addCfg("A");
    bench.addLink(cfg, "P", chip);
    bench.addCmd(cfg, cmd::ident);
    bench.addCmd(cfg, cmd::erase);
    bench.bind();
    QVERIFY(bench.run({cfg}));
    QVERIFY2(project().cfgStatus(cfg) == csFailed, qPrintable(bench.last().text1));
    QCOMPARE(bench.texts(ceCmdBegin).last(), QStringLiteral("Identification"));
}

QTEST_GUILESS_MAIN(TestFlashRuns)
#include "test_flash_runs.moc"
