// AVR: every instruction byte by byte with its echo, whole words, pages and the lines of 64 KiB.

#include "DeviceBench.h"
#include "core/keys.h"
#include "devices/TDevAVR8.h"

#include <QtTest>

namespace {

TData with(TData data, const TData& changes)
{
    for (auto it = changes.begin(); it != changes.end(); ++it)
        data.insert(it.key(), it.value());
    return data;
}

/// A chip of the size of an ATmega2560; pacing bytes that tell the commands apart.
TData description(const TData& changes = {})
{
    const TData data{{key::signature, "1E9801"}, {key::cfg_cmd_list, 2},
                     {key::flash_size, 0x40000}, {key::flash_page_size, 256},
                     {key::eeprom_size, 4096},   {key::alg_flash_read, 1},
                     {key::alg_flash_write, 2},  {key::alg_fuse_read, 1},
                     {key::alg_fuse_write, 2},   {key::alg_lock_read, 1},
                     {key::alg_lock_write, 1},   {key::fuse_def, "6299FF"},
                     {key::lock_def, "FF"},      {key::osccal_def, "0000"},
                     {key::flash_delay, 0x105U}, {key::eeprom_polling, 1U},
                     {key::erase_delay, 0x0AU},  {key::fuse_polling, 1U},
                     {key::lock_delay, 0x0BU},   {key::osccal_cfg, QStringList{"frm+", "frm-"}},
                     {key::prg_section, "SPI"}};
    return with(data, changes);
}

/// The small flash without extended address of most parts.
TData small(const TData& changes = {})
{
    return with(description({{key::flash_size, 0x2000},
                             {key::flash_page_size, 64},
                             {key::alg_flash_read, 0},
                             {key::alg_flash_write, 1}}),
                changes);
}

TData at(qint64 addr, const QString& data)
{
    return {{key::addr_device, addr}, {key::data, data}};
}

TData file(const QString& name, qint64 addr, qint64 count)
{
    return {{key::file, name},
            {key::format, "BIN"},
            {key::addr_file, 0},
            {key::addr_device, addr},
            {key::count, count}};
}

/// The chip as the data sheets have it: words gather in the page buffer, a commit programs their page,
/// and programming only clears bits. Without pages a write programs at once.
struct Avr
{
    explicit Avr(int size, int page)
        : flash(size, char(0xFF))
        , pageSize(page)
    {
    }

    bool operator()(quint8 opcode, const QByteArray& payload, QByteArray& reply)
    {
        const int low = uchar(payload[0]) | uchar(payload[1]) << 8;
        if (opcode == 3) {
            const int n = uchar(payload[2]) | uchar(payload[3]) << 8;
            if ((low + n - 1) >> 16 != 0)
                return false; // the counter would wrap
            reply = flash.mid(ext << 16 | low, n);
        } else if (opcode == 4) {
            const QByteArray data = payload.mid(2);
            if (low % 2 != 0 || data.size() % 2 != 0)
                return false;
            writes.append(data.size());
            for (int i = 0; i < data.size(); ++i)
                buffer.insert(low + i, data[i]);
            if (pageSize == 0)
                commit(ext << 16 | low);
        } else if (opcode == 7 && uchar(payload[1]) == 0x4D) {
            ext = uchar(payload[3]);
        } else if (opcode == 7 && uchar(payload[1]) == 0x4C) {
            const int word = uchar(payload[2]) << 8 | uchar(payload[3]);
            commit(ext << 16 | (word * 2 & 0xFFFF));
        }
        return true;
    }

    void commit(int addr)
    {
        const int size = pageSize == 0 ? 0x10000 : pageSize;
        for (auto it = buffer.begin(); it != buffer.end(); ++it) {
            char& cell = flash.data()[addr / size * size + it.key() % size];
            cell = char(cell & it.value());
        }
        buffer.clear();
    }

    QByteArray flash;
    int pageSize;
    int ext = 0;
    QMap<int, char> buffer;
    QList<int> writes;
};

} // namespace

class TestAvr : public QObject
{
    Q_OBJECT

private slots:
    void frames_data();
    void frames();
    void failures_data();
    void failures();
    void extendedAddressIsRemembered();
    void readsChipId();
    void roundTrip_data();
    void roundTrip();
    void commandLists_data();
    void commandLists();
    void deviceBlock_data();
    void deviceBlock();
    void catalogue();
};

