#include "core/TAppData.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDevProg.h"
#include "support/BenchProject.h"
#include "support/tables.h"

#include <QtTest>

namespace {

// Command with a value for "*" | values that are good | values that are not. What rounds to the limit in
// tenths is inside.
const char limits[] = R"(
counter limit=0 delta=0 value=* | 0 2147483647 | -1 2147483648 9223372036854775807
counter value=0 delta=0 limit=* | 0 2147483647 | -1 2147483648
counter value=0 limit=0 delta=* | -2147483648 2147483647 | -2147483649 2147483648
delay value=* | 0 2147483647 | -1 2147483648
set_vcc vcc=* | 1.8 1.75 5 5.04 | 1.74 5.06 x nan inf 1e300
set_vpp vpp=* | 9 12.5 | 3.3
set_vicc vcc=3.3 icc=* | 1 200.04 | 200.06 0
set_vicc icc=10 vcc=* | 5 | 5.1
set_vipp vpp=12 ipp=* | 60 | 0.9 61
set_vipp ipp=12 vpp=* | 13 | 14
reset duration=* | -400 1000 | 0 5 -1001 -2147483648
set_io state=* | -IHL ------- | -o
set_freq duty_cycle=50 freq=* | 1000 8000000 | 999 8000001 4295967296
set_freq freq=1000 duty_cycle=* | 10 90 | 9 91
)";

// Command | its text in the table | valid or not. The command 0 is a set_prog in the configuration 0.
const char shown[] = R"(
counter value=5 limit=7 delta=-2 | Value: 5, Limit: 7, Delta: -2 | valid
delay value=1500 | 1500 ms | valid
process file=x | x | valid
process file= | | wrong
calc_crc crc_name=%2 file=%1.bin | %2: %1.bin | valid
jamp to_cmd=0 | "First"."Set Prog" | valid
jamp to_cmd=99 | | wrong
execute cfg=0 | First | valid
execute cfg=-1 | | wrong
set_prog prog=bench | bench: /dev/tty%2, Model | valid
set_prog prog=bench alt_enabled=true alt_port=other | bench: other, Model | valid
set_prog prog=unknown | unknown | wrong
auto_detect name=%2 execute=0 stop=1 | %2: Jamp, Stop | wrong
auto_detect name=A execute=2 stop=0 | A: Execute, Skip | wrong
reset duration=-400 | -400 ms | valid
set_io state=HILIL | HIL | valid
set_freq freq=1500000 duty_cycle=50 | 1.5 MHz | valid
set_vcc vcc=3.26 | 3.3 V | valid
set_vicc vcc=3.3 icc=0.0624 ocp=true | 3.3 V, 0.062 mA, OCP | wrong
set_vipp vpp=12.5 ipp=1000 ocp=false | 12.5 V, 1000.000 mA | wrong
)";

// Command | parameters of a new one | the same where no programmer and no command are in force.
const char defaults[] = R"(
set_prog | prog=bench alt_enabled=false alt_port= | prog= alt_enabled=false alt_port=
jamp | to_cmd=0 | to_cmd=-1
execute | cfg=-1 | cfg=-1
counter | value=0 limit=0 delta=1 | value=0 limit=0 delta=1
delay | value=100 | value=100
auto_detect | name= route= execute=0 stop=1 | name= route= execute=0 stop=1
reset | duration=-400 |
set_io | state= |
set_freq | freq=1000000 duty_cycle=50 |
set_vcc | vcc=3.3 |
set_vicc | vcc=3.3 icc=50 ocp=true |
set_vipp | vpp=12 ipp=20.5 ocp=true |
)";

} // namespace

/// Defaults, checks and texts of the commands that belong to no chip.
class TestPseudoDevices : public QObject
{
    Q_OBJECT

private slots:
    void commandLists();
    void checks_data() { textRows(limits, {"command", "good", "bad"}); }
    void checks();
    void familyDecides();
    void show_data() { textRows(shown, {"command", "text", "valid"}); }
    void show();
    void showsTheDutyCycle();
    void byDefault_data() { textRows(defaults, {"word", "params", "alone"}); }
    void byDefault();

private:
    const IDevice& deviceOf(const QString& word) const
    {
        return m_tools.hasCommand(word) ? static_cast<const IDevice&>(m_tools) : m_prog;
    }
    bool isValid(const BenchProject& bench, int id) const
    {
        return deviceOf(project().cmdById(id)->cmd()).checkParams(bench.data(id));
    }

