#include "base/keys.h"
#include "misc/TNormCmdParam.h"
#include "misc/dev_misc.h"
#include "support/BenchProject.h"
#include "support/tables.h"

#include <limits>

namespace {

constexpr qint64 greatest = std::numeric_limits<qint64>::max();
constexpr qint64 smallest = std::numeric_limits<qint64>::min();

} // namespace

/// The shapes of parameters, and how values look in the table and in the log.
class TestMisc : public QObject
{
    Q_OBJECT

private slots:
    void sizesAndFrequencies()
    {
        QStringList texts;
        for (const qint64 n : {0LL, 1000LL, 1LL << 10, 1536LL, 192LL << 10, 384LL << 10, 768LL << 10,
                               1LL << 20, 512LL << 30, 1LL << 49, -1024LL})
            texts += textSize(n);
        QCOMPARE(texts.join(", "),
                 QString("0 byte, 1000 byte, 1 Kbyte, 1536 byte, 192 Kbyte, 384 Kbyte, 768 Kbyte, 1 Mbyte, "
                         "512 Gbyte, 512 Tbyte, -1024 byte"));
        texts.clear();
        for (const qint64 hz : {0, 999, 1000, 999999, 1500000, 1000000000})
            texts += textFreq(hz);
        QCOMPARE(texts.join(","), QString("0 Hz,999 Hz,1 KHz,999.999 KHz,1.5 MHz,1000000000 "));
        QCOMPARE(textFreqDuty(1000, 25), QString("1 KHz, 25 %"));
    }

    void rangesAndNumbers()
    {
        QCOMPARE(textRange(0x100, 0x10000, 0xA), QString("0x100..0x100FF :0x0A"));
        QCOMPARE(textRange(1, qint64(1) << 40, 0xFF), QString("0x01..0x10000000000 :0xFF"));
        QCOMPARE(textRange(5, 1, 0xFF), QString("0x05..0x05 :0xFF"));
        QCOMPARE(textRangeHex(0x10, "aabb  cc"), QString("0x10..0x12 :AABB CC"));
        QCOMPARE(textRangeHex(0, "ABC"), QString("0x00..0x01 :ABC"));
        QCOMPARE(textFirstBytes(" aa  bb"), QString("aa bb"));
        QCOMPARE(textFirstBytes(QString("A1 ").repeated(32)), QString("A1 ").repeated(32).trimmed());
        QCOMPARE(textFirstBytes(QString("A1 ").repeated(33)), QString("A1 ").repeated(32).trimmed() + "...");
        QCOMPARE(textCompare(0x1234, 0xF0, 0x0F), QString("Address: 0x1234, Data: 0xF0, Read: 0x0F"));
        QCOMPARE(hexToBytes(" A b\tC\nd "), QByteArray("\xAB\xCD"));
        QCOMPARE(bytesToHex(QByteArray("\x00\xAB\x7F", 3)), QString("00AB7F"));
        QCOMPARE(lastAddress(7, 0), qint64(6));
        QCOMPARE(lastAddress(7, smallest), qint64(6));
        QCOMPARE(lastAddress(2, greatest), greatest);
        QCOMPARE(lastAddress(-5, greatest), greatest - 6);
        QCOMPARE(lastAddress(smallest, 0), smallest);
    }

    void blanksOfAPattern()
    {
        const QByteArray bytes("\x12\xAB\x34");
        QStringList texts;
        for (const char* pattern : {"0000", "00 00 00", " 0  00", "00 ", "00 00 00 00 ", ""})
            texts += bytesToHexLike(pattern, bytes);
        QCOMPARE(texts.join('|'), QString("12AB34|12 AB 34| 1  2AB34|12 AB34|12 AB 34|12AB34"));
        // Minutes, if every blank moved the rest of the text.
        const int n = 2000000;
        QCOMPARE(bytesToHexLike(QString("00 ").repeated(n), QByteArray(n, 'Z')),
                 QString("5A ").repeated(n).trimmed());
    }

    void ranges()
    {
        const auto row = [](const char* name, const char* addr, const char* count, bool valid) {
            const TData data{{key::addr_device, addr}, {key::count, count},  {key::fill_char, "255"},
                             {key::file, "a.bin"},     {key::format, "bin"}, {key::addr_file, "0"}};
            compareRow(name, validChar(data, 256, 256), valid);
            compareRow(name, validFile(data, 256, 256), valid);
        };
        row("last byte", "511", "1", true);
        row("below the first", "255", "1", false);
        row("nothing, at the last byte", "511", "0", true);
        row("nothing, behind it", "512", "0", false);
        row("one too many", "256", "257", false);
        row("negative count", "300", "-1", false);
        row("sum turns round", "511", "9223372036854775807", false);
        row("smallest address", "-9223372036854775808", "1", false);
    }

