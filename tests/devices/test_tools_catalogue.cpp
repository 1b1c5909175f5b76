#include "core/TAppData.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDevTools.h"
#include "support/BenchProject.h"

#include <QtTest>

/// Defaults, checks and texts of the flow and tool commands.
class TestToolsCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void commandList();
    void numbers_data();
    void numbers();
    void texts_data();
    void texts();
    void defaults();
    void targets();
    void programmer();

private:
    TDevTools m_tools{dev_class::tools, {}};
};

void TestToolsCatalogue::commandList()
{
    const QStringList keys = m_tools.commandKeys();
    QCOMPARE(keys.join(' '),
             QStringLiteral("set_prog execute delay counter jamp pause stop separator calc_crc process"));
    for (const QString& key : keys) {
        QVERIFY(m_tools.hasCommand(key));
        const TData data{{key::cmd, key}};
        QCOMPARE(m_tools.commandTitle(data).isEmpty(), key == cmd::separator);
    }
    QVERIFY(!m_tools.hasCommand(cmd::set_device));
    const TData unknown{{key::cmd, "erase"}};
    QVERIFY(!m_tools.checkParams(unknown));
    QCOMPARE(m_tools.paramsText(unknown, nullptr), QString());
}

void TestToolsCatalogue::numbers_data()
{
    QTest::addColumn<QString>("cmd");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("valid");
    for (const QLatin1String key : {key::value, key::limit, key::delta}) {
        const bool isDelta = key == key::delta;
        const auto row = [&key](const char* value, bool valid) {
            QTest::newRow(qPrintable(key + QLatin1Char(' ') + QLatin1String(value)))
                << QString(cmd::counter) << QString(key) << QString::fromLatin1(value) << valid;
        };
        row("0", true);
        row("-1", isDelta);
        row("2147483647", true);
        row("2147483648", false);
        row("-2147483648", isDelta);
        row("-2147483649", false);
        row("18446744073709551615", true); // no number of 64 bits with a sign: reads as 0
    }
    QTest::newRow("delay 0") << QString(cmd::delay) << QString(key::value) << "0" << true;
    QTest::newRow("delay negative") << QString(cmd::delay) << QString(key::value) << "-1" << false;
    QTest::newRow("delay too long") << QString(cmd::delay) << QString(key::value) << "2147483648" << false;
    QTest::newRow("process") << QString(cmd::process) << QString(key::file) << "x" << true;
    QTest::newRow("process, empty") << QString(cmd::process) << QString(key::file) << "" << false;
}

void TestToolsCatalogue::numbers()
{
    QFETCH(QString, cmd);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QTEST(m_tools.checkParams({{key::cmd, cmd}, {key, value}}), "valid");
}

void TestToolsCatalogue::texts_data()
{
    QTest::addColumn<TData>("data");
    QTest::addColumn<QString>("text");
    const auto row = [](const QString& cmd, const TData& params, const QString& text) {
        TData data = params;
        data[key::cmd] = cmd;
        QTest::newRow(qPrintable(cmd + QLatin1Char(' ') + text)) << data << text;
    };
    row(cmd::process, {{key::file, "sh -c \"a | b\""}}, "sh -c \"a | b\"");
    row(cmd::counter, {{key::value, "5"}, {key::limit, 7}, {key::delta, "-2"}},
        "Value: 5, Limit: 7, Delta: -2");
    row(cmd::delay, {{key::value, "1500"}}, "1500 ms");
    row(cmd::pause, {}, "");
    row(cmd::stop, {}, "");
    row(cmd::calc_crc, {{key::crc_name, "%2"}, {key::file, "%1.bin"}}, "%2: %1.bin");
}

void TestToolsCatalogue::texts()
{
    QFETCH(TData, data);
    QTEST(m_tools.paramsText(data, nullptr), "text");
}

void TestToolsCatalogue::defaults()
{
    BenchProject bench;
    const auto made = [this](const QString& cmd, int cfg) {
        TData data{{key::cmd, cmd}, {key::id_cfg, cfg}, {key::id_cmd, -1}};
        m_tools.setDefaultParams(data);
        return data;
    };
    QCOMPARE(made(cmd::counter, 0).value(key::delta).toInt(), 1);
    QCOMPARE(made(cmd::delay, 0).value(key::value).toInt(), 100);
    QCOMPARE(made(cmd::execute, 0).value(key::cfg).toInt(), -1);
    QCOMPARE(made(cmd::pause, 0).size(), 3);
    QCOMPARE(made(cmd::calc_crc, 0).value(key::crc_name).toString(), QStringLiteral("CRC32"));
    QCOMPARE(made(cmd::set_prog, 0).value(key::prog).toString(), QStringLiteral("bench"));
    appData().ProgDefault = -1;
    QCOMPARE(made(cmd::set_prog, 0).value(key::prog).toString(), QString());
    appData().ProgDefault = 0;

    QCOMPARE(made(cmd::jamp, 0).value(key::to_cmd).toInt(), -1);
    bench.add(cmd::pause);
    const int second = bench.addCfg("Second");
    const int first = bench.add(cmd::stop);
    bench.add(cmd::stop);
    QCOMPARE(made(cmd::jamp, second).value(key::to_cmd).toInt(), first);
}

void TestToolsCatalogue::targets()
{
    BenchProject bench;
    const int target = bench.add(cmd::auto_detect);
    TData jamp{{key::cmd, QString(cmd::jamp)}, {key::to_cmd, QString::number(target)}};
    QVERIFY(m_tools.checkParams(jamp));
    QCOMPARE(m_tools.paramsText(jamp, nullptr), QStringLiteral("\"First\".\"Auto Detect\""));
    jamp[key::to_cmd] = 99;
    QVERIFY(!m_tools.checkParams(jamp));
    QCOMPARE(m_tools.paramsText(jamp, nullptr), QString());

    TData execute{{key::cmd, QString(cmd::execute)}, {key::cfg, "0"}};
    QVERIFY(m_tools.checkParams(execute));
    QCOMPARE(m_tools.paramsText(execute, nullptr), QStringLiteral("First"));
    execute[key::cfg] = -1;
    QVERIFY(!m_tools.checkParams(execute));
}

void TestToolsCatalogue::programmer()
{
    BenchProject bench;
    bench.setPort("/dev/tty%2");
    const TData known{{key::prog, "bench"}, {key::alt_enabled, "false"}, {key::alt_port, "other"}};
    const int good = bench.add(cmd::set_prog, known);
    QCOMPARE(m_tools.paramsText(bench.data(good), nullptr), QStringLiteral("bench: /dev/tty%2, Model"));
    QVERIFY(m_tools.checkParams(bench.data(good)));
    TData data = bench.data(good);
    data[key::alt_enabled] = QStringLiteral("true");
    QCOMPARE(m_tools.paramsText(data, nullptr), QStringLiteral("bench: other, Model"));

    const int bad = bench.add(cmd::set_prog, {{key::prog, "unknown"}});
    QCOMPARE(m_tools.paramsText(bench.data(bad), nullptr), QStringLiteral("unknown"));
    QVERIFY(!m_tools.checkParams(bench.data(bad)));
}

QTEST_GUILESS_MAIN(TestToolsCatalogue)
#include "test_tools_catalogue.moc"