void TestAvr::frames_data()
{
    QTest::addColumn<TData>("chip");
    QTest::addColumn<QString>("key");
    QTest::addColumn<TData>("param");
    QTest::addColumn<QStringList>("script");
    QTest::addColumn<QString>("data");
    const auto row = [](const char* name, const TData& chip, QLatin1String key, const TData& param,
                        const QStringList& script, const QString& data) {
        QTest::newRow(name) << chip << QString(key) << param << script << data;
    };
    row("signature", description(), cmd::ident, {},
        {"07 0030000000 > 0030001E", "07 0030000100 > 00300098", "07 0030000200 > 00300001"}, "");
    row("erase", description(), cmd::erase, {}, {"07 0AAC800000 > 00AC8000"}, "");
    row("leave", description(), cmd::leave, {{key::reset, true}, {key::duration, -300}}, {"01 D4FE >"}, "");
    row("set clock", description(), cmd::set_clk, {{key::clk, 1000000}}, {"02 40420F00 >"}, "");

    // The first read of a link and every read at 0 say where they are.
    row("read 0", small(), cmd::flash_data_read, at(0x1234, "0000"), {"03 34120200 > A1B2"}, "A1B2");
    row("read 1", description(), cmd::flash_data_read, at(0x1234, "0000"),
        {"07 004D000000 > 004D0000", "03 34120200 > A1B2"}, "A1B2");
    row("read 1 high", description(), cmd::flash_data_read, at(0x31234, "00"),
        {"07 004D000300 > 004D0000", "03 34120100 > A1"}, "A1");
    row("read 1 line", description(), cmd::flash_data_read, at(0x1FFFF, "0000"),
        {"07 004D000100 > 004D0000", "03 FFFF0100 > A1", "07 004D000200 > 004D0001", "03 00000100 > B2"},
        "A1B2");

    row("write 0", small({{key::alg_flash_write, 0}}), cmd::flash_data_write, at(0x1234, "A1B2"),
        {"04 3412A1B2 >"}, "A1B2");
    row("write 1", small(), cmd::flash_data_write, at(0x1234, "A1B2"), {"04 3412A1B2 >", "07 054C091A00 >"},
        "A1B2");
    row("write 2", description(), cmd::flash_data_write, at(0x3FFFE, "A1B2"),
        {"07 004D000300 >", "04 FEFFA1B2 >", "07 054CFFFF00 >"}, "A1B2");
    row("write odd start", small(), cmd::flash_data_write, at(0x11, "A1"),
        {"04 1000FFA1 >", "07 054C000800 >"}, "A1");
    row("write odd end", small(), cmd::flash_data_write, at(0x10, "A1"), {"04 1000A1FF >", "07 054C000800 >"},
        "A1");
    row("write odd both", small(), cmd::flash_data_write, at(0x3F, "A1B2"),
        {"04 3E00FFA1 >", "07 054C001F00 >", "04 4000B2FF >", "07 054C002000 >"}, "A1B2");
    row("write without pages", small({{key::flash_page_size, 0}, {key::alg_flash_write, 0}}),
        cmd::flash_data_write, at(0x3F, "A1B2C3"), {"04 3E00FFA1 >", "04 4000B2C3 >"}, "A1B2C3");
    row("commit without pages", small({{key::flash_page_size, 0}}), cmd::flash_data_write, at(0x10, "A1B2C3"),
        {"04 1000A1B2 >", "07 054C000800 >", "04 1200C3FF >", "07 054C000900 >"}, "A1B2C3");

    row("EEPROM read", description(), cmd::eeprom_data_read, at(0x123, "00 00"), {"05 23010200 > A1B2"},
        "A1 B2");
    // 32 bytes whatever the description's page.
    row("EEPROM write", description({{key::eeprom_page_size, 8}}), cmd::eeprom_data_write,
        at(0x11E, "A1B2C3"), {"06 1E01A1B2 >", "06 2001C3 >"}, "A1B2C3");

    row("fuse read 0", description({{key::alg_fuse_read, 0}}), cmd::fuse_read, {},
        {"07 0058000000 > 005800FF"}, "21");
    row("fuse read 1", description(), cmd::fuse_read, {},
        {"07 0050000000 > 00500062", "07 0058080000 > 00580899", "07 0050080000 > 005008FE"}, "6299FE");
    row("fuse verify", description({{key::fuse_def, "62"}}), cmd::fuse_verify, {{key::data, "6A"}},
        {"07 0050000000 > 0050006A"}, "6A");
    row("fuse write 0", description({{key::alg_fuse_write, 0}, {key::fuse_def, "21"}}), cmd::fuse_write,
        {{key::data, "20"}}, {"07 FFACBE0000 > 00ACBE00"}, "20");
    row("fuse write 1", description({{key::alg_fuse_write, 1}, {key::fuse_def, "1F"}}), cmd::fuse_write,
        {{key::data, "FF"}}, {"07 FFACBF0000 > 00ACBF00"}, "FF");
    row("fuse write 2", description(), cmd::fuse_write, {{key::data, "6A99FD"}},
        {"07 FFACA0006A > 00ACA000", "07 FFACA80099 > 00ACA800", "07 FFACA400FD > 00ACA400"}, "6A99FD");

    row("lock read 0", description({{key::alg_lock_read, 0}}), cmd::lock_read, {},
        {"07 0058000000 > 005800DF"}, "04");
    row("lock read 1", description(), cmd::lock_read, {}, {"07 0058000000 > 005800DF"}, "DF");
    row("lock verify", description(), cmd::lock_verify, {{key::data, "DF"}}, {"07 0058000000 > 005800DF"},
        "DF");
    row("lock write 0", description({{key::alg_lock_write, 0}}), cmd::lock_write, {{key::data, "F9"}},
        {"07 0BACF90000 > 00ACF900"}, "F9");
    row("lock write 1", description(), cmd::lock_write, {{key::data, "FC"}}, {"07 0BACE000FC > 00ACE000"},
        "FC");
    row("calibration", description(), cmd::osccal_read, {},
        {"07 0038000000 > 003800A1", "07 0038000100 > 003800B2"}, "A1B2");
}

