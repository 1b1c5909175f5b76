// Serial flash: every frame byte by byte, the rules of its registers, and what the catalogue says of it.

#include "DeviceBench.h"
#include "core/keys.h"
#include "devices/TDev25.h"
#include "misc/TNormCmdParam.h"

#include <QtTest>

namespace {

TData description(const TData& changes = {})
{
    TData data{{key::signature, "EF4017"},
               {key::addr_begin, qint64(0)},
               {key::size, qint64(0x800000)},
               {key::page_size, 256U},
               {key::erase, "D8|65536"},
               {key::erase_blocks, QStringList{"20|4096", "52|32768", "bad", "D8|65536", "21|4096"}},
               {key::status_reg_def, "000260"},
               {key::status_reg_cfg, QStringList{"frm+", "frm-"}},
               {key::security_reg_size, qint64(768)},
               {key::sfdp_reg_size, qint64(256)},
               {key::prg_section, "SPI"},
               {key::cfg_hw, 0x1A5U}};
    for (auto it = changes.begin(); it != changes.end(); ++it)
        data.insert(it.key(), it.value());
    return data;
}

const char progLines[] =
    "[SPI]\nCLK_LIST=true\nCLK_MIN=1\nCLK_MAX=16000000\nCLK_DEF=8000000\nCLKLV_8000000=66051\n"
    "[Pins]\n1=\"SPI_CS, 1\"\n";

TData file(const QString& name, qint64 addr, qint64 count)
{
    return {{key::file, name},
            {key::format, "BIN"},
            {key::addr_file, 0},
            {key::addr_device, addr},
            {key::count, count}};
}

QString hexOf(int n, const char* byte)
{
    return QString::fromLatin1(byte).repeated(n);
}

} // namespace

class TestDev25 : public QObject
{
    Q_OBJECT

private slots:
    void frames_data();
    void frames();
    void failures_data();
    void failures();
    void otherAlgorithms_data();
    void otherAlgorithms();
    void identNamesTheChip();
    void readsChipId();
    void wholeChipErase();
    void commandList();
    void defaults_data();
    void defaults();
    void texts_data();
    void texts();
    void checks_data();
    void checks();
    void refresh();
    void deviceBlock();
    void maskFromForm();
    void generatedForms();
};

void TestDev25::frames_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<TData>("param");
    QTest::addColumn<QStringList>("script");
    QTest::addColumn<QString>("data");
    const auto row = [](QLatin1String key, const TData& param, const QStringList& script,
                        const QString& data = {}) {
        QTest::addRow("%s %s", key.data(), qPrintable(script.value(0).left(30)))
            << QString(key) << param << script << data;
    };
    row(cmd::set_clk, {{key::clk, 8000000}}, {"02 03020100 >"});
    row(cmd::ident, {}, {"03 03009F > EF4017"});
    row(cmd::leave, {}, {"01 0000 >"});
    row(cmd::data_read, {{key::addr_device, 0x123456}, {key::data, "00 00"}}, {"03 0200 0B123456 00 > A10F"},
        "A1 0F");
    row(cmd::data_write, {{key::addr_device, 0x7FFFFE}, {key::data, "A1B2"}}, {"04 027FFFFE A1B2 >"}, "A1B2");
    row(cmd::erase_blocks, {{key::size, 65536}, {key::begin, 2}, {key::count, 2}},
        {"04 D8020000 >", "04 D8030000 >"});
    // Of two commands for one size the last one is meant.
    row(cmd::erase_blocks, {{key::size, 4096}, {key::begin, 1}, {key::count, 1}}, {"04 21001000 >"});
    row(cmd::erase_blocks, {{key::size, 4096}, {key::begin, 1}, {key::count, 0}}, {});
    row(cmd::test_empty_blocks, {{key::size, 4}, {key::begin, 3}, {key::count, 2}},
        {"03 0800 0B00000C 00 > " + hexOf(8, "FF")});
    row(cmd::status_reg_read, {}, {"03 010005 > 1C", "03 010035 > 02", "03 010015 > 60"}, "1C0260");
    row(cmd::status_reg_write, {{key::data, "1c 02 61"}}, {"04 011C >", "04 3102 >", "04 1161 >"},
        "1c 02 61");
    row(cmd::status_reg_verify, {{key::data, "1C0260"}},
        {"03 010005 > 1C", "03 010035 > 02", "03 010015 > 60"}, "1C0260");
    row(cmd::security_reg_erase, {{key::data, "5"}}, {"04 44001000 >", "04 44003000 >"}, "5");
    row(cmd::security_reg_test_empty, {{key::data, 4}}, {"03 0001 48003000 00 > " + hexOf(256, "FF")}, "4");
    row(cmd::security_reg_test_empty, {{key::data, 0}}, {}, "0");
    row(cmd::security_reg_verify, file("in", 0xFE, 4),
        {"03 0200 480010FE 00 > 3031", "03 0200 48002000 00 > 3233"});
    row(cmd::security_reg_write, file("in", 0x1FE, 4), {"04 420020FE 3031 >", "04 42003000 3233 >"});
    row(cmd::security_reg_read, file("out", 0x10, 2), {"03 0200 48001010 00 > AABB"});
    row(cmd::unique_id_read, {}, {"03 0800 4B00000000 > D164A95B0F9C2A37"}, "D164A95B0F9C2A37");
    row(cmd::sfdp_reg_read, file("out", 0x10, 2), {"03 0200 5A000010 00 > 5346"});
}