    TDevTools m_tools{dev_class::tools, {}};
    TDevProg m_prog{dev_class::prog, {}};
};

void TestPseudoDevices::commandLists()
{
    QCOMPARE(m_tools.commandKeys().join(' '),
             QStringLiteral("set_prog execute delay counter jamp pause stop separator calc_crc process"));
    QCOMPARE(
        m_prog.commandKeys().join(' '),
        QStringLiteral("set_device auto_detect reset set_io set_freq set_vcc set_vpp set_vicc set_vipp"));
    for (const QString& word : m_tools.commandKeys() + m_prog.commandKeys()) {
        QVERIFY(m_tools.hasCommand(word) != m_prog.hasCommand(word));
        QCOMPARE(deviceOf(word).commandTitle({{key::cmd, word}}).isEmpty(), word == cmd::separator);
    }
    QVERIFY(!m_tools.checkParams({{key::cmd, "erase"}}) && !m_prog.checkParams({{key::cmd, "erase"}}));
}

void TestPseudoDevices::checks()
{
    QFETCH(QString, command);
    QFETCH(QString, good);
    QFETCH(QString, bad);
    BenchProject bench;
    const auto add = [&](const QString& value) { return bench.add(QString(command).replace('*', value)); };
    QCOMPARE(isValid(bench, add(good.section(' ', 0, 0))), m_tools.hasCommand(command.section(' ', 0, 0)));
    bench.addProg();
    for (const QString& value : good.split(' '))
        QVERIFY2(isValid(bench, add(value)), qPrintable(value));
    for (const QString& value : bad.split(' '))
        QVERIFY2(!isValid(bench, add(value)), qPrintable(value));
}

void TestPseudoDevices::familyDecides()
{
    for (const bool good : {true, false}) {
        BenchProject bench;
        bench.dir().write("auto.lst", "chip=chip.dev|chip.sig\n");
        bench.setChip({{"good", good}});
        bench.addProg();
        for (const int id : {bench.addChip(), bench.add("auto_detect name=chip")})
            QCOMPARE(isValid(bench, id), good);
        // An unreadable chip is a wrong parameter, not a command that does not fit the programmer.
        const int none = bench.add(cmd::set_device);
        QVERIFY(project().cmdById(none)->validDev() && !project().cmdById(none)->validParam());
    }
}

void TestPseudoDevices::show()
{
    QFETCH(QString, command);
    BenchProject bench;
    bench.setPort("/dev/tty%2");
    bench.addProg();
    const int id = bench.add(command);
    QTEST(deviceOf(project().cmdById(id)->cmd()).paramsText(bench.data(id), nullptr), "text");
    const QString valid = isValid(bench, id) ? "valid" : "wrong";
    QTEST(valid, "valid");
}

void TestPseudoDevices::showsTheDutyCycle()
{
    BenchProject bench;
    bench.setProg("[Frequency]\nDT_SHOW=true\n");
    bench.addProg();
    const int id = bench.add("set_freq freq=1000 duty_cycle=25");
    QCOMPARE(m_prog.paramsText(bench.data(id), nullptr), QStringLiteral("1 KHz, 25 %"));
}

void TestPseudoDevices::byDefault()
{
    QFETCH(QString, word);
    for (const char* column : {"params", "alone"}) {
        BenchProject bench;
        int id = -1;
        if (qstrcmp(column, "params") == 0)
            id = bench.addProg();
        else
            appData().ProgDefault = -1;
        TData data{{key::cmd, word}, {key::id_cfg, 0}, {key::id_cmd, id}};
        deviceOf(word).setDefaultParams(data);
        const TData expected =
            textParams(*static_cast<QString*>(QTest::qData(column, qMetaTypeId<QString>())));
        for (auto it = expected.begin(); it != expected.end(); ++it)
            QCOMPARE(it.key() + data.value(it.key()).toString(), it.key() + it.value().toString());
        QCOMPARE(data.size(), expected.size() + 3);
    }
}

QTEST_GUILESS_MAIN(TestPseudoDevices)
#include "test_pseudo_devices.moc"
