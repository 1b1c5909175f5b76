// I2C EEPROM: control byte and address bytes, pages, the pins, and what the catalogue says of it.

#include "DeviceBench.h"
#include "core/keys.h"
#include "devices/TDev24.h"

#include <QtTest>

namespace {

/// A 24C16 on a bus; changes make other chips of it.
TData description(const TData& changes = {})
{
    TData data{{key::addr_begin, 0}, {key::size, 0x800},   {key::page_size, 16}, {key::addr_size, 1U},
               {key::addr_mask, 5U}, {key::delay, 0x105U}, {key::cfg_hw, 7U},    {key::prg_section, "I2C"}};
    for (auto it = changes.begin(); it != changes.end(); ++it)
        data.insert(it.key(), it.value());
    return data;
}

TData big(const TData& changes = {})
{
    TData data = description({{key::size, 0x20000}, {key::page_size, 128}, {key::addr_size, 2U}});
    for (auto it = changes.begin(); it != changes.end(); ++it)
        data.insert(it.key(), it.value());
    return data;
}

TData at(qint64 addr, const QString& data)
{
    return {{key::addr_device, addr}, {key::data, data}};
}

} // namespace

class TestDev24 : public QObject
{
    Q_OBJECT

private slots:
    void frames_data();
    void frames();
    void failures_data();
    void failures();
    void eraseWritesByPages();
    void pins_data();
    void pins();
    void pinsForm();
    void catalogue();
};

void TestDev24::frames_data()
{
    QTest::addColumn<TData>("chip");
    QTest::addColumn<QString>("key");
    QTest::addColumn<TData>("param");
    QTest::addColumn<QStringList>("script");
    const auto row = [](const char* name, const TData& chip, QLatin1String key, const TData& param,
                        const QStringList& script) {
        QTest::newRow(name) << chip << QString(key) << param << script;
    };
    row("last byte of 2 KiB", description(), cmd::data_read, at(0x7FF, "00"), {"05 0100 AE FF > A1"});
    row("two address bytes", big(), cmd::data_read, at(0x1234, "00 00"), {"05 0200 A0 1234 > A1B2"});
    row("block bit above them", big(), cmd::data_verify, at(0x1FFFF, "A1"), {"05 0100 A2 FFFF > A1"});
    row("write over a page", description(), cmd::data_write, at(0x10F, "A1B2"),
        {"04 A2 0F A1 >", "04 A2 10 B2 >"});
    row("pins that are there", description(), cmd::set_addr, {{key::addr, 7}}, {"03 0A >"});
    row("no pins", description({{key::addr_mask, 0U}}), cmd::set_addr, {{key::addr, 7}}, {"03 00 >"});
    row("clock", description(), cmd::set_clk, {{key::clk, 400000}}, {"02 801A0600 >"});
    row("leave", description(), cmd::leave, {}, {"01 0000 >"});
    row("blank check", description({{key::size, 3}}), cmd::test_empty, {}, {"05 0300 A0 00 > FFFFFF"});
}

void TestDev24::frames()
{
    QFETCH(TData, chip);
    QFETCH(QString, key);
    QFETCH(TData, param);
    QFETCH(QStringList, script);
    DeviceBench bench(new TDev24("chip", chip), 64);
    const auto result = bench.play(bench.command(key, param), script);
    QCOMPARE(result.error, QString());
    QVERIFY(result.ok);
}

void TestDev24::failures_data()
{
    QTest::addColumn<TData>("chip");
    QTest::addColumn<QString>("key");
    QTest::addColumn<TData>("param");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const TData& chip, QLatin1String key, const TData& param,
                        const QString& error = {}) {
        QTest::newRow(name) << chip << QString(key) << param << error;
    };
    row("no address byte", description({{key::addr_size, 0U}}), cmd::data_write, at(0, "00"));
    row("three address bytes", description({{key::addr_size, 3U}}), cmd::data_read, at(0, "00"));
    row("other read", description({{key::alg_read, 1}}), cmd::test_empty, {});
    row("other write", description({{key::alg_write, 1}}), cmd::erase, {});
    row("more than the block bits name", description({{key::size, 0x1000}}), cmd::data_write, at(0x800, "00"),
        "@425");
    row("no page", description({{key::page_size, 0}}), cmd::erase, {}, "@424");
    row("no size", description({{key::size, 0}}), cmd::test_empty, {}, "@424");
}