    void hexTexts()
    {
        const auto valid = [](const char* addr, const char* text) {
            return validData({{key::addr_device, addr}, {key::data, text}}, 256, 256);
        };
        QVERIFY(valid("511", "aF") && !valid("511", "aFaF"));
        QVERIFY(valid("510", " a Fa F  "));
        QVERIFY(!valid("256", "") && !valid("256", "AB C") && !valid("256", "AG") && !valid("256", "AB\t"));
        QVERIFY(!valid("9223372036854775807", "ABCD") && !valid("-1", "AB"));
    }

    void fileFormats()
    {
        const auto valid = [](const char* format, const char* addr, const char* file = "f") {
            return validFile({{key::format, format},
                              {key::file, file},
                              {key::addr_file, addr},
                              {key::addr_device, "0"},
                              {key::count, "1"}},
                             0, 1);
        };
        QVERIFY(valid("HEX", "4294967295") && !valid("hex", "4294967296"));
        QVERIFY(valid("bin", "9223372036854775807") && valid("Bin+", "4294967296"));
        QVERIFY(!valid("bin", "-1") && !valid("elf", "0") && !valid("", "0") && !valid("bin", "0", ""));
        QCOMPARE(textFile({{key::format, "bin+"}, {key::file, "%1 %2"}}), QString("BIN+: %1 %2"));
    }

    void leave()
    {
        const auto row = [](const QString& state, bool polarity, const QString& duration, bool plain,
                            bool withReset, const QByteArray& payload) {
            BenchProject bench;
            bench.setChip({{key::prg_section, "CHIP"}, {key::reset_pol, polarity}});
            TData params{{key::state, state}, {key::reset, "true"}, {key::duration, duration}};
            const int lone = bench.add(cmd::leave, params);
            QVERIFY(leaveState(lone) == state && leaveStateAny(lone) == state &&
                    !validLeave(bench.data(lone), false));
            bench.addProg();
            const int chipless = bench.add(cmd::leave, params);
            QVERIFY(leaveState(chipless) == state && leaveStateAny(chipless) == padState(state, 3));
            bench.addChip();
            const int id = bench.add(cmd::leave, params);
            compareRow(state, validLeave(bench.data(id), false), plain);
            compareRow(state, validLeave(bench.data(id), true), withReset);
            compareRow(state, leavePayload(id, true).toHex(), payload);
            compareRow(state, textLeave(bench.data(id), true), duration + " ms, " + padState(state, 3));
            params[key::reset] = "false";
            const int off = bench.add(cmd::leave, params);
            compareRow(state, leavePayload(off, true).left(2), QByteArray(2, '\0'));
            compareRow(state, textLeave(bench.data(off), true), padState(state, 3));
        };
        row("-IH", false, "-400", true, true, "70fe000105");
        row("o?IHL", false, "-400", false, false, "70fe060001"); // letters that this programmer has not
        row("", false, "400", true, false, "9001000000");
        row("", false, "0", true, false, "0000000000");
        row("", true, "40000", true, false, "ff7f000000"); // keeps its sign
        row("", false, "-2147483648", true, false, "0080000000");
    }

    void clocks()
    {
        for (const bool isList : {false, true}) {
            BenchProject bench;
            bench.setChip({{key::prg_section, "CHIP"}});
            bench.setProg(isList ? "CLK_LIST=true\nCLKLV_2000000=6\nCLKLV_40000000=7\n" : "");
            const int lone = bench.add(cmd::set_clk, {{key::clk, 2000000}});
            QVERIFY(execClk(bench.data(lone)) == 0 && !validClk(bench.data(lone)));
            bench.addProg();
            bench.addChip();
            const int id = bench.add(cmd::set_clk, {{key::clk, "2000000"}});
            QCOMPARE(execClk(bench.data(id)), isList ? 6 : 2000000);
            auto valid = [data = bench.data(id)](int hz) mutable {
                data[key::clk] = hz;
                return validClk(data);
            };
            QVERIFY(valid(2000000) && !valid(40000000) && !valid(999) && !valid(0));
            QVERIFY(valid(1000) != isList && valid(20000000) != isList);
        }
    }
};

QTEST_GUILESS_MAIN(TestMisc)
#include "test_misc.moc"
