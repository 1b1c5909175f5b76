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

/// Each piece of text with the name of its colour in front; times read "T" and "T.ms".
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
    static const QRegularExpression time(QStringLiteral("\\d\\d:\\d\\d:\\d\\d "));
    static const QRegularExpression ms(QStringLiteral("\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\\d "));
    const QString text = lines.join(QLatin1Char('\n'));
    return QString(text).replace(time, QStringLiteral("T ")).replace(ms, QStringLiteral("T.ms "));
}

} // namespace

class TestLog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void lines();
    void startsAnew();
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
    static constexpr QColor TAppData::*colors[] = {
        &TAppData::ExecLogColorTime,    &TAppData::ExecLogColorCmd,   &TAppData::ExecLogColorParam,
        &TAppData::ExecLogColorText,    &TAppData::ExecLogColorWork,  &TAppData::ExecLogColorResult,
        &TAppData::ExecLogColorSuccess, &TAppData::ExecLogColorFailed};
    int red = 0;
    for (QColor TAppData::*color : colors)
        appData().*color = QColor(++red, 0, 0);
}

void TestLog::lines()
{
    const QString rule(60, QLatin1Char('='));
    const QString box = QStringLiteral("<#080000>%1\n<#080000>%2\n<#080000>a <b>&\n<#080000>%2\n");
    const struct
    {
        int code;
        bool time;
        bool ms;
        QString text2;
        QString line; ///< empty: none
    } rows[] = {
        {0, true, false, QStringLiteral("p"), QStringLiteral("<#010000>T <#020000>a <b>&<#030000> (p)")},
        {0, false, true, QString(), QStringLiteral("<#020000>a <b>&")},
        {1, true, true, QString(), QStringLiteral("<#010000>T.ms <#040000>a <b>&")},
        {2, true, false, QString(), QStringLiteral("<#040000>         a <b>&")},
        {2, false, false, QString(), QStringLiteral("<#040000>a <b>&")},
        {2, true, true, QString(), QStringLiteral("<#040000>             a <b>&")},
        {3, true, true, QString(), QStringLiteral("<#050000>a <b>&")},
        {4, true, false, QString(), QStringLiteral("<#060000>         a <b>&")},
        {5, true, false, QString(), QStringLiteral("<#010000>T <#070000>a <b>&")},
        {6, false, false, QString(), box.arg(langText(386), rule)},
        {7, true, false, QString(), QString()},
        {-1, true, false, QString(), QString()},
    };
    for (const auto& row : rows) {
        appData().ExecLogShowTime = row.time;
        appData().ExecLogShowTime_ms = row.ms;
        TWgtLogExec log;
        log.addEvent(ceWork, QStringLiteral("first"), QString());
        log.addEvent(static_cast<TCodeExec>(row.code), QStringLiteral("a <b>&"), row.text2);
        const QString wanted = row.line.isEmpty() ? QString() : QLatin1Char('\n') + row.line;
        QCOMPARE(coloured(*log.edit()), QStringLiteral("<#050000>first") + wanted);
    }
}

void TestLog::startsAnew()
{
    TWgtLogExec log;
    log.setPercent(900);
    log.addEvent(ceCmdBegin, QStringLiteral("x"), QString());
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