void TestDev24::failures()
{
    QFETCH(TData, chip);
    QFETCH(QString, key);
    QFETCH(TData, param);
    DeviceBench bench(new TDev24("chip", chip), 64);
    const auto result = bench.play(bench.command(key, param), {});
    QVERIFY(!result.ok);
    QTEST(result.error, "error");
}

void TestDev24::eraseWritesByPages()
{
    const QString eight = QStringLiteral("FF").repeated(8);
    DeviceBench bench(new TDev24("chip", description({{key::addr_begin, 4}, {key::size, 36}})), 8);
    const auto result =
        bench.play(bench.command(cmd::erase),
                   {"04 A0 04 FFFFFFFF >", "04 A0 08 " + eight + " >", "04 A0 10 " + eight + " >",
                    "04 A0 18 " + eight + " >", "04 A0 20 " + eight + " >"});
    QVERIFY2(result.ok && result.error.isEmpty(), qPrintable(result.error));
    QCOMPARE(result.percents.last(), 100);
}

void TestDev24::pins_data()
{
    QTest::addColumn<int>("addr");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::newRow("0") << 0 << "Address: 0-0" << true;
    QTest::newRow("5") << 5 << "Address: 1-1" << true;
    QTest::newRow("6") << 6 << "Address: 1-0" << true;
    QTest::newRow("8") << 8 << "Address: 0-0" << false;
    QTest::newRow("-1") << -1 << "Address: 1-1" << false;
}

void TestDev24::pins()
{
    QFETCH(int, addr);
    DeviceBench bench(new TDev24("chip", description()), 64,
                      "[I2C]\nCLK_MIN=1\nCLK_MAX=400000\nCLK_DEF=100000\n");
    const TData command = bench.command(cmd::set_addr, {{key::addr, addr}});
    QTEST(bench.device().paramsText(command, nullptr), "text");
    QTEST(bench.device().checkParams(command), "valid");
    TData device = bench.command(cmd::set_clk);
    QVERIFY(bench.device().setDeviceDefaults(device));
    QCOMPARE(device.value(key::addr).toInt(), 0);
    device[key::addr] = addr;
    QTEST(bench.device().checkDeviceParams(device), "valid");
    device[key::clk] = 400001;
    QVERIFY(!bench.device().checkDeviceParams(device));
}

void TestDev24::pinsForm()
{
    DeviceBench bench(new TDev24("chip", description()), 64);
    const auto& device = static_cast<const TDev24&>(bench.device());
    const TData command = bench.command(cmd::set_addr, {{key::addr, 6}});
    const TFormSpec spec = device.formSpec(command);
    QCOMPARE(spec.items, (QStringList{"frm+", "grp+|@369", "ckl|04|-|e|-|A2||", "ckl|02|-|-|-|NC||",
                                      "ckl|01|-|e|-|A0||", "grp-", "frm-"}));
    QCOMPARE(spec.value + spec.defaultValue, QString("0400"));
    const QVariant id = command.value(key::id_cmd);
    const TData edit{{key::id_cmd, id}, {key::data, "05"}};
    QCOMPARE(device.normalizeParams(edit), (TData{{key::id_cmd, id}, {key::addr, 5}}));
    const TData other = bench.command(cmd::data_write, at(1, "05"));
    QCOMPARE(device.normalizeParams(other), other);
}

void TestDev24::catalogue()
{
    DeviceBench bench(new TDev24("chip", description()), 64);
    QCOMPARE(bench.device().commandKeys().size(), 16);
    QVERIFY(!bench.device().hasCommand(cmd::ident) && !bench.device().hasReset());
    const TData data = bench.command(cmd::set_clk, {{key::clk, 0x01020304}, {key::addr, 3}});
    QCOMPARE(bench.device().deviceParamBlock(data), QByteArray::fromHex("000007030403020105"));
    TData copy = data;
    QVERIFY(!bench.device().refreshParams(copy));
    bench.readsId = true;
    QVERIFY(bench.play(data, {}).ok);
    QVERIFY(bench.readId.isEmpty());
}

QTEST_GUILESS_MAIN(TestDev24)
#include "test_dev24.moc"
