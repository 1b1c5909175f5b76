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

TData only(const QString& key, const QString& value)
{
    return {{key, value}};
}

TData two(const QString& key, const QString& value, const QString& key2, const QString& value2)
{
    return {{key, value}, {key2, value2}};
}

} // namespace

/// Defaults, checks and texts of the commands that belong to no chip.
class TestPseudoDevices : public QObject
{
    Q_OBJECT

private slots:
    void commandLists();
    void checks_data();
    void checks();
    void familyDecides();
    void texts_data();
    void texts();
    void targetsAndProgrammers();
    void defaults();

private:
    const IDevice& deviceOf(const QString& cmd) const;
    TData made(const QString& cmd, int id_cmd, int id_cfg) const;

    TDevTools m_tools{dev_class::tools, {}};
    TDevProg m_prog{dev_class::prog, {}};
};

const IDevice& TestPseudoDevices::deviceOf(const QString& cmd) const
{
    return m_tools.hasCommand(cmd) ? static_cast<const IDevice&>(m_tools) : m_prog;
}

TData TestPseudoDevices::made(const QString& cmd, int id_cmd, int id_cfg) const
{
    TData data{{key::cmd, cmd}, {key::id_cfg, id_cfg}, {key::id_cmd, id_cmd}};
    deviceOf(cmd).setDefaultParams(data);
    return data;
}

void TestPseudoDevices::commandLists()
{
    QCOMPARE(m_tools.commandKeys().join(' '),
             QStringLiteral("set_prog execute delay counter jamp pause stop separator calc_crc process"));
    QCOMPARE(
        m_prog.commandKeys().join(' '),
        QStringLiteral("set_device auto_detect reset set_io set_freq set_vcc set_vpp set_vicc set_vipp"));
    for (const QString& key : m_tools.commandKeys() + m_prog.commandKeys()) {
        QVERIFY(m_tools.hasCommand(key) != m_prog.hasCommand(key));
        QCOMPARE(deviceOf(key).commandTitle(only(key::cmd, key)).isEmpty(), key == cmd::separator);
    }
    for (const IDevice* device :
         {static_cast<const IDevice*>(&m_tools), static_cast<const IDevice*>(&m_prog)})
        QVERIFY(!device->checkParams(only(key::cmd, "erase")) &&
                !device->createForm(only(key::cmd, "reset")));
}

void TestPseudoDevices::checks_data()
{
    tableColumns<QString, TData, bool>("cmd", "params", "valid");
    const auto rows = [](const QString& cmd, const QString& key, const TData& others, const QStringList& good,
                         const QStringList& bad) {
        for (const QString& value : good + bad) {
            TData params = others;
            params[key] = value;
            tableRow(qPrintable(cmd + QLatin1Char(' ') + key + QLatin1Char(' ') + value), cmd, params,
                     good.contains(value));
        }
    };
    const TData counter{{key::value, 0}, {key::limit, 0}, {key::delta, 0}};
    rows(cmd::counter, key::value, counter, {"0", "2147483647"}, {"-1", "2147483648", "9223372036854775807"});
    rows(cmd::counter, key::limit, counter, {"0", "2147483647"}, {"-1", "2147483648"});
    rows(cmd::counter, key::delta, counter, {"-2147483648", "2147483647"}, {"-2147483649", "2147483648"});
    rows(cmd::delay, key::value, {}, {"0", "2147483647"}, {"-1", "2147483648"});
    rows(cmd::process, key::file, {}, {"x"}, {""});
    // Tenths: what rounds to the limit is inside.
    rows(cmd::set_vcc, key::vcc, {}, {"1.8", "1.75", "5", "5.04"},
         {"1.74", "5.06", "x", "nan", "inf", "1e300"});
    rows(cmd::set_vpp, key::vpp, {}, {"9", "12.5"}, {"3.3"});
    rows(cmd::set_vicc, key::icc, {{key::vcc, 3.3}}, {"1", "200.04"}, {"200.06", "0"});
    rows(cmd::set_vicc, key::vcc, {{key::icc, 10}}, {"5"}, {"5.1"});
    rows(cmd::set_vipp, key::ipp, {{key::vpp, 12}}, {"60"}, {"0.9", "61"});
    rows(cmd::set_vipp, key::vpp, {{key::ipp, 12}}, {"13"}, {"14"});
    rows(cmd::reset, key::duration, {}, {"-400", "1000"}, {"0", "5", "-1001", "-2147483648"});
    rows(cmd::set_io, key::state, {}, {"-IHL", "-------"}, {"-o"});
    rows(cmd::set_freq, key::freq, {{key::duty_cycle, 50}}, {"1000", "8000000"},
         {"999", "8000001", "4295967296"});
    rows(cmd::set_freq, key::duty_cycle, {{key::freq, 1000}}, {"10", "90"}, {"9", "91"});
}

void TestPseudoDevices::checks()
{
    QFETCH(QString, cmd);
    QFETCH(TData, params);
    BenchProject bench;
    const bool needsProg = m_prog.hasCommand(cmd);
    QVERIFY(!needsProg || !m_prog.checkParams(bench.data(bench.add(cmd, params))));
    bench.addProg();
    QTEST(deviceOf(cmd).checkParams(bench.data(bench.add(cmd, params))), "valid");
}

