#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDevProg.h"
#include "support/BenchProject.h"

#include <QtTest>

/// Defaults, checks and texts of the programmer's commands.
class TestProgCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void commandList();
    void checks_data();
    void checks();
    void frequencyLists_data();
    void frequencyLists();
    void familyDecides_data();
    void familyDecides();
    void texts_data();
    void texts();
    void pinsOfTheText();
    void defaults();
    void nothingWithoutAProgrammer();

private:
    TDevProg m_prog{dev_class::prog, {}};
};

void TestProgCatalogue::commandList()
{
    const QStringList keys = m_prog.commandKeys();
    QCOMPARE(
        keys.join(' '),
        QStringLiteral("set_device auto_detect reset set_io set_freq set_vcc set_vpp set_vicc set_vipp"));
    for (const QString& key : keys)
        QVERIFY(m_prog.hasCommand(key) && !m_prog.commandTitle({{key::cmd, key}}).isEmpty());
    QVERIFY(!m_prog.hasCommand(cmd::set_prog));
    QVERIFY(!m_prog.checkParams({{key::cmd, "set_prog"}}));
}

void TestProgCatalogue::checks_data()
{
    QTest::addColumn<QString>("cmd");
    QTest::addColumn<TData>("params");
    QTest::addColumn<bool>("valid");
    const auto row = [](const char* name, const QString& cmd, const TData& params, bool valid) {
        QTest::newRow(qPrintable(cmd + QLatin1Char(' ') + QLatin1String(name))) << cmd << params << valid;
    };
    row("lowest", cmd::set_vcc, {{key::vcc, "1.8"}}, true);
    row("rounds up to the lowest", cmd::set_vcc, {{key::vcc, "1.75"}}, true);
    row("below", cmd::set_vcc, {{key::vcc, "1.74"}}, false);
    row("highest", cmd::set_vcc, {{key::vcc, 5.0}}, true);
    row("rounds down to the highest", cmd::set_vcc, {{key::vcc, "5.04"}}, true);
    row("above", cmd::set_vcc, {{key::vcc, "5.06"}}, false);
    row("no number", cmd::set_vcc, {{key::vcc, "x"}}, false);
    row("not a number", cmd::set_vcc, {{key::vcc, "nan"}}, false);
    row("infinite", cmd::set_vcc, {{key::vcc, "inf"}}, false);
    row("beyond all", cmd::set_vcc, {{key::vcc, "1e300"}}, false);
    row("good", cmd::set_vpp, {{key::vpp, "12.5"}}, true);
    row("other supply's value", cmd::set_vpp, {{key::vcc, "3.3"}, {key::vpp, "3.3"}}, false);
    row("good", cmd::set_vicc, {{key::vcc, "3.3"}, {key::icc, "200"}}, true);
    row("current", cmd::set_vicc, {{key::vcc, "3.3"}, {key::icc, "200.06"}}, false);
    row("volts", cmd::set_vicc, {{key::vcc, "5.1"}, {key::icc, "10"}}, false);
    row("good", cmd::set_vipp, {{key::vpp, "12"}, {key::ipp, "60"}}, true);
    row("current", cmd::set_vipp, {{key::vpp, "12"}, {key::ipp, "0.9"}}, false);
    row("negative", cmd::reset, {{key::duration, "-400"}}, true);
    row("positive", cmd::reset, {{key::duration, "1000"}}, true);
    row("zero", cmd::reset, {{key::duration, "0"}}, false);
    row("too short", cmd::reset, {{key::duration, "5"}}, false);
    row("too long", cmd::reset, {{key::duration, "-1001"}}, false);
    row("smallest", cmd::reset, {{key::duration, "-2147483648"}}, false);
    row("letters", cmd::set_io, {{key::state, "-IHL"}}, true);
    row("more letters than pins", cmd::set_io, {{key::state, "-------"}}, true);
    row("letter the model has not", cmd::set_io, {{key::state, "-o"}}, false);
    row("good", cmd::set_freq, {{key::freq, "1000"}, {key::duty_cycle, "10"}}, true);
    row("too low", cmd::set_freq, {{key::freq, "999"}, {key::duty_cycle, "50"}}, false);
    row("too high", cmd::set_freq, {{key::freq, "8000001"}, {key::duty_cycle, "50"}}, false);
    row("beyond 32 bits", cmd::set_freq, {{key::freq, "4295967296"}, {key::duty_cycle, "50"}}, false);
    row("duty", cmd::set_freq, {{key::freq, "1000"}, {key::duty_cycle, "91"}}, false);
}

