// The loops that all chip families share, on the family of serial flash: how ranges and files are cut,
// compared, reported, stopped and refused.

#include "DeviceBench.h"
#include "core/keys.h"
#include "devices/IDeviceExec.h"
#include "devices/TDev25.h"
#include "link/TSerialPort.h"

#include <QtTest>

namespace {

constexpr int chipSize = 0x1000;
constexpr int pageSize = 256;

TData description(const TData& changes = {})
{
    TData data{{key::addr_begin, 0},
               {key::size, chipSize},
               {key::page_size, pageSize},
               {key::erase, "D8|1024"},
               {key::erase_blocks, QStringList{"20|512", "D8|1024"}}};
    for (auto it = changes.begin(); it != changes.end(); ++it)
        data.insert(it.key(), it.value());
    return data;
}

/// A flash as the data sheets have it: programming only clears bits and wraps inside the page.
struct Flash
{
    QByteArray memory = QByteArray(chipSize, char(0xFF));
    QStringList pieces; ///< "W 0x10+3" of every program, "R ..." of every read

    bool operator()(quint8 opcode, const QByteArray& payload, QByteArray& reply)
    {
        const bool isRead = opcode == 3;
        const QByteArray chip = isRead ? payload.mid(2) : payload;
        const int addr = (uchar(chip[1]) << 16 | uchar(chip[2]) << 8 | uchar(chip[3])) % chipSize;
        if (isRead) {
            const int n = uchar(payload[0]) | uchar(payload[1]) << 8;
            pieces.append(QStringLiteral("R %1+%2").arg(addr).arg(n));
            reply = memory.mid(addr, n);
        } else if (uchar(chip[0]) == 0x02) {
            pieces.append(QStringLiteral("W %1+%2").arg(addr).arg(chip.size() - 4));
            for (int i = 4; i < chip.size(); ++i) {
                const int at = addr / pageSize * pageSize + (addr + i - 4) % pageSize;
                memory[at] = char(memory[at] & chip[i]);
            }
        }
        return true;
    }
};

QByteArray pattern(int n)
{
    QByteArray bytes(n, 0);
    for (int i = 0; i < n; ++i)
        bytes[i] = char(i * 7 + i / 256);
    return bytes;
}

/// A HEX file of records of at most n bytes each, from addr.
QByteArray hexFile(int addr, const QByteArray& bytes, int n = 16)
{
    QByteArray text;
    for (int i = 0; i < bytes.size(); i += n) {
        const QByteArray part = bytes.mid(i, n);
        QByteArray record;
        record.append(char(part.size())).append(char((addr + i) >> 8)).append(char(addr + i)).append('\0');
        record.append(part);
        int sum = 0;
        for (const char c : qAsConst(record))
            sum += uchar(c);
        text += ":" + record.append(char(-sum)).toHex().toUpper() + "\r\n";
    }
    return text;
}

const QByteArray hexEnd = ":00000001FF\r\n";

DeviceBench::Chip chipOf(Flash& flash)
{
    return [&flash](quint8 opcode, const QByteArray& payload, QByteArray& reply) {
        return flash(opcode, payload, reply);
    };
}

TData fileParam(const QString& file, const QString& format, qint64 addr, qint64 count)
{
    return {{key::file, file},
            {key::format, format},
            {key::addr_file, 0},
            {key::addr_device, addr},
            {key::count, count}};
}

} // namespace

class TestOperation : public QObject
{
    Q_OBJECT

private slots:
    void pieces_data();
    void pieces();
    void dataRoundTrip();
    void fileRoundTrip_data();
    void fileRoundTrip();
    void verifyNamesFirstDifference();
    void badExchanges_data();
    void badExchanges();
    void portClosed();
    void progress_data();
    void progress();
    void missingSizes_data();
    void missingSizes();
    void outside_data();
    void outside();
    void hexGap();
    void filePastTheChip_data();
    void filePastTheChip();
    void fileWithoutData_data();
    void fileWithoutData();
    void stopLeavesWholeFile_data();
    void stopLeavesWholeFile();
    void stopEndsTheRange();
    void deadLineKeepsOldFile();
};

