// The loops that all chip families share, on models of a flash and an AVR: how ranges and files are cut,
// reported, stopped and kept inside the chip.

#include "DeviceBench.h"
#include "devices/shared/IDeviceExec.h"
#include "formats/hexkit.h"
#include "support/tables.h"

#include <QTimer>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A chip as the data sheets have it: programming only clears bits, and an address counter wraps inside
/// the page. An AVR gathers words in its page buffer until the commit.
struct Model
{
    explicit Model(int size, int page = 256)
        : memory(size, char(0xFF))
        , pageSize(page)
    {
    }

    void program(int addr, const QByteArray& data)
    {
        pieces.append(QStringLiteral("W %1+%2").arg(addr).arg(data.size()));
        for (int i = 0; i < data.size(); ++i) {
            char& cell = memory.data()[addr / pageSize * pageSize + (addr + i) % pageSize];
            cell = char(cell & data[i]);
        }
    }

    QByteArray read(int addr, int n)
    {
        pieces.append(QStringLiteral("R %1+%2").arg(addr).arg(n));
        return memory.mid(addr, n);
    }

    bool flash(quint8 opcode, const QByteArray& payload, QByteArray& reply)
    {
        const QByteArray chip = opcode == 3 ? payload.mid(2) : payload;
        const int addr = uchar(chip[1]) << 16 | uchar(chip[2]) << 8 | uchar(chip[3]);
        if (opcode == 3)
            reply = read(addr, uchar(payload[0]) | uchar(payload[1]) << 8);
        else if (uchar(chip[0]) == 0x02)
            program(addr, chip.mid(4));
        return true;
    }

    bool avr(quint8 opcode, const QByteArray& payload, QByteArray& reply)
    {
        const int low = uchar(payload[0]) | uchar(payload[1]) << 8;
        if (opcode == 3) {
            const int n = uchar(payload[2]) | uchar(payload[3]) << 8;
            reply = read(ext << 16 | low, n);
            return low + n <= 0x10000;
        }
        if (opcode == 4) {
            buffer = payload.mid(2);
            bufferAddr = low;
            return low % 2 == 0 && buffer.size() % 2 == 0;
        }
        if (opcode == 7)
            reply = payload.left(4);
        if (opcode == 7 && uchar(payload[1]) == 0x4D)
            ext = uchar(payload[3]);
        if (opcode == 7 && uchar(payload[1]) == 0x4C &&
            (uchar(payload[2]) << 9 | uchar(payload[3]) << 1) % 0x10000 == bufferAddr)
            program(ext << 16 | bufferAddr, buffer);
        return true;
    }

    QByteArray memory;
    int pageSize;
    QStringList pieces; ///< "W addr+n" of every program, "R addr+n" of every read
    int ext = 0;
    int bufferAddr = 0;
    QByteArray buffer;
};

DeviceBench::Chip chipOf(Model& model, bool isAvr = false)
{
    return [&model, isAvr](quint8 opcode, const QByteArray& payload, QByteArray& reply) {
        return isAvr ? model.avr(opcode, payload, reply) : model.flash(opcode, payload, reply);
    };
}

QByteArray pattern(int n)
{
    QByteArray bytes(n, 0);
    for (int i = 0; i < n; ++i)
        bytes[i] = char(i * 7 + i / 256);
    return bytes;
}

/// Records of at most 16 bytes from addr.
QByteArray hexRecords(int addr, const QByteArray& bytes)
{
    QByteArray text;
    for (int i = 0; i < bytes.size(); i += 16)
        text += hexLine(0, addr + i, bytes.mid(i, 16));
    return text;
}

const QString smallFlash = "dev25 size=0x1000 erase=D8|1024 erase_blocks=20|512 ";