void TestProgCatalogue::checks()
{
    QFETCH(QString, cmd);
    QFETCH(TData, params);
    BenchProject bench;
    bench.add(cmd::set_prog, {{key::prog, "bench"}});
    QTEST(m_prog.checkParams(bench.data(bench.add(cmd, params))), "valid");
}

void TestProgCatalogue::frequencyLists_data()
{
    QTest::addColumn<QByteArray>("switches");
    QTest::addColumn<QString>("freq");
    QTest::addColumn<QString>("duty");
    QTest::addColumn<bool>("valid");
    const QByteArray freqs("FQ_LIST=true\n");
    const QByteArray duties("DT_SHOW=true\nDT_LIST=true\n");
    QTest::newRow("no lists") << QByteArray() << "1234"
                              << "33" << true;
    QTest::newRow("listed frequency") << freqs << "2000"
                                      << "33" << true;
    QTest::newRow("other frequency") << freqs << "2001"
                                     << "33" << false;
    QTest::newRow("listed, but too high") << freqs << "9000000"
                                          << "33" << false;
    QTest::newRow("listed duty") << duties << "1234"
                                 << "25" << true;
    QTest::newRow("other duty") << duties << "1234"
                                << "33" << false;
    QTest::newRow("duty list that is not shown") << QByteArray("DT_LIST=true\n") << "1234"
                                                 << "33" << true;
}

void TestProgCatalogue::frequencyLists()
{
    QFETCH(QByteArray, switches);
    QFETCH(QString, freq);
    QFETCH(QString, duty);
    BenchProject bench;
    bench.setProg("[Frequency]\nFQLV_2000=x\nFQLV_9000000=\nDTLV_25=\n" + switches);
    bench.add(cmd::set_prog, {{key::prog, "bench"}});
    const int id = bench.add(cmd::set_freq, {{key::freq, freq}, {key::duty_cycle, duty}});
    QTEST(m_prog.checkParams(bench.data(id)), "valid");
}

void TestProgCatalogue::familyDecides_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<bool>("good");
    QTest::addColumn<bool>("valid");
    QTest::newRow("accepts") << "chip" << true << true;
    QTest::newRow("refuses") << "chip" << false << false;
    QTest::newRow("no chip") << "" << true << false;
}

void TestProgCatalogue::familyDecides()
{
    QFETCH(QString, device);
    QFETCH(bool, good);
    QFETCH(bool, valid);
    BenchProject bench;
    bench.dir().write("auto.lst", "chip=chip.dev|chip.sig\n");
    bench.setChip({{"good", good}});
    bench.add(cmd::set_prog, {{key::prog, "bench"}});
    for (const int id : {bench.add(cmd::set_device, {{key::device, device}, {key::file, "chip.dev"}}),
                         bench.add(cmd::auto_detect, {{key::name, device}})}) {
        QCOMPARE(m_prog.checkParams(bench.data(id)), valid);
        // An unreadable chip is a wrong parameter, not a command that does not fit the programmer.
        QCOMPARE(project().cmdById(id)->validDev(), true);
        QCOMPARE(project().cmdById(id)->validParam(), valid);
    }
}

void TestProgCatalogue::texts_data()
{
    QTest::addColumn<QString>("cmd");
    QTest::addColumn<TData>("params");
    QTest::addColumn<QString>("text");
    const auto row = [](const QString& cmd, const TData& params, const QString& text) {
        QTest::newRow(qPrintable(cmd + QLatin1Char(' ') + text)) << cmd << params << text;
    };
    row(cmd::set_device, {{key::device, "W25Q64 %1"}}, "W25Q64 %1");
    row(cmd::auto_detect, {{key::name, "%2"}, {key::execute, "0"}, {key::stop, "1"}}, "%2: Jamp, Stop");
    row(cmd::auto_detect, {{key::name, "A"}, {key::execute, "2"}, {key::stop, "0"}}, "A: Execute, Skip");
    row(cmd::reset, {{key::duration, "-400"}}, "-400 ms");
    row(cmd::set_freq, {{key::freq, "999"}, {key::duty_cycle, "50"}}, "999 Hz");
    row(cmd::set_freq, {{key::freq, "1500000"}, {key::duty_cycle, "50"}}, "1.5 MHz");
    row(cmd::set_vcc, {{key::vcc, "3.26"}}, "3.3 V");
    row(cmd::set_vpp, {{key::vpp, 12}}, "12.0 V");
    row(cmd::set_vicc, {{key::vcc, "3.3"}, {key::icc, "0.0624"}, {key::ocp, "true"}}, "3.3 V, 0.062 mA, OCP");
    row(cmd::set_vipp, {{key::vpp, "12.5"}, {key::ipp, "1000"}, {key::ocp, "false"}}, "12.5 V, 1000.000 mA");
}