void TestOperation::pieces_data()
{
    QTest::addColumn<int>("maxData");
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("addr");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("pieces");
    const QString write = cmd::char_write;
    const QString verify = cmd::char_verify;
    QTest::newRow("one byte at the end") << 64 << write << chipSize - 1 << 1 << QStringList{"W 4095+1"};
    QTest::newRow("page above frame")
        << 128 << write << 0 << 512 << QStringList{"W 0+128", "W 128+128", "W 256+128", "W 384+128"};
    QTest::newRow("page below frame")
        << 1024 << write << 200 << 400 << QStringList{"W 200+56", "W 256+256", "W 512+88"};
    // Multiples of the frame do not meet the pages: cut at both, else 16 bytes would wrap.
    QTest::newRow("60 in 256") << 60 << write << 170 << 140
                               << QStringList{"W 170+10", "W 180+60", "W 240+16", "W 256+44", "W 300+10"};
    QTest::newRow("100 in 256") << 100 << write << 200 << 110
                                << QStringList{"W 200+56", "W 256+44", "W 300+10"};
    QTest::newRow("reads know no page")
        << 100 << verify << 150 << 200 << QStringList{"R 150+50", "R 200+100", "R 300+50"};
    QTest::newRow("nothing") << 64 << write << 100 << 0 << QStringList();
}

void TestOperation::pieces()
{
    QFETCH(int, maxData);
    QFETCH(QString, key);
    QFETCH(int, addr);
    QFETCH(int, count);
    DeviceBench bench(new TDev25("chip", description()), maxData);
    Flash flash;
    const TData param{{key::addr_device, addr},
                      {key::count, count},
                      {key::fill_char, key == cmd::char_write ? 0x5A : 0xFF}};
    const auto result = bench.runWith(bench.command(key, param), chipOf(flash));
    QVERIFY2(result.ok, qPrintable(result.error));
    QTEST(flash.pieces, "pieces");
    if (key == cmd::char_write)
        QCOMPARE(flash.memory,
                 QByteArray(chipSize, char(0xFF)).replace(addr, count, QByteArray(count, 0x5A)));
}

void TestOperation::dataRoundTrip()
{
    DeviceBench bench(new TDev25("chip", description()), 4);
    Flash flash;
    const TData param{{key::addr_device, 0x0FE}, {key::data, "01 02 0304\t05 aB"}};
    QVERIFY(bench.runWith(bench.command(cmd::data_write, param), chipOf(flash)).ok);
    QCOMPARE(flash.memory.mid(0x0FE, 6), QByteArray::fromHex("0102030405AB"));
    QVERIFY(bench.runWith(bench.command(cmd::data_verify, param), chipOf(flash)).ok);
    // The result keeps the blanks that the user typed.
    const TData read{{key::addr_device, 0x0FE}, {key::data, "00 00 0000 00 00"}};
    QCOMPARE(bench.runWith(bench.command(cmd::data_read, read), chipOf(flash)).data,
             QString("01 02 0304 05 AB"));
}

void TestOperation::fileRoundTrip_data()
{
    QTest::addColumn<int>("maxData");
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("addr");
    for (const int maxData : {58, 60, 64, 100, 256, 1000}) {
        for (const QString& format : {QString("HEX"), QString("BIN")}) {
            for (const int addr : {0, 0x123})
                QTest::addRow("%d %s %d", maxData, qPrintable(format), addr) << maxData << format << addr;
        }
    }
}

void TestOperation::fileRoundTrip()
{
    QFETCH(int, maxData);
    QFETCH(QString, format);
    QFETCH(int, addr);
    DeviceBench bench(new TDev25("chip", description()), maxData);
    const QByteArray content = pattern(1001);
    const bool isHex = format == "HEX";
    bench.dir().write("in", isHex ? hexFile(addr, content) + hexEnd : content);
    Flash flash;
    TData param = fileParam("in", format, addr, content.size());
    param[key::addr_file] = isHex ? addr : 0;
    QVERIFY(bench.runWith(bench.command(cmd::file_write, param), chipOf(flash)).ok);
    QCOMPARE(flash.memory, QByteArray(chipSize, char(0xFF)).replace(addr, content.size(), content));
    const auto verified = bench.runWith(bench.command(cmd::file_verify, param), chipOf(flash));
    QVERIFY2(verified.ok, qPrintable(verified.error));
    param[key::file] = "out";
    QVERIFY(bench.runWith(bench.command(cmd::file_read, param), chipOf(flash)).ok);
    if (!isHex)
        QCOMPARE(bench.dir().read("out"), content);
    param[key::file] = "out";
    QVERIFY(bench.runWith(bench.command(cmd::file_verify, param), chipOf(flash)).ok);
    flash.memory[addr + 700] = char(~flash.memory[addr + 700]);
    const auto differs = bench.runWith(bench.command(cmd::file_verify, param), chipOf(flash));
    QVERIFY(!differs.ok);
    QVERIFY2(differs.error.startsWith(
                 QStringLiteral("Address: 0x%1,").arg(QString::number(addr + 700, 16).toUpper())),
             qPrintable(differs.error));
}

