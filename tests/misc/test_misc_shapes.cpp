#include "core/IFormFactory.h"
#include "core/TAppData.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "core/keys.h"
#include "link/TProg.h"
#include "misc/TNormCmdParam.h"
#include "misc/dev_misc.h"
#include "support/BenchProject.h"

#include <QtTest>

#include <limits>

namespace {

/// The form of command 7 shows "C0FFEE" as its result.
class ResultForm : public IFormFactory
{
public:
    QWidget* createForm(const IDevice&, const TData&) override { return nullptr; }
    QWidget* createDeviceForm(const IDevice&, const TData&) override { return nullptr; }
    bool resultText(QWidget*, int id_cmd, QString& text) override
    {
        text = QStringLiteral("C0FFEE");
        return id_cmd == 7;
    }
};

QByteArray logFile()
{
    QFile file(fileInAppDir(QStringLiteral("log")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const TData chipKeys{
    {key::prg_section, "CHIP"}, {key::reset_pol, 0}, {key::addr_begin, 0}, {key::size, 1024U}};

} // namespace

/// The parameter shapes: reading, checks, defaults, and what needs the command's chip and programmer.
class TestMiscShapes : public QObject
{
    Q_OBJECT

private slots:
    void missingParamIsLoggedInDebugOnly();
    void regions();
    void charCheck_data();
    void charCheck();
    void dataCheck_data();
    void dataCheck();
    void fileCheck_data();
    void fileCheck();
    void textsAndDefaults();
    void resultOfTheOpenForm();
    void readersOfExecutors();
    void leaveWithoutChipOrProgrammer();
    void leaveFitsThePins();
    void leaveCheck_data();
    void leaveCheck();
    void leavePulse_data();
    void leavePulse();
    void clockCheck_data();
    void clockCheck();
    void clockOnTheWire();
};

void TestMiscShapes::missingParamIsLoggedInDebugOnly()
{
    const TData data{{key::count, 5}};
    QFile::remove(fileInAppDir(QStringLiteral("log")));
    for (const int debug : {0, 2}) {
        appData().Debug = debug;
        QVERIFY(!getParam("some/file", 12, data, key::addr).isValid());
    }
    QCOMPARE(logFile(), QByteArray());
    appData().Debug = 1;
    QCOMPARE(getParam("some/file", 12, data, key::count).toInt(), 5);
    QVERIFY(!getParam("some/file", 12, data, key::addr).isValid());
    appData().Debug = 0;
    QVERIFY(logFile().endsWith(" Error Param some/file, 12: addr not found\n"));
    QCOMPARE(logFile().count('\n'), 1);
}

void TestMiscShapes::regions()
{
    const BenchChip chip(QStringLiteral("chip"), {{key::addr_begin, 1U},
                                                  {key::size, Q_UINT64_C(1) << 40},
                                                  {key::flash_addr_begin, 3},
                                                  {key::flash_size, 4},
                                                  {key::eeprom_addr_begin, 5},
                                                  {key::eeprom_size, 6}});
    TData data;
    defaultChar(data, chip, Region::Whole);
    QCOMPARE(data.value(key::count).toLongLong(), qint64(1) << 40);
    QCOMPARE(data.value(key::fill_char).toUInt(), 255U);
    defaultFile(data, chip, Region::Flash);
    QCOMPARE(data.value(key::addr_device).toLongLong(), qint64(3));
    QCOMPARE(data.value(key::count).toLongLong(), qint64(4));
    defaultData(data, chip, Region::Eeprom);
    QCOMPARE(data.value(key::addr_device).toLongLong(), qint64(5));
    data[key::data] = QStringLiteral("112233445566");
    QVERIFY(validData(data, chip, Region::Eeprom));
    QVERIFY(!validData(data, chip, Region::Flash));
    QVERIFY(!validChar(data, chip, Region::Flash));
}

void TestMiscShapes::charCheck_data()
{
    QTest::addColumn<QString>("addr");
    QTest::addColumn<QString>("count");
    QTest::addColumn<bool>("valid");
    // The region is 0x100..0x1FF.
    QTest::newRow("whole") << "256"
                           << "256" << true;
    QTest::newRow("last byte") << "511"
                               << "1" << true;
    QTest::newRow("none at the last address") << "511"
                                              << "0" << true;
    QTest::newRow("none behind it") << "512"
                                    << "0" << false;
    QTest::newRow("one too many") << "256"
                                  << "257" << false;
    QTest::newRow("before") << "255"
                            << "1" << false;
    QTest::newRow("negative count") << "300"
                                    << "-1" << false;
    QTest::newRow("sum turns round") << "511"
                                     << "9223372036854775807" << false;
    QTest::newRow("address from the moon") << "9223372036854775807"
                                           << "1" << false;
    QTest::newRow("smallest address") << "-9223372036854775808"
                                      << "1" << false;
    QTest::newRow("no number") << "x"
                               << "1" << false;
}

void TestMiscShapes::charCheck()
{
    QFETCH(QString, addr);
    QFETCH(QString, count);
    QFETCH(bool, valid);
    TData data{{key::addr_device, addr}, {key::count, count}, {key::fill_char, "255"}};
    QCOMPARE(validChar(data, 256, 256), valid);
    data.insert(key::file, "a.bin");
    data.insert(key::format, "bin");
    data.insert(key::addr_file, "0");
    QCOMPARE(validFile(data, 256, 256), valid);
    QVERIFY(!validChar(data, std::numeric_limits<qint64>::min(), 256));
}

void TestMiscShapes::dataCheck_data()
{
    QTest::addColumn<QString>("addr");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::newRow("one byte at the end") << "511"
                                         << "aF" << true;
    QTest::newRow("two bytes at the end") << "511"
                                          << "aFaF" << false;
    QTest::newRow("blanks do not count") << "510"
                                         << " a Fa F  " << true;
    QTest::newRow("empty") << "256"
                           << "" << false;
    QTest::newRow("blanks only") << "256"
                                 << "  " << true;
    QTest::newRow("odd") << "256"
                         << "AB C" << false;
    QTest::newRow("no digit") << "256"
                              << "AG" << false;
    QTest::newRow("other white space") << "256"
                                       << "AB\t" << false;
    QTest::newRow("sum turns round") << "9223372036854775807"
                                     << "ABCD" << false;
    QTest::newRow("negative address") << "-1"
                                      << "AB" << false;
}

void TestMiscShapes::dataCheck()
{
    QFETCH(QString, addr);
    QFETCH(QString, text);
    QTEST(validData({{key::addr_device, addr}, {key::data, text}}, 256, 256), "valid");
}

void TestMiscShapes::fileCheck_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("addr");
    QTest::addColumn<bool>("valid");
    QTest::newRow("HEX") << "HEX"
                         << "4294967295" << true;
    QTest::newRow("hex, too far") << "hex"
                                  << "4294967296" << false;
    QTest::newRow("bin") << "bin"
                         << "9223372036854775807" << true;
    QTest::newRow("Bin+") << "Bin+"
                          << "4294967296" << true;
    QTest::newRow("negative") << "bin"
                              << "-1" << false;
    QTest::newRow("unknown") << "elf"
                             << "0" << false;
    QTest::newRow("no format") << ""
                               << "0" << false;
}

void TestMiscShapes::fileCheck()
{
    QFETCH(QString, format);
    QFETCH(QString, addr);
    TData data{{key::format, format},
               {key::file, "f"},
               {key::addr_file, addr},
               {key::addr_device, "0"},
               {key::count, "1"}};
    QTEST(validFile(data, 0, 1), "valid");
    data[key::file] = QString();
    QVERIFY(!validFile(data, 0, 1));
}

void TestMiscShapes::textsAndDefaults()
{
    TData data;
    defaultChar(data, 16, 32, 0x1A5);
    QCOMPARE(textChar(data), QStringLiteral("0x10..0x2F :0xA5"));
    defaultFile(data, 1, 2);
    QCOMPARE(data.value(key::format).toString(), QStringLiteral("HEX"));
    data[key::format] = QStringLiteral("bin+");
    data[key::file] = QStringLiteral("%1 %2.bin");
    QCOMPARE(textFile(data), QStringLiteral("BIN+: %1 %2.bin"));
    QCOMPARE(textClk({{key::clk, "1500000"}}), QStringLiteral("1.5 MHz"));
}

void TestMiscShapes::resultOfTheOpenForm()
{
    ResultForm factory;
    setFormFactory(&factory);
    int form = 0; // only its address is used
    auto* widget = reinterpret_cast<QWidget*>(&form);
    TData data{{key::id_cmd, 7}, {key::addr_device, 0}, {key::data, "11"}};
    QCOMPARE(textData(data, cmd::data_read, widget), QStringLiteral("0x00..0x02 :C0FFEE"));
    QCOMPARE(textData(data, cmd::data_write, widget), QStringLiteral("0x00..0x00 :11"));
    QCOMPARE(textData(data, cmd::data_read, nullptr), QStringLiteral("0x00..0x00 :11"));
    data[key::id_cmd] = 8;
    QCOMPARE(textData(data, cmd::data_read, widget), QStringLiteral("0x00..0x00 :11"));
    setFormFactory(nullptr);
}

void TestMiscShapes::readersOfExecutors()
{
    const BenchProject bench;
    project().fromData({{key::prj_file, bench.dir().file("p.prj")}, {key::work_path, "/work/path"}});
    const TData data{{key::addr_device, "16"}, {key::count, "0"},        {key::fill_char, "511"},
                     {key::data, "AB cd 01"},  {key::file, "sub/a.hex"}, {key::format, "HEX"},
                     {key::addr_file, "5"}};
    qint64 addr_file = 0;
    qint64 first = 0;
    qint64 last = 0;
    quint8 fill = 0;
    execChar(data, first, last, fill);
    QCOMPARE(first, qint64(16));
    QCOMPARE(last, qint64(15));
    QCOMPARE(int(fill), 255);
    QByteArray bytes;
    QString text;
    execData(data, first, last, bytes, text);
    QCOMPARE(last, qint64(18));
    QCOMPARE(bytes, QByteArray("\xAB\xCD\x01"));
    QCOMPARE(text, QStringLiteral("AB cd 01"));
    QString path;
    execFile(data, addr_file, first, last, path, text);
    QCOMPARE(addr_file, qint64(5));
    QCOMPARE(path, QStringLiteral("/work/path/sub/a.hex"));
    QCOMPARE(text, QStringLiteral("hex"));
}

void TestMiscShapes::leaveWithoutChipOrProgrammer()
{
    BenchProject bench;
    const int lone = bench.add(cmd::leave, {{key::state, "HI"}});
    QCOMPARE(leaveState(lone), QStringLiteral("HI"));
    QCOMPARE(leaveStateAny(lone), QStringLiteral("HI"));
    QVERIFY(!validLeave(bench.data(lone), false));
    QCOMPARE(leaveState(99), QString());
    bench.add(cmd::set_prog, {{key::prog, "bench"}});
    const int chipless = bench.add(cmd::set_io, {{key::state, "HI"}});
    QCOMPARE(leaveState(chipless), QStringLiteral("HI"));
    QCOMPARE(leaveStateAny(chipless), QStringLiteral("HI-"));
    TData data = bench.data(lone);
    defaultLeave(data, true);
    QCOMPARE(data.value(key::duration).toInt(), 0);
}

void TestMiscShapes::leaveFitsThePins()
{
    BenchProject bench;
    bench.setChip(chipKeys);
    bench.addProgAndChip();
    const int shorter = bench.add(cmd::leave, {{key::state, "HZ"}});
    QCOMPARE(textLeave(bench.data(shorter), false), QStringLiteral("HZ-"));
    QCOMPARE(leavePayload(shorter, false).toHex(), QByteArray("0000050800"));
    const int longer = bench.add(cmd::leave, {{key::state, "?LIHL"}});
    QCOMPARE(leavePayload(longer, false).toHex(), QByteArray("0000000401"));
    TData data = bench.data(longer);
    defaultLeave(data, true);
    QCOMPARE(data.value(key::state).toString(), QString());
    QCOMPARE(data.value(key::reset).toBool(), true);
    QCOMPARE(data.value(key::duration).toInt(), -400);
}

void TestMiscShapes::leaveCheck_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<bool>("positive");
    QTest::addColumn<QString>("duration");
    QTest::addColumn<bool>("plain");
    QTest::addColumn<bool>("withReset");
    QTest::newRow("good") << "-IHL" << false << "-400" << true << true;
    QTest::newRow("empty state") << "" << false << "-10" << true << true;
    QTest::newRow("foreign letter") << "o" << false << "-400" << false << false;
    QTest::newRow("wrong sign") << "H" << false << "400" << true << false;
    QTest::newRow("positive") << "H" << true << "1000" << true << true;
    QTest::newRow("zero") << "H" << true << "0" << true << false;
    QTest::newRow("too short") << "H" << true << "9" << true << false;
    QTest::newRow("too long") << "H" << false << "-1001" << true << false;
    QTest::newRow("smallest") << "H" << false << "-2147483648" << true << false;
}

void TestMiscShapes::leaveCheck()
{
    QFETCH(QString, state);
    QFETCH(bool, positive);
    QFETCH(QString, duration);
    BenchProject bench;
    TData chip = chipKeys;
    chip[key::reset_pol] = positive ? 1 : 0;
    bench.setChip(chip);
    bench.addProgAndChip();
    const int id =
        bench.add(cmd::leave, {{key::state, state}, {key::reset, "true"}, {key::duration, duration}});
    QTEST(validLeave(bench.data(id), false), "plain");
    QTEST(validLeave(bench.data(id), true), "withReset");
}

void TestMiscShapes::leavePulse_data()
{
    QTest::addColumn<QString>("reset");
    QTest::addColumn<int>("duration");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("text");
    QTest::newRow("negative") << "true" << -400 << QByteArray("70fe000000") << "-400 ms, ---";
    QTest::newRow("positive") << "true" << 258 << QByteArray("0201000000") << "258 ms, ---";
    QTest::newRow("off") << "false" << 400 << QByteArray("0000000000") << "---";
    QTest::newRow("beyond the field") << "true" << 40000 << QByteArray("ff7f000000") << "40000 ms, ---";
    QTest::newRow("below the field") << "true" << -40000 << QByteArray("0080000000") << "-40000 ms, ---";
}

void TestMiscShapes::leavePulse()
{
    QFETCH(QString, reset);
    QFETCH(int, duration);
    BenchProject bench;
    bench.setChip(chipKeys);
    bench.addProgAndChip();
    const int id = bench.add(cmd::leave, {{key::state, ""}, {key::reset, reset}, {key::duration, duration}});
    QTEST(leavePayload(id, true).toHex(), "payload");
    QTEST(textLeave(bench.data(id), true), "text");
}

void TestMiscShapes::clockCheck_data()
{
    QTest::addColumn<QString>("clk");
    QTest::addColumn<bool>("free");
    QTest::addColumn<bool>("listed");
    QTest::newRow("lowest") << "1000" << true << false;
    QTest::newRow("highest") << "20000000" << true << false;
    QTest::newRow("too low") << "999" << false << false;
    QTest::newRow("too high") << "20000001" << false << false;
    QTest::newRow("zero") << "0" << false << false;
    QTest::newRow("in the list") << "2000000" << true << true;
    QTest::newRow("in the list, out of limits") << "40000000" << false << false;
}

void TestMiscShapes::clockCheck()
{
    QFETCH(QString, clk);
    for (const bool isList : {false, true}) {
        BenchProject bench;
        bench.setChip(chipKeys);
        bench.setProg(isList ? "CLK_LIST=true\nCLKLV_2000000=6\nCLKLV_40000000=7\n" : "");
        bench.addProgAndChip();
        const int id = bench.add(cmd::set_clk, {{key::clk, clk}});
        QTEST(validClk(bench.data(id)), isList ? "listed" : "free");
    }
}

void TestMiscShapes::clockOnTheWire()
{
    BenchProject bench;
    bench.setChip(chipKeys);
    bench.setProg("CLK_LIST=true\nCLKLV_2000000=6\n");
    const int lone = bench.add(cmd::set_clk, {{key::clk, 2000000}});
    QCOMPARE(execClk(bench.data(lone)), 0);
    QVERIFY(!validClk(bench.data(lone)));
    bench.addProgAndChip();
    const int id = bench.add(cmd::set_clk, {{key::clk, 2000000}});
    QCOMPARE(execClk(bench.data(id)), 6);
    TData data = bench.data(id);
    defaultClk(data, QStringLiteral("CHIP"));
    QCOMPARE(data.value(key::clk).toInt(), 1000000);
    data = bench.data(lone);
    defaultClk(data, QStringLiteral("CHIP"));
    QCOMPARE(data.value(key::clk).toInt(), 0);
}

QTEST_GUILESS_MAIN(TestMiscShapes)
#include "test_misc_shapes.moc"