// Changes of the chip | command | programs and reads that came to the chip | percents | error | remark. Pages
// are of 256 bytes; a frame that is no part of a page is cut there too, where the rest would wrap. A chip of
// 0x1008 bytes has no piece that ends with it by chance.
const char pieces[] = R"(
MAX_DATA=64 | char_write addr_device=4095 count=1 | W 4095+1 | 100 |
MAX_DATA=128 | char_write addr_device=0 count=512 | W 0+128 W 128+128 W 256+128 W 384+128 | 25 50 75 100 |
MAX_DATA=1024 | char_write addr_device=200 count=400 | W 200+56 W 256+256 W 512+88 | 42 85 100 |
MAX_DATA=60 | char_write addr_device=170 count=90 | W 170+10 W 180+60 W 240+16 W 256+4 | 69 92 98 100 |
MAX_DATA=100 | char_write addr_device=200 count=110 | W 200+56 W 256+44 W 300+10 | 82 97 100 |
MAX_DATA=100 | char_verify addr_device=150 count=200 | R 150+50 R 200+100 R 300+50 | 57 85 100 |
MAX_DATA=64 | char_verify addr_device=0 count=1 | R 0+1 | 100 |
MAX_DATA=64 | erase | | 0 25 50 75 |
MAX_DATA=64 | erase_blocks size=512 begin=3 count=1 | | 0 |
size=0x1008 | file_write file=gap count=4104 | W 16+8 W 2053+5 | 0 50 |
size=0x1008 | file_write file=overTheEnd count=4112 | W 4096+8 | 99 | | @FileLeftOut 8 1000 1007 8
size=0x1008 | file_write file=behindTheEnd count=4105 | | | @AddrOutsideDevice
size=0x1008 | file_write file=overTheCount count=36 | W 32+4 | 100 | | @FileLeftOut 4 20 23 12
size=0x1000 MAX_DATA=16 | file_write file=twice count=4096 | W 4088+8 | 100 | | @FileLeftOut 8 FF8 FFF 4104
size=0x1000 MAX_DATA=16 | file_write file=twice count=4096 addr_file=4096 | W 4088+8 | 100 | | @FileLeftOut 8 FF8 FFF 4104
size=0x1000 MAX_DATA=16 | file_write file=twice count=4097 | W 4088+8 | 100 | @AddrOutsideDevice
size=0x1000 | file_write file=two count=96 addr_device=128 | W 128+16 W 208+16 | 64 100 | | @FileLeftOut 32 80 DF 32
size=0x1000 | file_verify format=BIN file=bytes addr_file=9 addr_device=32 count=4 | R 32+4 | 100 | | @FileLeftOut 4 20 23 96
size=0x1000 | file_verify format=BIN file=bytes addr_device=3900 count=196 | R 3900+4 R 3904+64 R 3968+32 | 95 96 97 | | @FileEndsEarly bytes 96 FA0
size=0x1000 | file_write file=noEnd count=100 | W 16+8 | 24 | | @FileEndsEarly noEnd 76 18
size=0x1000 | file_write file=noEnd count=24 | W 16+8 | 100 | |
size=0x1000 | char_write addr_device=100 count=0; char_verify count=0; data_verify data=~; file_read file=out count=0;
    erase_blocks count=0; test_empty_blocks count=0; security_reg_erase data=0; security_reg_test_empty data=0 | | | | @RangeEmpty
)";

} // namespace

class TestOperation : public QObject
{
    Q_OBJECT

private slots:
    void cuts_data() { textRows(pieces, {"chip", "command", "pieces", "percents", "error", "remark"}); }
    void cuts()
    {
        QFETCH(QString, chip);
        QFETCH(QString, command);
        DeviceBench bench(smallFlash + chip);
        bench.dir().write("gap", hexRecords(0x10, pattern(8)) + hexRecords(0x805, pattern(5)) + hexEnd);
        bench.dir().write("noEnd", hexRecords(0x10, pattern(8)));
        bench.dir().write("overTheEnd", hexRecords(0x1000, QByteArray(16, 0)) + hexEnd);
        bench.dir().write("behindTheEnd", hexRecords(0x1008, QByteArray(16, 0)) + hexEnd);
        bench.dir().write("overTheCount", hexRecords(0x20, QByteArray(16, 0)) + hexEnd);
        const QByteArray line(16, char(0xFF));
        bench.dir().write("bytes", line.repeated(7).left(100));
        // Records over the chip's end and behind it; and a record above the range between two of it.
        bench.dir().write("twice", hexRecords(0xFF8, line.repeated(257)) + hexEnd);
        bench.dir().write("two", hexRecords(0x70, line.repeated(2)) + hexRecords(0xE0, line) +
                                     hexRecords(0xD0, line) + hexEnd);
        Model flash(0x2000);
        BenchRun result;
        QFETCH(QString, remark);
        for (const QString& each : command.split("; ")) {
            result = bench.runWith(each, chipOf(flash));
            compareRow(each, result.events, remark.isEmpty() ? QStringList() : QStringList("3:" + remark));
        }
        QTEST(result.errorText, "error");
        QTEST(flash.pieces.join(' '), "pieces");
        QStringList percents;
        for (const int percent : result.percents)
            percents.append(QString::number(percent));
        QTEST(percents.join(' '), "percents");
    }