void TestAvr::frames()
{
    QFETCH(TData, chip);
    QFETCH(QString, key);
    QFETCH(TData, param);
    QFETCH(QStringList, script);
    DeviceBench bench(new TDevAVR8_SPI("chip", chip), 64);
    const auto result = bench.play(bench.command(key, param), script);
    QCOMPARE(result.error, QString());
    QVERIFY(result.ok);
    QCOMPARE(result.requests.size(), script.size());
    QTEST(result.data, "data");
}

void TestAvr::failures_data()
{
    QTest::addColumn<TData>("chip");
    QTest::addColumn<QString>("key");
    QTest::addColumn<TData>("param");
    QTest::addColumn<QStringList>("script");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const TData& chip, QLatin1String key, const TData& param,
                        const QStringList& script = {}, const QString& error = {}) {
        QTest::newRow(name) << chip << QString(key) << param << script << error;
    };
    const TData fuses{{key::data, "6299FF"}};
    row("no chip", description(), cmd::ident, {}, {"07 0030000000 > FFFFFFFF"}, "@404");
    row("second echo", description(), cmd::ident, {}, {"07 0030000000 > 0030FF1E"}, "@404");
    row("third echo of a write", description(), cmd::erase, {}, {"07 0AAC800000 > 00AC80FF"}, "@404");
    row("echo of the value", description({{key::alg_lock_write, 0}}), cmd::lock_write, {{key::data, "F9"}},
        {"07 0BACF90000 > 00ACFF00"}, "@404");
    row("short reply", description(), cmd::lock_read, {}, {"07 0058000000 > 005800"});
    row("other chip", description(), cmd::ident, {},
        {"07 0030000000 > 0030001E", "07 0030000100 > 00300095", "07 0030000200 > 0030000F"},
        "Read signature: 1E950F (@400)");
    row("fuses differ", description(), cmd::fuse_verify, fuses,
        {"07 0050000000 > 00500062", "07 0058080000 > 00580899", "07 0050080000 > 005008FE"},
        "Fuse Bits: Data: 6299FF, Read: 6299FE");
    row("lock differs", description(), cmd::lock_verify, {{key::data, "FF"}}, {"07 0058000000 > 005800FC"},
        "Fuse Bits: Data: FF, Read: FC");
    row("fuse bytes missing", description(), cmd::fuse_write, {{key::data, "6299"}});
    row("four fuse bytes", description({{key::fuse_def, "01020304"}}), cmd::fuse_write,
        {{key::data, "01020304"}});
    row("no fuse byte", description({{key::fuse_def, ""}, {key::alg_fuse_write, 0}}), cmd::fuse_write,
        {{key::data, ""}});
    row("no lock byte", description(), cmd::lock_write, {{key::data, ""}});
    row("no calibration", description({{key::osccal_def, ""}}), cmd::osccal_read, {});
    row("fuse write 3", description({{key::alg_fuse_write, 3}}), cmd::fuse_write, fuses);
    row("flash write 3", description({{key::alg_flash_write, 3}}), cmd::flash_data_write, at(0, "A1"));
    row("ident 1", description({{key::alg_ident, 1}}), cmd::ident, {});
    row("erase 1", description({{key::alg_erase, 1}}), cmd::erase, {});
    row("calibration 1", description({{key::alg_osccal_read, 1}}), cmd::osccal_read, {});
    row("EEPROM read 1", description({{key::alg_eeprom_read, 1}}), cmd::test_empty_eeprom, {});
    row("EEPROM write 1", description({{key::alg_eeprom_write, 1}}), cmd::eeprom_char_write, {});
    row("beyond 16 bits", description({{key::alg_flash_write, 1}}), cmd::flash_data_write, at(0x10000, "A1"),
        {}, "@425");
    row("negative page", description({{key::flash_page_size, -1}}), cmd::flash_data_write, at(0, "A1"), {},
        "@424");
}

