#include "console/TArguments.h"
#include "support/tables.h"

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
};

void TestArguments::wrong_data()
{
    tableColumns<QString, QString>("line", "hint"); // a part of the message
    tableRow("unknown word", "runn a.prj", "runn");
    tableRow("run: no project", "run --save", "PROJECT");
    tableRow("run: two projects", "run a.prj b.prj", "b.prj");
    tableRow("run: option of check", "run --json a.prj", "json");
    tableRow("run: value missing", "run a.prj -c", "c");
    tableRow("run: port without alias", "run --port =/dev/a a.prj", "ALIAS=PORT");
    tableRow("run: port without port", "run --port A= a.prj", "ALIAS=PORT");
    tableRow("check: option of run", "check --events a.prj", "events");
    tableRow("list: nothing", "list", "chips");
    tableRow("version with more", "--version x", "x");
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

QTEST_GUILESS_MAIN(TestArguments)
#include "test_arguments.moc"