void TestDev25::frames()
{
    QFETCH(QString, key);
    QFETCH(TData, param);
    QFETCH(QStringList, script);
    QFETCH(QString, data);
    DeviceBench bench(new TDev25("chip", description()), 4096, progLines);
    bench.dir().write("in", "0123");
    const auto result = bench.play(bench.command(key, param), script);
    QCOMPARE(result.error, QString());
    QVERIFY(result.ok);
    QCOMPARE(result.requests.size(), script.size());
    QCOMPARE(result.data, data);
}

void TestDev25::failures_data()
{
    QTest::addColumn<TData>("changes");
    QTest::addColumn<QString>("key");
    QTest::addColumn<TData>("param");
    QTest::addColumn<QStringList>("script");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const TData& changes, QLatin1String key, const TData& param,
                        const QStringList& script = {}, const QString& error = {}) {
        QTest::newRow(name) << changes << QString(key) << param << script << error;
    };
    const TData blocks{{key::size, 8192}, {key::begin, 0}, {key::count, 1}};
    row("size without a command", {}, cmd::erase_blocks, blocks);
    row("command that is no byte", {{key::erase_blocks, QStringList{"xy|8192", "1D8|8192"}}},
        cmd::erase_blocks, blocks);
    row("erase of one field", {{key::erase, "D8"}}, cmd::erase, {});
    row("erase of three fields", {{key::erase, "D8|65536|1"}}, cmd::erase, {});
    row("erase of no bytes", {{key::erase, "D8|0"}}, cmd::erase, {});
    row("four status registers", {{key::status_reg_def, "00000000"}}, cmd::status_reg_read, {});
    row("data of two registers", {}, cmd::status_reg_write, {{key::data, "0002"}});
    row("chip of two registers", {{key::status_reg_def, "0002"}}, cmd::status_reg_write,
        {{key::data, "0002"}});
    row("status is lower case", {}, cmd::status_reg_verify, {{key::data, "1c0260"}},
        {"03 010005 > 1C", "03 010035 > 02", "03 010015 > 60"}, "Registers: Data: 1c0260, Read: 1C0260");
    row("status reply of two bytes", {}, cmd::status_reg_read, {}, {"03 010005 > 1C1C"});
    row("status reply is missing", {}, cmd::status_reg_read, {}, {"03 010005 > 1C", "03 010035"}, "@389");
    row("unique ID too short", {}, cmd::unique_id_read, {}, {"03 0800 4B00000000 > D164A95B0F9C2A"});
    row("register is not empty", {}, cmd::security_reg_test_empty, {{key::data, 2}},
        {"03 0001 48002000 00 > " + hexOf(255, "FF") + "7F"}, "Address: 0x1FF, Data: 0xFF, Read: 0x7F");
    row("security register beyond the mask", {{key::security_reg_size, 5120}}, cmd::security_reg_write,
        file("in", 3840, 4), {}, "@425");
}