void TestOperation::verifyNamesFirstDifference()
{
    DeviceBench bench(new TDev25("chip", description()), 4);
    const TData param{{key::addr_device, 0x10}, {key::data, "8182838485"}};
    const auto result = bench.play(bench.command(cmd::data_verify, param),
                                   {"03 0400 0B000010 00 > 81828384", "03 0100 0B000014 00 > F5"});
    QVERIFY(!result.ok);
    QCOMPARE(result.error, QString("Address: 0x14, Data: 0x85, Read: 0xF5"));
}

void TestOperation::badExchanges_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("error");
    QTest::newRow("short") << "03 0200 0B000000 00 > 11"
                           << "";
    QTest::newRow("long") << "03 0200 0B000000 00 > 112233"
                          << "";
    QTest::newRow("silence") << "03 0200 0B000000 00"
                             << "@389";
}

void TestOperation::badExchanges()
{
    QFETCH(QString, line);
    DeviceBench bench(new TDev25("chip", description()), 64);
    const auto result = bench.play(bench.command(cmd::data_read, {{key::data, "0000"}}), {line});
    QVERIFY(!result.ok);
    QTEST(result.error, "error");
    QCOMPARE(result.data, QString("0000"));
    const auto refused = bench.runWith(bench.command(cmd::erase),
                                       [](quint8, const QByteArray&, QByteArray&) { return false; });
    QVERIFY(!refused.ok);
    QCOMPARE(refused.error, QString("@408"));
    QCOMPARE(refused.requests.size(), 1);
}

void TestOperation::portClosed()
{
    DeviceBench bench(new TDev25("chip", description()), 64);
    TSerialPort port;
    for (const QString& key : bench.device().commandKeys()) {
        if (key == cmd::separator)
            continue;
        const std::unique_ptr<IDeviceExec> exec(bench.device().createExec(bench.command(key)));
        bool exitRun = false;
        int cfg = 0;
        int command = 0;
        QVERIFY(!exec->execute(&port, exitRun, cfg, command));
        QCOMPARE(exec->errorText(), QString("@392"));
    }
}

void TestOperation::progress_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<TData>("param");
    QTest::addColumn<QList<int>>("percents");
    const auto range = [](int addr, int count) {
        return TData{{key::addr_device, addr}, {key::count, count}, {key::fill_char, 255}};
    };
    QTest::newRow("one piece") << QString(cmd::char_verify) << range(0, 100) << QList<int>{100};
    // The address behind the last byte is twice the last address.
    QTest::newRow("two bytes") << QString(cmd::char_verify) << range(0, 2) << QList<int>{100};
    QTest::newRow("first byte") << QString(cmd::char_verify) << range(0, 1) << QList<int>{100};
    QTest::newRow("upper half") << QString(cmd::char_verify) << range(0x800, 0x800)
                                << QList<int>{56, 62, 68, 75, 81, 87, 93, 100};
    QTest::newRow("erase") << QString(cmd::erase) << TData() << QList<int>{0, 25, 50, 75};
    QTest::newRow("one block") << QString(cmd::erase_blocks)
                               << TData{{key::size, 512}, {key::begin, 3}, {key::count, 1}} << QList<int>{0};
}

void TestOperation::progress()
{
    QFETCH(QString, key);
    QFETCH(TData, param);
    DeviceBench bench(new TDev25("chip", description()), 256);
    Flash flash;
    const auto result = bench.runWith(bench.command(key, param), chipOf(flash));
    QVERIFY2(result.ok, qPrintable(result.error));
    QTEST(result.percents, "percents");
}

void TestOperation::missingSizes_data()
{
    QTest::addColumn<int>("maxData");
    QTest::addColumn<TData>("changes");
    QTest::addColumn<QStringList>("keys");
    const QStringList reads{cmd::test_empty,  cmd::char_verify, cmd::data_read,
                            cmd::data_verify, cmd::file_read,   cmd::file_verify};
    const QStringList writes{cmd::char_write, cmd::data_write, cmd::file_write};
    QTest::newRow("no frame") << 0 << TData()
                              << reads + writes +
                                     QStringList{cmd::security_reg_test_empty, cmd::sfdp_reg_read};
    QTest::newRow("no page") << 64 << TData{{key::page_size, 0}} << writes;
    QTest::newRow("negative page") << 64 << TData{{key::page_size, -256}} << writes;
    QTest::newRow("no size") << 64 << TData{{key::size, 0}}
                             << reads + writes + QStringList{cmd::erase, cmd::erase_blocks};
}

