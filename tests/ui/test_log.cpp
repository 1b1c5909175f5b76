#include "base/TLang.h"
#include "settings/TAppData.h"
#include "ui/panels/TWgtLogExec.h"

#include <QtTest>
#include <QtWidgets>

namespace {

/// Each line behind a break, each piece of it with the name of its colour in front; the time reads "T".
QString coloured(const TWgtLogExec& log)
{
    QString text;
    for (QTextBlock block = log.edit()->document()->begin(); block.isValid(); block = block.next()) {
        text += '\n';
        for (auto it = block.begin(); !it.atEnd(); ++it)
            text += '<' + it.fragment().charFormat().foreground().color().name() + '>' + it.fragment().text();
    }
    return text.replace(QRegularExpression("\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\\d "), "T ");
}

} // namespace

class TestLog : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        lang().load(VM_DATA_DIR "/language/eng.lng");
        appData() = TAppData();
        // Colours that tell each piece from every other.
        static constexpr QColor TAppData::*colors[] = {
            &TAppData::ExecLogColorTime,    &TAppData::ExecLogColorCmd,    &TAppData::ExecLogColorParam,
            &TAppData::ExecLogColorText,    &TAppData::ExecLogColorWork,   &TAppData::ExecLogColorResult,
            &TAppData::ExecLogColorSuccess, &TAppData::ExecLogColorFailed, &TAppData::ExecLogColorStopped};
        int red = 0;
        for (QColor TAppData::*color : colors)
            appData().*color = QColor(++red, 0, 0);
    }

    // By kind from the unknown -1 on; it and the last one show nothing.
    void lines()
    {
        const QString box = "\n<#080000>%1\n<#080000>%2\n<#080000>a <b>&\n<#080000>%2\n";
        const QStringList wanted{"",
                                 "\n<#010000>T <#020000>a <b>&<#030000> (p)",
                                 "\n<#010000>T <#040000>a <b>&",
                                 "\n<#040000>             a <b>&",
                                 "\n<#050000>a <b>&",
                                 "\n<#060000>             a <b>&",
                                 "\n<#010000>T <#070000>a <b>&",
                                 "\n<#010000>T " +
                                     box.arg(langText(Text::RunFailed), QString(60, '=')).mid(1),
                                 ""};
        appData().ExecLogShowTime = true;
        appData().ExecLogShowTime_ms = true;
        for (int i = 0; i < wanted.size(); ++i) {
            TWgtLogExec log;
            log.addEvent(ceWork, "first", {});
            log.addEvent(static_cast<TCodeExec>(i - 1), "a <b>&", i == 1 ? "p" : "");
            QCOMPARE(coloured(log), "\n<#050000>first" + wanted[i]);
        }
    }

    void startsAnew()
    {
        TWgtLogExec log;
        log.setPercent(900);
        log.addEvent(ceCmdBegin, "x", {});
        QCOMPARE(log.bar()->value(), 0);
        log.clear();
        log.addEvent(ceWork, {}, {});
        log.addEvent(ceWork, "x", {});
        QCOMPARE(coloured(log), QString("\n\n<#050000>x"));
        // A full log loses its oldest lines only.
        QStringList lines;
        for (int i = 2; i < TWgtLogExec::maxLines; ++i)
            lines.append(QString::number(i));
        log.addEvent(ceWork, lines.join('\n'), {});
        const QTextDocument* document = log.edit()->document();
        QCOMPARE(document->blockCount(), TWgtLogExec::maxLines);
        log.addEvent(ceWork, QString::number(TWgtLogExec::maxLines), {});
        QVERIFY(document->blockCount() < TWgtLogExec::maxLines);
        QCOMPARE(document->lastBlock().text(), QString::number(TWgtLogExec::maxLines));
        QCOMPARE(document->firstBlock().text().toInt(), TWgtLogExec::maxLines + 1 - document->blockCount());
    }

    // A stop shows in the closing line and in the progress, which stays where it was.
    void stopped()
    {
        TWgtLogExec log;
        const QColor usual = log.bar()->palette().color(QPalette::Highlight);
        for (const int percent : {43, 0}) {
            log.clear();
            log.addEvent(ceCmdBegin, "x", {});
            for (const int p : {percent, 0})
                log.setPercent(p);
            log.setStopped(percent > 0);
            log.addEvent(ceSuccess, "end", {});
            QCOMPARE(log.bar()->value(), percent);
            const QColor end = percent > 0 ? appData().ExecLogColorStopped : appData().ExecLogColorSuccess;
            QVERIFY(coloured(log).endsWith("T <" + end.name() + ">end"));
            QCOMPARE(log.bar()->palette().color(QPalette::Highlight), percent > 0 ? end : usual);
        }
    }

    // Defaults go with the lightness of the desktop, also in lines that are there; colours of the user stay.
    void followsTheDesktop()
    {
        appData() = TAppData();
        appData().ExecLogColorWork = QColor(1, 2, 3);
        TWgtLogExec log;
        log.addEvent(ceTextTime, "a", {});
        log.addEvent(ceWork, "b", {});
        const auto shown = [&log] {
            return log.edit()->palette().color(QPalette::Base).name() + coloured(log).remove('\n');
        };
        const QPalette usual = QApplication::palette();
        QPalette dark = usual;
        dark.setColor(QPalette::Base, QColor("#202020"));
        QCOMPARE(shown(), QString("#ffffff<#b4b4b4>T <#646464>a<#010203>b"));
        QApplication::setPalette(dark);
        QCOMPARE(shown(), QString("#202020<#828282>T <#afafaf>a<#010203>b"));
        appData().ExecLogColorBackground = QColor("#fffff0");
        log.reloadColors();
        QCOMPARE(shown(), QString("#fffff0<#b4b4b4>T <#646464>a<#010203>b"));
        QApplication::setPalette(usual);
    }

    void locked()
    {
        TWgtLogExec log;
        log.resize(300, 200);
        log.show();
        QTextEdit* edit = log.edit();
        const auto fill = [&] {
            for (int i = 0; i < 100; ++i)
                log.addEvent(ceText, QString(i * 3, 'w'), {});
        };
        const auto drag = [edit] {
            QTest::mousePress(edit->viewport(), Qt::LeftButton, {}, {20, 20});
            QMouseEvent move(QEvent::MouseMove, QPoint(120, 90), QPoint(120, 90), Qt::NoButton,
                             Qt::LeftButton, {});
            QCoreApplication::sendEvent(edit->viewport(), &move);
            QTest::mouseRelease(edit->viewport(), Qt::LeftButton, {}, {120, 90});
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
        QTest::keyClicks(edit, "x");
        QVERIFY(!edit->toPlainText().contains('x'));
    }
};

QTEST_MAIN(TestLog)
#include "test_log.moc"
