#include "console/TPauseInput.h"
#include "console/TProgressLine.h"
#include "console/print.h"
#include "core/TAppData.h"
#include "core/TLang.h"
#include "core/globals.h"
#include "exec/TLogText.h"
#include "support/tables.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTime>
#include <QtTest>

#include <unistd.h>

class TestLogOutput : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void lines_data();
    void lines();
    void controlCharacters();
    void json();
    void progressText();
    void pauseInput_data();
    void pauseInput();
    void pauseInputOnlyWhenWanted();
};

void TestLogOutput::initTestCase()
{
    lang().load(QStringLiteral(VM_DATA_DIR "/language/eng.lng"));
}

void TestLogOutput::cleanup()
{
    appData().ExecLogShowTime = true;
    appData().ExecLogShowTime_ms = true;
}

void TestLogOutput::lines_data()
{
    tableColumns<int, bool, bool, QString, QString, QString>("code", "time", "ms", "text1", "text2", "line");
    const QString rule(60, '=');
    const QString blanks(13, ' ');
    tableRow("parameters", 0, true, true, "Ident", "100%2%1", "01:02:03.004 Ident (100%2%1)");
    tableRow("seconds", 0, true, false, "Ident", "x", "01:02:03 Ident (x)");
    tableRow("no time", 0, false, true, "Ident", "x", "Ident (x)");
    tableRow("text with time", 1, true, false, "t", "", "01:02:03 t");
    tableRow("text, seconds", 2, true, false, "t", "", blanks.left(9) + "t");
    tableRow("result", 4, true, false, "r", "", blanks.left(9) + "r");
    tableRow("success", 5, true, true, "Done", "", "01:02:03.004 Done");
    tableRow("failure", 6, true, true, "why: %2", "",
             "01:02:03.004 FAILED\n" + rule + "\nwhy: %2\n" + rule + "\n");
}

void TestLogOutput::lines()
{
    QFETCH(int, code);
    QFETCH(bool, time);
    QFETCH(bool, ms);
    QFETCH(QString, text1);
    QFETCH(QString, text2);
    appData().ExecLogShowTime = time;
    appData().ExecLogShowTime_ms = ms;
    QTEST(TLogText::plain(static_cast<TCodeExec>(code), text1, text2, QTime(1, 2, 3, 4)), "line");
}

void TestLogOutput::controlCharacters()
{
    const QString text =
        QStringLiteral("a\tb\nc\x1B[2Jd\u2028e\u009Bf") + QChar(0) + QChar('\r') + QStringLiteral("\u00e4");
    QCOMPARE(printable(text), QStringLiteral("a b c [2Jd e f  \u00e4"));
    QCOMPARE(printable(text, "\n\t"), QStringLiteral("a\tb\nc [2Jd e f  \u00e4"));
}

void TestLogOutput::json()
{
    const QByteArray line =
        jsonLine({{"event", "line"}, {"text1", "q\" \\ \n \u00e4"}, {"percent", 7}, {"ok", true}});
    QVERIFY(line.startsWith("{\"event\":\"line\",\"text1\":\"") &&
            line.endsWith(",\"percent\":7,\"ok\":true}\n"));
    QCOMPARE(line.count('\n'), 1);
    QCOMPARE(QJsonDocument::fromJson(line).object().value("text1").toString(),
             QStringLiteral("q\" \\ \n \u00e4"));
}

void TestLogOutput::progressText()
{
    QCOMPARE(TProgressLine::text({{"A", 42}}, 80), QStringLiteral("A [########............] 42 %"));
    QCOMPARE(TProgressLine::text({{"A", 100}, {"B\n", 1}}, 80),
             QStringLiteral("A [####################] 100 %  B  [....................] 1 %"));
    QCOMPARE(TProgressLine::text({{"A", 42}}, 9), QStringLiteral("A [######"));
}

void TestLogOutput::pauseInput_data()
{
    tableColumns<QByteArray, int>("bytes", "lines"); // before the end
    tableRow("nothing", QByteArray(), 0);
    tableRow("two at once", QByteArray("a\nb\n"), 2);
    tableRow("last without its end", QByteArray("a\nb"), 2);
    tableRow("long", QByteArray(20000, 'x') + "\n", 1);
}

void TestLogOutput::pauseInput()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, lines);
    int ends[2];
    QCOMPARE(pipe(ends), 0);
    QCOMPARE(write(ends[1], bytes.constData(), static_cast<size_t>(bytes.size())), ssize_t(bytes.size()));
    close(ends[1]);
    TPauseInput input(ends[0]);
    QSignalSpy line(&input, &TPauseInput::signalLine);
    QSignalSpy ended(&input, &TPauseInput::signalEnded);
    for (int i = 1; i <= lines; ++i) {
        input.want();
        input.want();
        QCOMPARE(line.count(), i - 1); // never from inside the call
        QTRY_COMPARE(line.count(), i);
        QCOMPARE(ended.count(), 0);
    }
    input.want();
    QTRY_COMPARE(ended.count(), 1);
    QCOMPARE(line.count(), lines);
    QVERIFY(input.hasEnded());
    close(ends[0]);
}

void TestLogOutput::pauseInputOnlyWhenWanted()
{
    int ends[2];
    QCOMPARE(pipe(ends), 0);
    TPauseInput input(ends[0]);
    QSignalSpy line(&input, &TPauseInput::signalLine);
    input.want();
    input.dropWish();
    QCOMPARE(write(ends[1], "\n", 1), ssize_t(1));
    QTest::qWait(50);
    QCOMPARE(line.count(), 0);
    // What was typed early waits for the next pause.
    input.want();
    QTRY_COMPARE(line.count(), 1);
    close(ends[0]);
    close(ends[1]);
}

QTEST_GUILESS_MAIN(TestLogOutput)
#include "test_log_output.moc"