void TestOperation::missingSizes()
{
    QFETCH(int, maxData);
    QFETCH(TData, changes);
    QFETCH(QStringList, keys);
    changes.insert(key::security_reg_size, 512);
    changes.insert(key::sfdp_reg_size, 256);
    DeviceBench bench(new TDev25("chip", description(changes)), maxData);
    bench.dir().write("in", hexFile(0, pattern(32)) + hexEnd);
    for (const QString& key : keys) {
        TData param{{key::data, "1122"}};
        if (key.contains("file"))
            param = fileParam("in", "HEX", 0, 64);
        if (key == cmd::char_write || key == cmd::char_verify)
            param = {{key::addr_device, 0}, {key::count, 64}, {key::fill_char, 255}};
        if (key == cmd::erase_blocks)
            param = {{key::size, 512}, {key::begin, 0}, {key::count, 1}};
        if (key == cmd::security_reg_test_empty)
            param = {{key::data, 1}};
        const auto result = bench.play(bench.command(key, param), {});
        QVERIFY2(!result.ok, qPrintable(key));
        QCOMPARE(key + result.error, key + "@424");
    }
}

void TestOperation::outside_data()
{
    QTest::addColumn<TData>("changes");
    QTest::addColumn<QString>("key");
    QTest::addColumn<TData>("param");
    const auto data = [](qint64 addr) { return TData{{key::addr_device, addr}, {key::data, "1122"}}; };
    const auto blocks = [](qint64 size, qint64 begin, qint64 count) {
        return TData{{key::size, size}, {key::begin, begin}, {key::count, count}};
    };
    const qint64 huge = std::numeric_limits<qint64>::max();
    QTest::newRow("write over the end") << TData() << QString(cmd::data_write) << data(chipSize - 1);
    QTest::newRow("write before the begin")
        << TData{{key::addr_begin, 0x100}} << QString(cmd::data_write) << data(0xFE);
    QTest::newRow("negative write") << TData() << QString(cmd::data_write) << data(-2);
    QTest::newRow("negative read") << TData() << QString(cmd::data_read) << data(-2);
    QTest::newRow("write at 16 MiB") << TData{{key::size, 0x2000000}} << QString(cmd::data_write)
                                     << data(0xFFFFFF);
    QTest::newRow("fill to 16 MiB and over")
        << TData{{key::size, 0x2000000}} << QString(cmd::char_write)
        << TData{{key::addr_device, 0xFFFFF0}, {key::count, 17}, {key::fill_char, 0}};
    QTest::newRow("erase above 16 MiB")
        << TData{{key::size, 0x2000000}, {key::erase, "D8|65536"}} << QString(cmd::erase) << TData();
    QTest::newRow("blocks over the end") << TData() << QString(cmd::erase_blocks) << blocks(1024, 3, 2);
    QTest::newRow("blocks before the begin") << TData() << QString(cmd::erase_blocks) << blocks(1024, -1, 1);
    QTest::newRow("numbers that overflow")
        << TData() << QString(cmd::erase_blocks) << blocks(1024, huge / 1024, huge / 1024);
    QTest::newRow("test over the end") << TData() << QString(cmd::test_empty_blocks) << blocks(1024, 4, 1);
}

void TestOperation::outside()
{
    QFETCH(TData, changes);
    QFETCH(QString, key);
    QFETCH(TData, param);
    DeviceBench bench(new TDev25("chip", description(changes)), 64);
    const auto result = bench.play(bench.command(key, param), {});
    QVERIFY(!result.ok);
    QCOMPARE(result.error, QString("@425"));
}

void TestOperation::hexGap()
{
    DeviceBench bench(new TDev25("chip", description()), 64);
    bench.dir().write("in", hexFile(0x10, pattern(8)) + hexFile(0x805, pattern(5)) + hexEnd);
    Flash flash;
    const auto result =
        bench.runWith(bench.command(cmd::file_write, fileParam("in", "HEX", 0, chipSize)), chipOf(flash));
    QVERIFY(result.ok);
    QCOMPARE(flash.pieces, (QStringList{"W 16+8", "W 2053+5"}));
    QCOMPARE(result.percents, (QList<int>{0, 50}));
    QVERIFY(result.works.isEmpty());
}