void TestProgCatalogue::texts()
{
    QFETCH(QString, cmd);
    QFETCH(TData, params);
    BenchProject bench;
    bench.add(cmd::set_prog, {{key::prog, "bench"}});
    QTEST(m_prog.paramsText(bench.data(bench.add(cmd, params)), nullptr), "text");
    bench.setProg("[Frequency]\nDT_SHOW=true\n");
    project().clearCaches();
    const int freq = bench.add(cmd::set_freq, {{key::freq, 1000}, {key::duty_cycle, 25}});
    QCOMPARE(m_prog.paramsText(bench.data(freq), nullptr), QStringLiteral("1 KHz, 25 %"));
}

void TestProgCatalogue::pinsOfTheText()
{
    BenchProject bench;
    bench.add(cmd::set_prog, {{key::prog, "bench"}});
    const int shorter = bench.add(cmd::set_io, {{key::state, "H"}});
    QCOMPARE(m_prog.paramsText(bench.data(shorter), nullptr), QStringLiteral("H--"));
    const int longer = bench.add(cmd::set_io, {{key::state, "HILIL"}});
    QCOMPARE(m_prog.paramsText(bench.data(longer), nullptr), QStringLiteral("HIL"));
}

void TestProgCatalogue::defaults()
{
    BenchProject bench;
    bench.add(cmd::set_prog, {{key::prog, "bench"}});
    const auto made = [&](const QString& cmd) {
        TData data{{key::cmd, cmd}, {key::id_cmd, 0}};
        m_prog.setDefaultParams(data);
        return data;
    };
    QCOMPARE(made(cmd::set_device).value(key::device).toString(), QString());
    QCOMPARE(made(cmd::auto_detect).value(key::execute).toInt(), 0);
    QCOMPARE(made(cmd::auto_detect).value(key::stop).toInt(), 1);
    QCOMPARE(made(cmd::reset).value(key::duration).toInt(), -400);
    QCOMPARE(made(cmd::set_freq).value(key::freq).toUInt(), 1000000U);
    QCOMPARE(made(cmd::set_freq).value(key::duty_cycle).toUInt(), 50U);
    QCOMPARE(made(cmd::set_vpp).value(key::vpp).toDouble(), 12.0);
    QCOMPARE(made(cmd::set_vicc).value(key::icc).toDouble(), 50.0);
    const TData vipp = made(cmd::set_vipp);
    QCOMPARE(vipp.value(key::vpp).toDouble(), 12.0);
    QCOMPARE(vipp.value(key::ipp).toDouble(), 20.5);
    QCOMPARE(vipp.value(key::ocp).toBool(), true);
    for (const QString& key : m_prog.commandKeys()) {
        if (key != cmd::set_device && key != cmd::auto_detect)
            QVERIFY2(m_prog.checkParams(made(key)), qPrintable(key));
    }
}

void TestProgCatalogue::nothingWithoutAProgrammer()
{
    BenchProject bench;
    for (const QString& key : m_prog.commandKeys()) {
        const int id = bench.add(key);
        TData data = bench.data(id);
        const int bare = data.size();
        QVERIFY(!m_prog.checkParams(data));
        m_prog.setDefaultParams(data);
        QCOMPARE(data.size() > bare, key == cmd::set_device || key == cmd::auto_detect);
        QVERIFY(!m_prog.createForm(data));
    }
}

QTEST_GUILESS_MAIN(TestProgCatalogue)
#include "test_prog_catalogue.moc"