void TestAvr::failures()
{
    QFETCH(TData, chip);
    QFETCH(QString, key);
    QFETCH(TData, param);
    QFETCH(QStringList, script);
    DeviceBench bench(new TDevAVR8_SPI("chip", chip), 64);
    const auto result = bench.play(bench.command(key, param), script);
    QVERIFY(!result.ok);
    QTEST(result.error, "error");
}

void TestAvr::extendedAddressIsRemembered()
{
    DeviceBench bench(new TDevAVR8_SPI("chip", description()), 64);
    const auto read = [&](qint64 addr) { return bench.command(cmd::flash_data_read, at(addr, "00")); };
    const auto write = [&](qint64 addr) { return bench.command(cmd::flash_data_write, at(addr, "0000")); };
    // A read at 0 says it again, a write at 0 does not.
    const auto result =
        bench.play({read(0x10000), write(0x10010), read(0x1FFFF), read(2), read(0), write(0)},
                   {"07 004D000100 >", "03 00000100 > FF", "04 10000000 >", "07 054C800800 >",
                    "03 FFFF0100 > FF", "07 004D000000 >", "03 02000100 > FF", "07 004D000000 >",
                    "03 00000100 > FF", "04 00000000 >", "07 054C000000 >"});
    QVERIFY2(result.ok && result.error.isEmpty(), qPrintable(result.error));
}

void TestAvr::readsChipId()
{
    DeviceBench bench(new TDevAVR8_SPI("chip", description()), 64);
    bench.readsId = true;
    QVERIFY(bench
                .play(bench.command(cmd::ident),
                      {"07 0030000000 > 0030001E", "07 0030000100 > 00300095", "07 0030000200 > 0030000F"})
                .ok);
    QCOMPARE(bench.readId, QString("1E950F"));
}

void TestAvr::roundTrip_data()
{
    QTest::addColumn<int>("maxData");
    QTest::addColumn<TData>("chip");
    QTest::addColumn<int>("addr");
    QTest::addColumn<int>("count");
    for (const int maxData : {1, 59, 60, 64, 300}) {
        QTest::addRow("odd start, %d", maxData) << maxData << small() << 0x123 << 200;
        QTest::addRow("odd end, %d", maxData) << maxData << small() << 0x120 << 201;
        QTest::addRow("without pages, %d", maxData)
            << maxData << small({{key::flash_page_size, 0}, {key::alg_flash_write, 0}}) << 0x123 << 201;
    }
    for (const int maxData : {100, 256}) {
        QTest::addRow("first line, %d", maxData) << maxData << description() << 0xFF81 << 0x101;
        QTest::addRow("third line, %d", maxData) << maxData << description() << 0x2FF00 << 0x203;
    }
}

void TestAvr::roundTrip()
{
    QFETCH(int, maxData);
    QFETCH(TData, chip);
    QFETCH(int, addr);
    QFETCH(int, count);
    const int size = chip.value(key::flash_size).toInt();
    const int page = chip.value(key::flash_page_size).toInt();
    Avr avr(size, page);
    const DeviceBench::Chip answer = [&avr](quint8 opcode, const QByteArray& payload, QByteArray& reply) {
        return avr(opcode, payload, reply);
    };
    DeviceBench bench(new TDevAVR8_SPI("chip", chip), maxData);
    QByteArray content(count, 0);
    for (int i = 0; i < count; ++i)
        content[i] = char(i * 3 + 1);
    bench.dir().write("in", content);
    const auto written = bench.runWith(bench.command(cmd::flash_file_write, file("in", addr, count)), answer);
    QVERIFY2(written.ok, qPrintable(written.error));
    QCOMPARE(avr.flash, QByteArray(size, char(0xFF)).replace(addr, count, content));
    QVERIFY(*std::max_element(avr.writes.begin(), avr.writes.end()) <= qMax(2, maxData));
    const auto verified =
        bench.runWith(bench.command(cmd::flash_file_verify, file("in", addr, count)), answer);
    QVERIFY2(verified.ok, qPrintable(verified.error));
}