void TestDev25::failures()
{
    QFETCH(TData, changes);
    QFETCH(QString, key);
    QFETCH(TData, param);
    QFETCH(QStringList, script);
    DeviceBench bench(new TDev25("chip", description(changes)), 4096, progLines);
    bench.dir().write("in", "0123");
    const auto result = bench.play(bench.command(key, param), script);
    QVERIFY(!result.ok);
    QTEST(result.error, "error");
}

void TestDev25::otherAlgorithms_data()
{
    QTest::addColumn<QString>("alg");
    QTest::addColumn<QString>("key");
    QTest::addColumn<TData>("param");
    const auto row = [](QLatin1String alg, QLatin1String key, const TData& param = {}) {
        QTest::newRow(alg.data()) << QString(alg) << QString(key) << param;
    };
    row(key::alg_ident, cmd::ident);
    row(key::alg_erase, cmd::erase);
    row(key::alg_flash_read, cmd::test_empty);
    row(key::alg_flash_write, cmd::char_write);
    row(key::alg_status_reg_read, cmd::status_reg_read);
    row(key::alg_status_reg_write, cmd::status_reg_write);
    row(key::alg_security_reg_erase, cmd::security_reg_erase);
    row(key::alg_security_reg_read, cmd::security_reg_test_empty);
    row(key::alg_security_reg_write, cmd::security_reg_write, file("in", 0, 4));
    row(key::alg_fsdp_read, cmd::sfdp_reg_read, file("out", 0, 4));
    row(key::alg_unique_id_read, cmd::unique_id_read);
}

void TestDev25::otherAlgorithms()
{
    QFETCH(QString, alg);
    QFETCH(QString, key);
    QFETCH(TData, param);
    DeviceBench bench(new TDev25("chip", description({{alg, 1}})), 4096, progLines);
    bench.dir().write("in", "0123");
    const auto result = bench.play(bench.command(key, param), {});
    QVERIFY(!result.ok);
    QCOMPARE(result.error, QString());
}

void TestDev25::identNamesTheChip()
{
    DeviceBench probe(new TDev25("chip", description()), 64);
    const QString folder = probe.dir().write("chips/x.dev", {});
    probe.dir().write("chips/signature.lst",
                      "# list\n\nC22017 = no such key\n C22017=MX25L6406E\r\nC22017=later\n");
    const QStringList replies{"C22017", "EF40", "EF401700"};
    const QStringList errors{"C22017 (MX25L6406E)", "EF40 (@400)", "EF401700 (@400)"};
    for (int i = 0; i < replies.size(); ++i) {
        DeviceBench bench(new TDev25("chip", description({{key::dev_file, folder}})), 64);
        const auto result = bench.play(bench.command(cmd::ident), {"03 03009F > " + replies.at(i)});
        QVERIFY(!result.ok);
        QCOMPARE(result.error, "Read signature: " + errors.at(i));
    }
}

void TestDev25::readsChipId()
{
    DeviceBench bench(new TDev25("chip", description()), 64);
    bench.readsId = true;
    QVERIFY(bench.play(bench.command(cmd::ident), {"03 03009F > 0AbCdE"}).ok);
    QCOMPARE(bench.readId, QString("0ABCDE"));
}

void TestDev25::wholeChipErase()
{
    QStringList script;
    for (int i = 0; i < 128; ++i)
        script.append(QStringLiteral("04 D8 %1 0000 >").arg(i, 2, 16, QLatin1Char('0')));
    DeviceBench bench(new TDev25("chip", description()), 64);
    const auto result = bench.play(bench.command(cmd::erase), script);
    QVERIFY2(result.ok, qPrintable(result.error));
    QCOMPARE(result.percents.first(), 0);
    QCOMPARE(result.percents.last(), 99);
    // A chip smaller than what one command erases is left alone.
    DeviceBench small(new TDev25("chip", description({{key::size, 32768}})), 64);
    QVERIFY(small.play(small.command(cmd::erase), {}).ok);
}