    void fileRoundTrip_data()
    {
        tableColumns<QString, int, int>("chip", "addr", "count");
        const QString avr =
            "avr flash_size=0x2000 flash_page_size=64 alg_flash_read=0 alg_flash_write=1 MAX_DATA=";
        for (const QString maxData : {"1", "59", "64", "300"}) {
            tableRow(qPrintable("flash " + maxData), smallFlash + "MAX_DATA=" + maxData, 0x123, 1001);
            tableRow(qPrintable("AVR odd start " + maxData), avr + maxData, 0x123, 200);
            tableRow(qPrintable("AVR odd end " + maxData), avr + maxData, 0x120, 201);
        }
        tableRow("AVR first line", "avr MAX_DATA=100", 0xFF81, 0x101);
        tableRow("AVR third line", "avr MAX_DATA=256", 0x2FF00, 0x203);
    }

    void fileRoundTrip()
    {
        QFETCH(QString, chip);
        QFETCH(int, addr);
        QFETCH(int, count);
        DeviceBench bench(chip);
        const bool isAvr = chip.startsWith("avr");
        const QString word = isAvr ? "flash_file_" : "file_";
        Model model(0x40000, chip.contains("flash_page_size=64") ? 64 : 256);
        const QByteArray content = pattern(count);
        bench.dir().write("in", content);
        const auto run = [&](const QString& action, const QString& file, const QString& format) {
            const QString form = " file=%1 format=%2 addr_device=%3 count=%4 addr_file=%5";
            const int fileAddr = format == "HEX" ? addr : 0;
            const QString params = form.arg(file, format).arg(addr).arg(count).arg(fileAddr);
            const auto result = bench.runWith(word + action + params, chipOf(model, isAvr));
            return result.ok ? "ok" + result.events.join(' ') : result.errorText;
        };
        QCOMPARE(run("write", "in", "BIN"), QString("ok"));
        QVERIFY(model.memory == QByteArray(0x40000, char(0xFF)).replace(addr, count, content));
        QCOMPARE(run("verify", "in", "BIN"), QString("ok"));
        QCOMPARE(run("read", "out", "BIN"), QString("ok"));
        QCOMPARE(bench.dir().read("out"), content);
        QCOMPARE(run("read", "out.hex", "HEX"), QString(addr + count > 0x10000 ? "ok3:@HexSegments" : "ok"));
        QCOMPARE(run("verify", "out.hex", "HEX"), QString("ok"));
        model.memory.fill(char(0xFF));
        QCOMPARE(run("write", "out.hex", "HEX"), QString("ok"));
        QVERIFY(model.memory == QByteArray(0x40000, char(0xFF)).replace(addr, count, content));
        model.memory[addr + 70] = char(~model.memory[addr + 70]);
        const QString place = "Address: 0x" + QString::number(addr + 70, 16).toUpper() + ",";
        QCOMPARE(run("verify", "out.hex", "HEX").left(place.size()), place);
    }

    void fileWithoutData()
    {
        DeviceBench bench(smallFlash);
        bench.dir().write("HEX%2", hexRecords(0x900, pattern(16)) + hexEnd);
        bench.dir().write("BIN%2", {});
        for (const QString word : {"file_write", "file_verify"}) {
            for (const QString format : {"HEX", "BIN"}) {
                const QString param = " count=2048 format=" + format + " file=";
                const auto result = bench.play({word + param + format + "%2"}, {});
                QVERIFY2(result.ok, qPrintable(result.errorText));
                QCOMPARE(result.events, QStringList{"3:@FileNoData " + format + "%2"});
                QVERIFY(bench.play({word + param + "none"}, {}).errorText.startsWith("@FileNotFound"));
            }
        }
    }

