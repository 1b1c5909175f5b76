#include "console/TArguments.h"

#include <QDir>
#include <QtTest>

class TestArguments : public QObject
{
    Q_OBJECT

private slots:
    void wrong_data();
    void wrong();
    void run();
    void paths();
    void helpAndVersion_data();
    void helpAndVersion();
    void helpNamesEveryWord();
};

void TestArguments::wrong_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("hint"); // a part of the message
    QTest::newRow("unknown word") << "runn a.prj"
                                  << "runn";
    QTest::newRow("option as word") << "--json"
                                    << "--json";
    QTest::newRow("run: no project") << "run --save"
                                     << "PROJECT";
    QTest::newRow("run: two projects") << "run a.prj b.prj"
                                       << "b.prj";
    QTest::newRow("run: unknown option") << "run --saved a.prj"
                                         << "saved";
    QTest::newRow("run: option of check") << "run --json a.prj"
                                          << "json";
    QTest::newRow("run: value missing") << "run a.prj -c"
                                        << "c";
    QTest::newRow("run: value of a flag") << "run --save=1 a.prj"
                                          << "save";
    QTest::newRow("run: port without alias") << "run --port =/dev/a a.prj"
                                             << "ALIAS=PORT";
    QTest::newRow("run: port without port") << "run --port A= a.prj"
                                            << "ALIAS=PORT";
    QTest::newRow("run: port without both") << "run --port ttyS0 a.prj"
                                            << "ALIAS=PORT";
    QTest::newRow("check: option of run") << "check --events a.prj"
                                          << "events";
    QTest::newRow("list: nothing") << "list"
                                   << "chips";
    QTest::newRow("list: unknown") << "list devices"
                                   << "devices";
    QTest::newRow("list: two") << "list chips ports"
                               << "ports";
    QTest::newRow("version with more") << "--version x"
                                       << "x";
}

void TestArguments::wrong()
{
    QFETCH(QString, line);
    QFETCH(QString, hint);
    const TArguments arguments = TArguments::parse(line.split(QLatin1Char(' ')));
    QCOMPARE(arguments.word, TArguments::Word::Wrong);
    QVERIFY2(arguments.error.contains(hint), qPrintable(arguments.error));
}

void TestArguments::run()
{
    const TArguments arguments =
        TArguments::parse({"run", "-c", "B b", "--events", "/p/a.prj", "--config=A", "-c", "B b", "--port",
                           "Sim=ttyS0", "--port", "X=/dev/a=b"});
    QCOMPARE(arguments.word, TArguments::Word::Run);
    QCOMPARE(arguments.project, QStringLiteral("/p/a.prj"));
    QCOMPARE(arguments.configs, (QStringList{"B b", "A"}));
    QVERIFY(arguments.events && !arguments.save && !arguments.resume);
    const QList<QPair<QString, QString>> ports{{"Sim", "ttyS0"}, {"X", "/dev/a=b"}};
    QCOMPARE(arguments.ports, ports);
}

// Relative paths are those of the user, who is not in the folder of the program.
void TestArguments::paths()
{
    const QDir here = QDir::current();
    const TArguments run = TArguments::parse({"run", "--port", "S=./sim", "--save", "--resume", "sub/a.prj"});
    QCOMPARE(run.project, here.filePath("sub/a.prj"));
    QCOMPARE(QDir::cleanPath(run.ports.value(0).second), here.filePath("sim"));
    QVERIFY(run.save && run.resume);
    const TArguments check = TArguments::parse({"check", "--json", "--", "-a.prj"});
    QCOMPARE(check.project, here.filePath("-a.prj"));
    QVERIFY(check.json);
}

void TestArguments::helpAndVersion_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("help");
    QTest::newRow("--help") << "--help" << true;
    QTest::newRow("of a word") << "run --help" << true;
    QTest::newRow("short, of a word") << "check -h" << true;
    QTest::newRow("--version") << "--version" << false;
}

void TestArguments::helpAndVersion()
{
    QFETCH(QString, line);
    QFETCH(bool, help);
    const TArguments arguments = TArguments::parse(line.split(QLatin1Char(' ')));
    QCOMPARE(arguments.word, help ? TArguments::Word::Help : TArguments::Word::Version);
}

void TestArguments::helpNamesEveryWord()
{
    const QString help = TArguments::help();
    QStringList words = TArguments::listWords();
    words += {"run",      "check",  "list",     "--config", "--port",
              "--events", "--save", "--resume", "--json",   "--version"};
    for (const QString& word : words)
        QVERIFY2(help.contains(word), qPrintable(word));
    for (const QString& line : help.split(QLatin1Char('\n')))
        QVERIFY2(line.size() <= 80, qPrintable(line));
}

QTEST_GUILESS_MAIN(TestArguments)
#include "test_arguments.moc"