void TestOperation::filePastTheChip_data()
{
    QTest::addColumn<int>("addr");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("pieces");
    QTest::addColumn<QString>("error");
    // A chip of 0x1008 bytes, so that no piece ends with it by chance.
    QTest::newRow("record over the end") << 0x1000 << 0x1008 << QStringList{"W 0+8"} << "";
    QTest::newRow("record behind the end") << 0x1008 << 0x1009 << QStringList() << "@425";
    QTest::newRow("record over the count") << 0x20 << 0x24 << QStringList{"W 32+4"} << "";
}

void TestOperation::filePastTheChip()
{
    QFETCH(int, addr);
    QFETCH(int, count);
    DeviceBench bench(new TDev25("chip", description({{key::size, chipSize + 8}})), 64);
    bench.dir().write("in", hexFile(addr, QByteArray(16, 0)) + hexEnd);
    Flash flash;
    const auto result =
        bench.runWith(bench.command(cmd::file_write, fileParam("in", "HEX", 0, count)), chipOf(flash));
    QTEST(flash.pieces, "pieces");
    QTEST(result.error, "error");
    QCOMPARE(result.ok, result.error.isEmpty());
}

void TestOperation::fileWithoutData_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("other addresses") << "HEX" << hexFile(0x900, pattern(16)) + hexEnd;
    QTest::newRow("no record") << "HEX" << hexEnd;
    QTest::newRow("empty") << "BIN" << QByteArray();
}

void TestOperation::fileWithoutData()
{
    QFETCH(QString, format);
    QFETCH(QByteArray, content);
    DeviceBench bench(new TDev25("chip", description()), 64);
    bench.dir().write("100%2.hex", content);
    for (const QString& key : {QString(cmd::file_write), QString(cmd::file_verify)}) {
        const auto result = bench.play(bench.command(key, fileParam("100%2.hex", format, 0, 0x800)), {});
        QVERIFY2(result.ok, qPrintable(result.error));
        QCOMPARE(result.works, QStringList{"@427 100%2.hex"});
    }
    const auto missing = bench.play(bench.command(cmd::file_write, fileParam("none", format, 0, 16)), {});
    QVERIFY(!missing.ok);
    QVERIFY(missing.error.startsWith("@417"));
}

void TestOperation::stopLeavesWholeFile_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("HEX") << "HEX";
    QTest::newRow("BIN") << "BIN";
}

void TestOperation::stopLeavesWholeFile()
{
    QFETCH(QString, format);
    DeviceBench bench(new TDev25("chip", description()), 256);
    Flash flash;
    flash.memory = pattern(chipSize);
    bench.onPercent = [](IDeviceExec& exec, int percent) {
        if (percent == 50)
            exec.slotStop();
    };
    const auto result =
        bench.runWith(bench.command(cmd::file_read, fileParam("out", format, 0, chipSize)), chipOf(flash));
    QVERIFY(result.ok);
    QCOMPARE(result.error, QString());
    QCOMPARE(flash.pieces.size(), 8);
    const QByteArray half = flash.memory.left(chipSize / 2);
    QCOMPARE(bench.dir().read("out"), format == "HEX" ? hexFile(0, half) + hexEnd : half);
}

void TestOperation::stopEndsTheRange()
{
    DeviceBench bench(new TDev25("chip", description()), 4);
    bench.onPercent = [](IDeviceExec& exec, int) { exec.slotStop(); };
    Flash flash;
    flash.memory = pattern(chipSize);
    const auto read =
        bench.runWith(bench.command(cmd::data_read, {{key::data, "00 00 00 00 00 00"}}), chipOf(flash));
    QVERIFY(read.ok);
    QCOMPARE(read.data, QString("00 07 0E 15"));
    for (const QString& key : {QString(cmd::erase), QString(cmd::char_write)}) {
        const auto result = bench.runWith(bench.command(key), chipOf(flash));
        QVERIFY(result.ok);
        QCOMPARE(result.requests.size(), 1);
    }
}

void TestOperation::deadLineKeepsOldFile()
{
    DeviceBench bench(new TDev25("chip", description()), 64);
    bench.dir().write("dump.bin", "an older dump");
    const TData command = bench.command(cmd::file_read, fileParam("dump.bin", "BIN", 0, 64));
    const auto result = bench.runWith(command, [](quint8, const QByteArray&, QByteArray&) { return false; });
    QVERIFY(!result.ok);
    QCOMPARE(bench.dir().read("dump.bin"), QByteArray("an older dump"));
}

QTEST_GUILESS_MAIN(TestOperation)
#include "test_operation.moc"