void TestPseudoDevices::familyDecides()
{
    for (const bool good : {true, false}) {
        BenchProject bench;
        bench.dir().write("auto.lst", "chip=chip.dev|chip.sig\n");
        bench.setChip({{"good", good}});
        bench.addProg();
        for (const int id : {bench.addChip(), bench.add(cmd::auto_detect, only(key::name, "chip"))})
            QCOMPARE(m_prog.checkParams(bench.data(id)), good);
        // An unreadable chip is a wrong parameter, not a command that does not fit the programmer.
        const int none = bench.add(cmd::set_device);
        QVERIFY(project().cmdById(none)->validDev() && !project().cmdById(none)->validParam());
    }
}

void TestPseudoDevices::texts_data()
{
    tableColumns<QString, TData, QString>("cmd", "params", "text");
    const auto row = [](const QString& cmd, const TData& params, const QString& text) {
        tableRow(qPrintable(cmd + QLatin1Char(' ') + text), cmd, params, text);
    };
    row(cmd::counter, {{key::value, "5"}, {key::limit, 7}, {key::delta, "-2"}},
        "Value: 5, Limit: 7, Delta: -2");
    row(cmd::delay, only(key::value, "1500"), "1500 ms");
    row(cmd::calc_crc, two(key::crc_name, "%2", key::file, "%1.bin"), "%2: %1.bin");
    row(cmd::auto_detect, {{key::name, "%2"}, {key::execute, "0"}, {key::stop, "1"}}, "%2: Jamp, Stop");
    row(cmd::auto_detect, {{key::name, "A"}, {key::execute, "2"}, {key::stop, "0"}}, "A: Execute, Skip");
    row(cmd::reset, only(key::duration, "-400"), "-400 ms");
    row(cmd::set_io, only(key::state, "HILIL"), "HIL");
    row(cmd::set_freq, two(key::freq, "1500000", key::duty_cycle, "50"), "1.5 MHz");
    row(cmd::set_vcc, only(key::vcc, "3.26"), "3.3 V");
    row(cmd::set_vicc, {{key::vcc, "3.3"}, {key::icc, "0.0624"}, {key::ocp, "true"}}, "3.3 V, 0.062 mA, OCP");
    row(cmd::set_vipp, {{key::vpp, "12.5"}, {key::ipp, "1000"}, {key::ocp, "false"}}, "12.5 V, 1000.000 mA");
}

void TestPseudoDevices::texts()
{
    QFETCH(QString, cmd);
    QFETCH(TData, params);
    BenchProject bench;
    bench.addProg();
    QTEST(deviceOf(cmd).paramsText(bench.data(bench.add(cmd, params)), nullptr), "text");
    bench.setProg("[Frequency]\nDT_SHOW=true\n");
    project().clearCaches();
    const int freq = bench.add(cmd::set_freq, two(key::freq, "1000", key::duty_cycle, "25"));
    QCOMPARE(m_prog.paramsText(bench.data(freq), nullptr), QStringLiteral("1 KHz, 25 %"));
}

void TestPseudoDevices::targetsAndProgrammers()
{
    BenchProject bench;
    bench.setPort("/dev/tty%2");
    const auto is = [&](const QString& cmd, const TData& params, const QString& text, bool valid) {
        const TData data = bench.data(bench.add(cmd, params));
        return m_tools.paramsText(data, nullptr) == text && m_tools.checkParams(data) == valid;
    };
    const int target = bench.add(cmd::auto_detect);
    QVERIFY(is(cmd::jamp, only(key::to_cmd, QString::number(target)), "\"First\".\"Auto Detect\"", true));
    QVERIFY(is(cmd::jamp, only(key::to_cmd, "99"), "", false));
    QVERIFY(is(cmd::execute, only(key::cfg, "0"), "First", true));
    QVERIFY(is(cmd::execute, only(key::cfg, "-1"), "", false));
    QVERIFY(is(cmd::set_prog, only(key::prog, "bench"), "bench: /dev/tty%2, Model", true));
    QVERIFY(is(cmd::set_prog, {{key::prog, "bench"}, {key::alt_enabled, "true"}, {key::alt_port, "other"}},
               "bench: other, Model", true));
    QVERIFY(is(cmd::set_prog, only(key::prog, "unknown"), "unknown", false));
}

void TestPseudoDevices::defaults()
{
    BenchProject bench;
    const int prog = bench.addProg();
    QVERIFY(made(cmd::set_prog, -1, 0).value(key::prog) == "bench");
    appData().ProgDefault = -1;
    QVERIFY(made(cmd::set_prog, -1, 0).value(key::prog) == "");
    const int second = bench.addCfg("Second");
    QVERIFY(made(cmd::jamp, -1, second).value(key::to_cmd) == -1);
    const int first = bench.add(cmd::stop);
    bench.add(cmd::stop);
    QVERIFY(made(cmd::jamp, -1, second).value(key::to_cmd) == first);
    const TData detect = made(cmd::auto_detect, -1, 0);
    QVERIFY(detect.value(key::execute) == 0 && detect.value(key::stop) == 1 && detect.contains(key::route));
    const TData vipp = made(cmd::set_vipp, prog, 0);
    QVERIFY(vipp.value(key::vpp) == 12.0 && vipp.value(key::ipp) == 20.5 && vipp.value(key::ocp) == true);
    QVERIFY(made(cmd::reset, prog, 0).value(key::duration) == -400);
    QVERIFY(made(cmd::set_freq, prog, 0).value(key::freq) == 1000000U);
    for (const QString& key : m_prog.commandKeys()) {
        if (key == cmd::set_device || key == cmd::auto_detect)
            continue;
        QVERIFY2(m_prog.checkParams(made(key, prog, 0)), qPrintable(key));
        QCOMPARE(made(key, -1, 0).size(), 3); // nothing to take them from
    }
}

QTEST_GUILESS_MAIN(TestPseudoDevices)
#include "test_pseudo_devices.moc"
