// Microwire EEPROM: a whole catalogue, of which two commands run.

#include "DeviceBench.h"
#include "core/keys.h"
#include "devices/TDev93C.h"

#include <QtTest>

namespace {

const char progLines[] = "[MW]\nCLK_LIST=true\nCLK_MIN=1\nCLK_MAX=1000000\nCLK_DEF=500000\nCLKLV_500000=3\n";

TDev93C* chip()
{
    return new TDev93C("chip", {{key::addr_begin, 0}, {key::size, 128}, {key::prg_section, "MW"}});
}

} // namespace

class TestDev93C : public QObject
{
    Q_OBJECT

private slots:
    void clockAndErase();
    void otherCommandsFail();
    void catalogue();
};

void TestDev93C::clockAndErase()
{
    DeviceBench bench(chip(), 64, progLines);
    // The clock itself, though the programmer has a level for it.
    const auto result =
        bench.play({bench.command(cmd::set_clk), bench.command(cmd::erase)}, {"02 20A10700 >", "03 >"});
    QVERIFY2(result.ok && result.error.isEmpty(), qPrintable(result.error));
    const auto refused = bench.runWith(bench.command(cmd::erase),
                                       [](quint8, const QByteArray&, QByteArray&) { return false; });
    QCOMPARE(refused.error, QString("@408"));
}

void TestDev93C::otherCommandsFail()
{
    DeviceBench bench(chip(), 64, progLines);
    for (const QString& key : bench.device().commandKeys()) {
        if (key == cmd::set_clk || key == cmd::erase)
            continue;
        const auto result = bench.play(bench.command(key), {});
        QVERIFY2(!result.ok && result.error.isEmpty(), qPrintable(key + result.error));
    }
}

void TestDev93C::catalogue()
{
    DeviceBench bench(chip(), 64, progLines);
    const IDevice& device = bench.device();
    QCOMPARE(device.commandKeys().size(), 16);
    QVERIFY(device.hasCommand(cmd::unlock));
    TData data = bench.command(cmd::set_clk);
    QCOMPARE(data.value(key::clk).toInt(), 500000);
    QVERIFY(device.checkParams(data) && device.checkParams(bench.command(cmd::lock)));
    QVERIFY(!device.checkParams(bench.command(cmd::char_write, {{key::count, 129}})));
    QVERIFY(!device.refreshParams(data));
    QVERIFY(device.deviceParamBlock(data).isEmpty());
    QVERIFY(device.setDeviceDefaults(data));
    QCOMPARE(device.paramsText(bench.command(cmd::char_verify), nullptr), QString("0x00..0x7F :0xFF"));
}

QTEST_GUILESS_MAIN(TestDev93C)
#include "test_dev93c.moc"
