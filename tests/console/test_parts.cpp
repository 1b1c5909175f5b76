#include "base/TLang.h"
#include "console/TArguments.h"
#include "console/TPauseInput.h"
#include "console/TProgressLine.h"
#include "console/TRunOutput.h"
#include "console/print.h"
#include "exec/TLogText.h"
#include "settings/TAppData.h"
#include "support/tables.h"

#include <unistd.h>

/// What the console's commands are made of.
class TestParts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { lang().load(VM_DATA_DIR "/language/eng.lng"); }
    void wrongArguments()
    {
        const QString rows =
            "runn a.prj > runn; run --save > PROJECT; run a.prj b.prj > b.prj; list > chips; "
            "run --json a.prj > json; run a.prj -c > c; run --port A= a.prj > ALIAS=PORT; "
            "run --port =/dev/a a.prj > ALIAS=PORT; check --events a.prj > events; "
            "--version x > x";
        for (const QString& row : rows.split("; ")) {
            const TArguments arguments = TArguments::parse(row.section(" > ", 0, 0).split(' '));
            compareRow(row, int(arguments.word), int(TArguments::Word::Wrong));
            QVERIFY2(arguments.error.contains(row.section(" > ", 1)), qPrintable(arguments.error));
        }
    }

    // Relative paths are those of the user, who is not in the folder of the program.
    void arguments()
    {
        const QDir here = QDir::current();
        const TArguments run =
            TArguments::parse({"run", "-c", "B b", "--events", "sub/a.prj", "--config=A", "-c", "B b",
                               "--port", "Sim=ttyS0", "--port", "X=/dev/a=b", "--port", "S=./sim"});
        QCOMPARE(run.word, TArguments::Word::Run);
        QCOMPARE(run.project, here.filePath("sub/a.prj"));
        QCOMPARE(run.configs, (QStringList{"B b", "A"}));
        QVERIFY(run.events && !run.save && !run.resume);
        const QList<QPair<QString, QString>> ports{
            {"Sim", "ttyS0"}, {"X", "/dev/a=b"}, {"S", QFileInfo("./sim").absoluteFilePath()}};
        QCOMPARE(run.ports, ports);
        const TArguments check = TArguments::parse({"check", "--json", "--", "-a.prj"});
        QVERIFY(check.json && check.project == here.filePath("-a.prj"));
    }

    void logLines()
    {
        const auto row = [](int code, bool time, bool ms, const QString& text1, const QString& text2,
                            const QString& line) {
            appData().ExecLogShowTime = time;
            appData().ExecLogShowTime_ms = ms;
            QCOMPARE(TLogText::plain(static_cast<TCodeExec>(code), text1, text2, QTime(1, 2, 3, 4)), line);
        };
        const QString rule(60, '=');
        row(0, true, true, "Ident", "100%2%1", "01:02:03.004 Ident (100%2%1)");
        row(0, true, false, "Ident", "x", "01:02:03 Ident (x)");
        row(0, false, true, "Ident", "x", "Ident (x)");
        row(1, true, false, "t", "", "01:02:03 t");
        row(2, true, false, "t", "", "         t");
        row(4, true, true, "r", "", "             r");
        row(5, true, true, "Done", "", "01:02:03.004 Done");
        row(6, true, true, "why: %2", "", "01:02:03.004 FAILED\n" + rule + "\nwhy: %2\n" + rule + "\n");
    }

    void coloursOfTheEnd()
    {
        QCOMPARE(TRunOutput::coloured("t", ceSuccess, false), QString("\x1B[32mt\x1B[0m"));
        QCOMPARE(TRunOutput::coloured("t", ceSuccess, true), QString("\x1B[33mt\x1B[0m"));
        QCOMPARE(TRunOutput::coloured("t", ceFailed, false), QString("\x1B[31mt\x1B[0m"));
        QCOMPARE(TRunOutput::coloured("t", ceResult, false), QString("t"));
    }

    void printedText()
    {
        const QString text = QString("a\tb\nc\x1B[2Jd\u2028e\u009Bf") + QChar(0) + "\r\u00e4";
        QCOMPARE(printable(text), QString("a b c [2Jd e f  \u00e4"));
        QCOMPARE(printable(text, "\n\t"), QString("a\tb\nc [2Jd e f  \u00e4"));
        const QByteArray line = jsonLine({{"event", "line"}, {"text1", text}, {"percent", 7}, {"ok", true}});
        QVERIFY(line.startsWith("{\"event\":\"line\",\"text1\":\"") &&
                line.endsWith(",\"percent\":7,\"ok\":true}\n"));
        QCOMPARE(line.count('\n'), 1);
        QCOMPARE(QJsonDocument::fromJson(line).object().value("text1").toString(), text);

        QCOMPARE(TProgressLine::text({{"A", 100}, {"B\n", 42}}, 80),
                 QString("A [####################] 100 %  B  [########............] 42 %"));
        QCOMPARE(TProgressLine::text({{"A", 42}}, 9), QString("A [######"));
    }

    void pauseInput()
    {
        const auto row = [](const QByteArray& bytes, int linesBeforeTheEnd) {
            int ends[2];
            QCOMPARE(pipe(ends), 0);
            QCOMPARE(write(ends[1], bytes.constData(), size_t(bytes.size())), ssize_t(bytes.size()));
            close(ends[1]);
            TPauseInput input(ends[0]);
            QSignalSpy line(&input, &TPauseInput::signalLine);
            QSignalSpy ended(&input, &TPauseInput::signalEnded);
            for (int i = 1; i <= linesBeforeTheEnd; ++i) {
                input.want();
                input.want();
                QCOMPARE(line.count(), i - 1); // never from inside the call
                QTRY_COMPARE(line.count(), i);
                QCOMPARE(ended.count(), 0);
            }
            input.want();
            QTRY_COMPARE(ended.count(), 1);
            QCOMPARE(line.count(), linesBeforeTheEnd);
            QVERIFY(input.hasEnded());
        };
        row("", 0);
        row("a\nb\n", 2);
        row("a\nb", 2);
        row(QByteArray(20000, 'x') + "\n", 1);
    }

    void pauseInputOnlyWhenWanted()
    {
        int ends[2];
        QCOMPARE(pipe(ends), 0);
        TPauseInput input(ends[0]);
        QSignalSpy line(&input, &TPauseInput::signalLine);
        input.want();
        input.dropWish();
        QCOMPARE(write(ends[1], "\n", 1), ssize_t(1));
        QVERIFY(!line.wait(50));
        // What was typed early waits for the next pause.
        input.want();
        QTRY_COMPARE(line.count(), 1);
    }
};

QTEST_GUILESS_MAIN(TestParts)
#include "test_parts.moc"
