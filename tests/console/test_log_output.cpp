#include "console/TPauseInput.h"
#include "console/TProgressLine.h"
#include "console/print.h"
#include "core/TAppData.h"
#include "core/TLang.h"
#include "core/globals.h"
#include "exec/TLogText.h"

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
    void colours();
    void noEvent();
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
    QTest::addColumn<int>("code");
    QTest::addColumn<bool>("time");
    QTest::addColumn<bool>("ms");
    QTest::addColumn<QString>("text1");
    QTest::addColumn<QString>("text2");
    QTest::addColumn<QString>("line");
    const QString rule(60, '=');
    const QString blanks(13, ' ');
    QTest::newRow("command") << 0 << true << true << "Erase"
                             << ""
                             << "01:02:03.004 Erase";
    QTest::newRow("parameters") << 0 << true << true << "Ident"
                                << "100%2%1"
                                << "01:02:03.004 Ident (100%2%1)";
    QTest::newRow("seconds") << 0 << true << false << "Ident"
                             << "x"
                             << "01:02:03 Ident (x)";
    QTest::newRow("no time") << 0 << false << true << "Ident"
                             << "x"
                             << "Ident (x)";
    QTest::newRow("text with time") << 1 << true << false << "t"
                                    << ""
                                    << "01:02:03 t";
    QTest::newRow("text") << 2 << true << true << "t"
                          << "" << blanks + "t";
    QTest::newRow("text, seconds") << 2 << true << false << "t"
                                   << "" << blanks.left(9) + "t";
    QTest::newRow("text, no time") << 2 << false << true << "t"
                                   << ""
                                   << "t";
    QTest::newRow("work") << 3 << true << true << "w"
                          << ""
                          << "w";
    QTest::newRow("result") << 4 << true << false << "r"
                            << "" << blanks.left(9) + "r";
    QTest::newRow("success") << 5 << true << true << "Done"
                             << ""
                             << "01:02:03.004 Done";
    QTest::newRow("failure") << 6 << true << true << "why: %2"
                             << ""
                             << "01:02:03.004 FAILED\n" + rule + "\nwhy: %2\n" + rule + "\n";
    QTest::newRow("failure without a reason") << 6 << false << true << ""
                                              << ""
                                              << "FAILED\n" + rule + "\n\n" + rule + "\n";
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

void TestLogOutput::colours()
{
    using Color = TLogText::Color;
    const QList<TLogText::Piece> pieces = TLogText::paragraph(ceCmdBegin, "a", "b", QTime(1, 2));
    QCOMPARE(pieces.size(), 3);
    QVERIFY(pieces.at(0).color == Color::Time && pieces.at(1).color == Color::Command &&
            pieces.at(2).color == Color::Param);
    const QHash<int, Color> last{{ceTextTime, Color::Text},   {ceText, Color::Text},
                                 {ceWork, Color::Work},       {ceResult, Color::Result},
                                 {ceSuccess, Color::Success}, {ceFailed, Color::Failed}};
    for (auto it = last.begin(); it != last.end(); ++it)
        QVERIFY(TLogText::paragraph(static_cast<TCodeExec>(it.key()), "a", "", QTime(1, 2)).last().color ==
                it.value());
}

void TestLogOutput::noEvent()
{
    QVERIFY(TLogText::paragraph(static_cast<TCodeExec>(7), "a", "b", QTime(1, 2)).isEmpty());
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
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("lines"); // before the end
    QTest::newRow("nothing") << QByteArray() << 0;
    QTest::newRow("one") << QByteArray("\n") << 1;
    QTest::newRow("two at once") << QByteArray("a\nb\n") << 2;
    QTest::newRow("last without its end") << QByteArray("a\nb") << 2;
    QTest::newRow("long") << QByteArray(20000, 'x') + "\n" << 1;
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