void TestDev25::commandList()
{
    const TDev25 device("chip", description({{key::reset, true}}));
    const QStringList keys = device.commandKeys();
    QCOMPARE(keys.size(), 31);
    QCOMPARE(keys.count(cmd::separator), 6);
    QVERIFY(keys.first() == cmd::set_clk && keys.last() == cmd::leave);
    QVERIFY(device.hasCommand(cmd::sfdp_reg_read));
    QVERIFY(!device.hasCommand(cmd::separator) && !device.hasCommand(cmd::fuse_read));
    QVERIFY(!device.hasReset());
    QCOMPARE(device.info(), QStringList{QString()});
    QCOMPARE(device.commandTitle({{key::cmd, QString(cmd::data_read)}}), QString("Read (data)"));
}

void TestDev25::defaults_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<TData>("expected");
    const auto row = [](QLatin1String key, const TData& expected) {
        QTest::newRow(key.data()) << QString(key) << expected;
    };
    const auto file = [](qint64 count) {
        return TData{{key::file, ""},
                     {key::format, "HEX"},
                     {key::addr_file, 0},
                     {key::addr_device, 0},
                     {key::count, count}};
    };
    row(cmd::set_clk, {{key::clk, 8000000}});
    row(cmd::ident, {});
    row(cmd::erase_blocks, {{key::size, 65536}, {key::begin, 0}, {key::count, 128}});
    row(cmd::char_write, {{key::addr_device, 0}, {key::count, 0x800000}, {key::fill_char, 255}});
    row(cmd::data_read, {{key::addr_device, 0}, {key::data, ""}});
    row(cmd::file_write, file(0x800000));
    row(cmd::status_reg_write, {{key::data, "000260"}});
    row(cmd::security_reg_erase, {{key::data, 255}});
    row(cmd::security_reg_read, file(768));
    row(cmd::unique_id_read, {{key::data, "0000000000000000"}});
    row(cmd::sfdp_reg_read, file(256));
    row(cmd::leave, {{key::state, ""}});
}

void TestDev25::defaults()
{
    QFETCH(QString, key);
    QFETCH(TData, expected);
    DeviceBench bench(new TDev25("chip", description()), 64, progLines);
    const TData data = bench.command(key);
    for (auto it = expected.begin(); it != expected.end(); ++it)
        QCOMPARE(it.key() + data.value(it.key()).toString(), it.key() + it.value().toString());
    QCOMPARE(data.size(), expected.size() + 6);
}

void TestDev25::texts_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<TData>("param");
    QTest::addColumn<QString>("text");
    const auto row = [](QLatin1String key, const TData& param, const QString& text) {
        QTest::addRow("%s", qPrintable(key + " " + text)) << QString(key) << param << text;
    };
    row(cmd::set_clk, {}, "8 MHz");
    row(cmd::ident, {}, "Signature: EF4017");
    row(cmd::erase, {}, "");
    row(cmd::erase_blocks, {{key::begin, "1"}, {key::count, "2"}}, "0x10000..0x2FFFF (128 Kbyte)");
    row(cmd::char_write, {{key::count, 16}}, "0x00..0x0F :0xFF");
    row(cmd::data_write, {{key::data, "a1 b2"}}, "0x00..0x01 :A1 B2");
    row(cmd::file_read, {{key::file, "a.hex"}}, "HEX: a.hex");
    row(cmd::status_reg_read, {}, "000260");
    row(cmd::security_reg_erase, {{key::data, "6"}}, "Registers: 110");
    row(cmd::security_reg_test_empty, {{key::data, 255}}, "Registers: 111");
    row(cmd::unique_id_read, {}, "0000000000000000");
}

void TestDev25::texts()
{
    QFETCH(QString, key);
    QFETCH(TData, param);
    DeviceBench bench(new TDev25("chip", description()), 64, progLines);
    const QString text = bench.device().paramsText(bench.command(key, param), nullptr);
    QTEST(text, "text");
    QVERIFY(!bench.device().createForm(bench.command(key, param)));
}