void TestAvr::commandLists_data()
{
    QTest::addColumn<QVariant>("number");
    QTest::addColumn<QStringList>("missing");
    const QStringList most{cmd::fuse_read, cmd::fuse_write,  cmd::fuse_verify,
                           cmd::lock_read, cmd::lock_verify, cmd::osccal_read};
    QTest::newRow("0") << QVariant(0) << most;
    QTest::newRow("missing") << QVariant() << most;
    QTest::newRow("1") << QVariant(1) << QStringList{cmd::osccal_read};
    QTest::newRow("2") << QVariant(2) << QStringList();
}

void TestAvr::commandLists()
{
    QFETCH(QVariant, number);
    QFETCH(QStringList, missing);
    const TDevAVR8_SPI all("chip", description());
    const TDevAVR8_SPI device("chip", description({{key::cfg_cmd_list, number}}));
    QCOMPARE(all.commandKeys().size(), 36);
    QCOMPARE(device.commandKeys().size(), 36 - missing.size());
    for (const QString& key : all.commandKeys())
        QCOMPARE(device.hasCommand(key), key != cmd::separator && !missing.contains(key));
}

void TestAvr::deviceBlock_data()
{
    QTest::addColumn<TData>("changes");
    QTest::addColumn<QByteArray>("pacing");
    QTest::newRow("pages") << TData() << QByteArray::fromHex("00FF");
    QTest::newRow("no pages") << TData{{key::flash_page_size, 0}} << QByteArray::fromHex("05FF");
    QTest::newRow("no pages, polling")
        << TData{{key::flash_page_size, 0}, {key::flash_polling, 1U}, {key::eeprom_polling, 0U}}
        << QByteArray::fromHex("FF00");
}

void TestAvr::deviceBlock()
{
    QFETCH(TData, changes);
    QFETCH(QByteArray, pacing);
    DeviceBench bench(new TDevAVR8_SPI("chip", description(changes)), 64);
    QCOMPARE(bench.device().deviceParamBlock(bench.command(cmd::set_clk, {{key::clk, 1000000}})),
             QByteArray::fromHex("00000040420F00") + pacing);
}

void TestAvr::catalogue()
{
    DeviceBench bench(new TDevAVR8_SPI("chip", description()), 64, "[Reset]\nMIN=10\nMAX=500\nDEF=-300\n");
    const IDevice& device = bench.device();
    QVERIFY(device.hasReset());
    QCOMPARE(device.deviceValue(key::reset_pol), QVariant(false));
    QCOMPARE(bench.command(cmd::flash_char_write).value(key::count).toInt(), 0x40000);
    QCOMPARE(bench.command(cmd::eeprom_file_read).value(key::count).toInt(), 4096);
    const TData leave = bench.command(cmd::leave);
    QCOMPARE(device.paramsText(leave, nullptr), QString("-300 ms, "));
    QVERIFY(device.checkParams(leave));
    QVERIFY(!device.checkParams(bench.command(cmd::leave, {{key::duration, 300}})));
    QVERIFY(!device.checkParams(bench.command(cmd::eeprom_data_write, at(4096, "00"))));
    for (const QString& key : device.commandKeys()) {
        TData data = bench.command(key, {{key::data, "old"}});
        const bool isRegister =
            key.startsWith("fuse_") || key.startsWith("lock_") || key.startsWith("osccal_");
        QCOMPARE(device.refreshParams(data), isRegister);
    }
    const auto& family = static_cast<const TDevAVR8_SPI&>(device);
    QVERIFY(!family.formSpec(bench.command(cmd::osccal_read)).showEdit);
    QCOMPARE(family.formSpec(bench.command(cmd::osccal_read)).defaultValue, QString("0000"));
}

QTEST_GUILESS_MAIN(TestAvr)
#include "test_avr.moc"