    void stopEndsTheRange()
    {
        DeviceBench bench(smallFlash + "MAX_DATA=256");
        Model flash(0x1000);
        flash.memory = pattern(0x1000);
        const PercentHook stop = [](IDeviceExec& exec, int percent) {
            if (percent >= 50)
                exec.slotStop();
        };
        bench.onPercent = stop;
        const QByteArray half = flash.memory.left(0x800);
        const auto read = [&](const QString& format, const QByteArray& after, const QString& event) {
            bench.dir().write("out", "old");
            const auto result = bench.runWith("file_read file=out format=" + format, chipOf(flash));
            QVERIFY(result.ok);
            compareRow(format, bench.dir().read("out"), after);
            compareRow(format, result.events, QStringList(event));
        };
        read("HEX", "old", "3:@FileUntouched out");
        read("BIN", "old", "3:@FileUntouched out");
        read("BIN+", half, "3:@FileHoldsPart out");
        bench.onPercent = [](IDeviceExec& exec, int percent) {
            if (percent >= 100)
                exec.slotStop(); // too late
        };
        const auto whole = bench.runWith("file_read format=BIN file=out", chipOf(flash));
        QVERIFY(whole.ok && whole.events.isEmpty() && bench.dir().read("out") == flash.memory);
        bench.onPercent = stop;
        QCOMPARE(bench.runWith("erase", chipOf(flash)).percents, (QList<int>{0, 25, 50}));
        QVERIFY(bench.runWith("data_read addr_device=0xFE data=00~00~00~00", chipOf(flash)).ok);
        QCOMPARE(bench.result(), QString::fromLatin1(flash.memory.mid(0xFE, 2).toHex(' ').toUpper()));
    }

    // A pipe that takes nothing: a stop does not wait for its other end, and is no failure.
    void stopAtAPipe()
    {
        DeviceBench bench("dev25 size=0x2000 MAX_DATA=256");
        const QByteArray pipe = QFile::encodeName(bench.dir().file("pipe"));
        QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
        const int reader = ::open(pipe.constData(), O_RDONLY | O_NONBLOCK);
        fcntl(reader, F_SETPIPE_SZ, 4096);
        QElapsedTimer timer;
        timer.start();
        bench.onPercent = [](IDeviceExec& exec, int) {
            QTimer::singleShot(50, &exec, &IDeviceExec::slotStop);
        };
        Model flash(0x2000);
        const auto result = bench.runWith("file_read file=pipe format=HEX", chipOf(flash));
        ::close(reader);
        QVERIFY2(result.ok, qPrintable(result.errorText));
        QCOMPARE(result.events, QStringList("3:@FileHoldsPart pipe"));
        QVERIFY(timer.elapsed() < 10000);
    }

    // Nothing comes to the chip before the file can be written, and the old one stays when it cannot be read.
    void failedRead()
    {
        DeviceBench bench(smallFlash + "MAX_DATA=256");
        Model flash(0x800); // shorter than its description
        bench.dir().write("out", "old");
        const auto result = bench.runWith("file_read file=out format=BIN", chipOf(flash));
        QVERIFY(!result.ok && result.errorText.isEmpty());
        QCOMPARE(result.events, QStringList("3:@FileUntouched out"));
        QCOMPARE(bench.dir().read("out"), QByteArray("old"));
        flash.pieces.clear();
        QVERIFY(bench.runWith("file_read file=no/out", chipOf(flash)).errorText.startsWith("@FileNotFound"));
        QVERIFY(bench.runWith("file_read file=/dev/full", chipOf(flash)).errorText.startsWith("@DiskFull"));
        QCOMPARE(flash.pieces, QStringList("R 0+256"));
    }
};

QTEST_GUILESS_MAIN(TestOperation)
#include "test_operation.moc"