void TestDev25::checks_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<TData>("param");
    QTest::addColumn<bool>("valid");
    const auto row = [](const char* name, QLatin1String key, const TData& param, bool valid) {
        QTest::newRow(name) << QString(key) << param << valid;
    };
    row("clock of the list", cmd::set_clk, {}, true);
    row("other clock", cmd::set_clk, {{key::clk, 7000000}}, false);
    row("whole chip", cmd::char_write, {}, true);
    row("past the chip", cmd::char_write, {{key::addr_device, 1}}, false);
    row("empty data", cmd::data_write, {}, false);
    row("no file", cmd::file_read, {}, false);
    row("security file", cmd::security_reg_read, file("x", 0, 768), true);
    row("past security", cmd::security_reg_read, file("x", 0, 769), false);
    row("past sfdp", cmd::sfdp_reg_read, file("x", 1, 256), false);
    row("blocks as they are", cmd::erase_blocks, {{key::begin, 9999}}, true);
    row("pin state", cmd::leave, {{key::state, "?"}}, false);
    row("unknown word", cmd::fuse_read, {}, false);
}

void TestDev25::checks()
{
    QFETCH(QString, key);
    QFETCH(TData, param);
    DeviceBench bench(new TDev25("chip", description()), 64, progLines);
    QTEST(bench.device().checkParams(bench.command(key, param)), "valid");
}

void TestDev25::refresh()
{
    DeviceBench bench(new TDev25("chip", description()), 64, progLines);
    for (const QString& key : bench.device().commandKeys()) {
        TData data = bench.command(key, {{key::data, "old"}});
        const bool isStatus = key.startsWith("status_reg");
        QCOMPARE(bench.device().refreshParams(data), isStatus);
        QCOMPARE(data.value(key::data).toString(), QString(isStatus ? "000260" : "old"));
    }
}

void TestDev25::deviceBlock()
{
    DeviceBench bench(new TDev25("chip", description()), 64, progLines);
    TData data = bench.command(cmd::set_clk);
    QVERIFY(bench.device().setDeviceDefaults(data));
    QVERIFY(bench.device().checkDeviceParams(data));
    // No types.lst here: family 0; the clock by its level.
    QCOMPARE(bench.device().deviceParamBlock(data), QByteArray::fromHex("0000A503020100"));
}

void TestDev25::maskFromForm()
{
    DeviceBench bench(new TDev25("chip", description()), 64);
    const auto edited = [&](const QString& key) {
        const TData command = bench.command(key);
        const TData edit{{key::id_cmd, command.value(key::id_cmd)}, {key::data, "10"}};
        return bench.device().normalizeParams(edit).value(key::data).toString();
    };
    QCOMPARE(edited(cmd::security_reg_erase), QString("16"));
    QCOMPARE(edited(cmd::status_reg_write), QString("10"));
}

void TestDev25::generatedForms()
{
    DeviceBench bench(new TDev25("chip", description()), 64, progLines);
    const auto* device = static_cast<const TDev25*>(&bench.device());
    const TFormSpec mask = device->formSpec(bench.command(cmd::security_reg_erase, {{key::data, 5}}));
    QCOMPARE(mask.items, (QStringList{"frm+", "ckl|01|-|e|-|Security Register #1 (0x00..0xFF)",
                                      "ckl|02|-|e|-|Security Register #2 (0x100..0x1FF)",
                                      "ckl|04|-|e|-|Security Register #3 (0x200..0x2FF)", "frm-"}));
    QCOMPARE(mask.value + mask.defaultValue, QString("0507"));
    QCOMPARE(device->formSpec(bench.command(cmd::erase_blocks)).blockSizes,
             (QList<int>{4096, 32768, 65536, 4096}));
    QVERIFY(device->formSpec(bench.command(cmd::status_reg_read)).showEdit);
    QVERIFY(device->formSpec(bench.command(cmd::erase)).kind == TFormSpec::Kind::None);

    DeviceBench plain(
        new TDev25("chip", description({{key::status_reg_cfg, QStringList()}, {key::security_reg_size, 0}})),
        64);
    device = static_cast<const TDev25*>(&plain.device());
    QVERIFY(device->formSpec(plain.command(cmd::status_reg_read)).kind == TFormSpec::Kind::None);
    QCOMPARE(device->formSpec(plain.command(cmd::security_reg_erase)).items, (QStringList{"frm+", "frm-"}));
    QCOMPARE(device->paramsText(plain.command(cmd::security_reg_erase), nullptr), QString("Registers: "));
    QVERIFY(plain.play(plain.command(cmd::security_reg_erase), {}).ok);
}

QTEST_GUILESS_MAIN(TestDev25)
#include "test_dev25.moc"
