#include "core/TAppData.h"
#include "core/TLang.h"
#include "core/globals.h"
#include "ui/TWgtLogExec.h"

#include <QProgressBar>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>
#include <QtTest>

namespace {

/// Each piece of text with the name of its colour in front; times read "T".
QString coloured(const QTextEdit& edit)
{
    QStringList lines;
    for (QTextBlock block = edit.document()->begin(); block.isValid(); block = block.next()) {
        QString line;
        for (auto it = block.begin(); !it.atEnd(); ++it)
            line += QStringLiteral("<%1>%2").arg(it.fragment().charFormat().foreground().color().name(),
                                                 it.fragment().text());
        lines.append(line);
    }
    static const QRegularExpression time(QStringLiteral("\\d\\d:\\d\\d:\\d\\d(\\.\\d\\d\\d)? "));
    return lines.join(QLatin1Char('\n')).replace(time, QStringLiteral("T\\1 "));
}

} // namespace

class TestLog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void lines_data();
    void lines();
    void locked();
    void oldLinesGo();
};

void TestLog::initTestCase()
{
    lang().load(QStringLiteral(VM_DATA_DIR "/language/eng.lng"));
}

void TestLog::init()
{
    appData() = TAppData();
    // Colours that tell each piece from every other.
    appData().ExecLogColorTime = QColor(1, 0, 0);
    appData().ExecLogColorCmd = QColor(2, 0, 0);
    appData().ExecLogColorParam = QColor(3, 0, 0);
    appData().ExecLogColorText = QColor(4, 0, 0);
    appData().ExecLogColorWork = QColor(5, 0, 0);
    appData().ExecLogColorResult = QColor(6, 0, 0);
    appData().ExecLogColorSuccess = QColor(7, 0, 0);
    appData().ExecLogColorFailed = QColor(8, 0, 0);
}

void TestLog::lines_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("times"); // 0 none, 1 seconds, 2 milliseconds
    QTest::addColumn<QString>("text2");
    QTest::addColumn<QString>("text"); // "ms" stands for the milliseconds
    const QString rule(60, QLatin1Char('='));
    const QString box = QStringLiteral("<#080000>%1\n<#080000>%2\n<#080000>a <b>&\n<#080000>%2\n");
    QTest::newRow("command") << 0 << 1 << "p"
                             << "<#010000>T <#020000>a <b>&<#030000> (p)";
    QTest::newRow("bare command") << 0 << 0 << ""
                                  << "<#020000>a <b>&";
    QTest::newRow("text with time") << 1 << 1 << ""
                                    << "<#010000>T <#040000>a <b>&";
    QTest::newRow("text, seconds") << 2 << 1 << ""
                                   << "<#040000>         a <b>&";
    QTest::newRow("text, no time") << 2 << 0 << ""
                                   << "<#040000>a <b>&";
    QTest::newRow("text, milliseconds") << 2 << 2 << ""
                                        << "<#040000>             a <b>&";
    QTest::newRow("work") << 3 << 2 << ""
                          << "<#050000>a <b>&";
    QTest::newRow("result") << 4 << 1 << ""
                            << "<#060000>         a <b>&";
    QTest::newRow("success") << 5 << 1 << ""
                             << "<#010000>T <#070000>a <b>&";
    QTest::newRow("failure") << 6 << 0 << "" << box.arg(langText(386), rule);
    QTest::newRow("unknown") << 7 << 1 << ""
                             << "-";
    QTest::newRow("negative") << -1 << 1 << ""
                              << "-";
}

void TestLog::lines()
{
    QFETCH(int, code);
    QFETCH(int, times);
    QFETCH(QString, text2);
    QFETCH(QString, text);
    appData().ExecLogShowTime = times > 0;
    appData().ExecLogShowTime_ms = times == 2;
    TWgtLogExec log;
    log.addEvent(ceText, QStringLiteral("first"), QString());
    const QString before = coloured(*log.edit());
    log.addEvent(static_cast<TCodeExec>(code), QStringLiteral("a <b>&"), text2);
    const QString after = coloured(*log.edit());
    QCOMPARE(after, text == QLatin1String("-") ? before : before + QLatin1Char('\n') + text);
    log.setPercent(900);
    QCOMPARE(log.bar()->value(), 100);
    log.addEvent(ceCmdBegin, QString(), QString());
    QCOMPARE(log.bar()->value(), 0);
    log.clear();
    log.addEvent(ceWork, QString(), QString());
    log.addEvent(ceWork, QStringLiteral("x"), QString());
    QCOMPARE(coloured(*log.edit()), QStringLiteral("\n<#050000>x"));
}

void TestLog::locked()
{
    TWgtLogExec log;
    log.resize(300, 200);
    log.show();
    QTextEdit* edit = log.edit();
    const auto fill = [&] {
        for (int i = 0; i < 100; ++i)
            log.addEvent(ceText, QString(i * 3, QLatin1Char('w')), QString());
    };
    const auto drag = [edit] {
        QTest::mousePress(edit->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
        QMouseEvent move(QEvent::MouseMove, QPoint(120, 90), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(edit->viewport(), &move);
        QTest::mouseRelease(edit->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(120, 90));
    };
    fill();
    edit->selectAll();
    log.lock(true);
    drag();
    QVERIFY(!edit->textCursor().hasSelection());
    edit->verticalScrollBar()->setValue(0);
    fill();
    QCOMPARE(edit->verticalScrollBar()->value(), edit->verticalScrollBar()->maximum());
    QCOMPARE(edit->horizontalScrollBar()->value(), 0);
    QVERIFY(edit->textCursor().atEnd());
    log.lock(false);
    edit->verticalScrollBar()->setValue(0);
    drag();
    QVERIFY(edit->textCursor().hasSelection());
    QTest::keyClicks(edit, QStringLiteral("x"));
    QVERIFY(!edit->toPlainText().contains(QLatin1Char('x')));
}

void TestLog::oldLinesGo()
{
    QString lines;
    for (int i = 0; i < TWgtLogExec::maxLines; ++i)
        lines += (i > 0 ? QStringLiteral("\n") : QString()) + QString::number(i);
    TWgtLogExec log;
    log.addEvent(ceWork, lines, QString());
    QCOMPARE(log.edit()->document()->blockCount(), TWgtLogExec::maxLines);
    log.addEvent(ceWork, QString::number(TWgtLogExec::maxLines), QString());
    const QTextDocument* document = log.edit()->document();
    QVERIFY(document->blockCount() < TWgtLogExec::maxLines);
    QCOMPARE(document->lastBlock().text(), QString::number(TWgtLogExec::maxLines));
    QCOMPARE(document->firstBlock().text().toInt(), TWgtLogExec::maxLines + 1 - document->blockCount());
}

QTEST_MAIN(TestLog)
#include "test_log.moc"
