#include "core/TAppData.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "support/SimProcess.h"
#include "ui/TButtonAction.h"
#include "ui/TDialogCmdSelector.h"
#include "ui/TTreeWidget.h"
#include "ui/TWgtCmdList.h"
#include "ui/TWgtLogExec.h"
#include "ui/TWgtPrj.h"
#include "ui/WindowBench.h"

#include <QAction>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QTabBar>
#include <QTableWidget>
#include <QTextEdit>
#include <QtTest>

namespace {

const QString runsQuestion = QStringLiteral("Configurations are running. Stop them?");
const QString link = QStringLiteral("set_prog prog=Simulator alt_enabled=false");

QColor tabColor(WindowBench& bench, int index)
{
    return bench.prj().findChild<QTabBar*>()->tabTextColor(index);
}

int status(int index)
{
    return project().cfgStatus(project().cfgIdAt(index));
}

bool becomes(int index, int wanted)
{
    return QTest::qWaitFor([=] { return status(index) == wanted; }, 15000);
}

} // namespace

/// The frame of the window: what is enabled, the start button, ID Prog and Reset, and the ways out of a
/// project while something runs.
class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void nothingOpen();
    void enabledByState();
    void focusGuardsHotKeys();
    void startButtonThreeMeanings();
    void wrongRunIsRed();
    void runsSideBySide();
    void pauseOfABackgroundTab();
    void idProgAndReset_data();
    void idProgAndReset();
    void closeDuringRun_data();
    void closeDuringRun();
    void refusedQuestionLeavesTheRunAlone();
    void switchDuringRun();
    void deleteCfgDuringRun();
    void runsStartedBehindTheStopEndToo();
    void typedValueCountsForRunAndSave();
    void unsavedChanges_data();
    void unsavedChanges();
    void failedLoadIsRed();
    void selectorFollows();
    void lastPlaceIsOpened();
    void settingsAreWrittenAtTheEnd();
};

void TestMainWindow::nothingOpen()
{
    WindowBench bench;
    bench.addSampleNodes();
    bench.open();
    QVERIFY(!bench.window().button(mbExecute)->isVisible());
    for (TMainAction id :
         {maCfgNew, maCmdSelector, maCmdCopy, maCmdPaste, maCmdDeleteAll, maExecCfg, maExecIDProg,
          maExecReset, maSetViewParamExec, maPrjCopy, maPrjEdit, maPrjPasteNew})
        QVERIFY2(!bench.isEnabled(id), qPrintable(bench.window().action(id)->text()));
    for (TMainAction id : {maPrjListReload, maPrjNew, maPrjListNew, maQuit, maCmdUncheckHide})
        QVERIFY(bench.isEnabled(id));
    bench.clickNode(QStringLiteral("Group"));
    QVERIFY(!project().isOpen());
    QVERIFY(bench.isEnabled(maPrjEdit));
    QVERIFY(!bench.isEnabled(maPrjDeleteSubAll));
    bench.clickNode(QStringLiteral("Two"));
    QVERIFY(bench.isEnabled(maPrjDeleteSubAll));
    QVERIFY(bench.window().button(mbExecute)->isVisible());
    QVERIFY(bench.status().endsWith(QStringLiteral("projects/two.prj")));
    QCOMPARE(bench.difference(), QString());
}

void TestMainWindow::enabledByState()
{
    WindowBench bench;
    bench.openWith({QStringLiteral("A: delay value=0; stop; pause")});
    QVERIFY(!bench.isEnabled(maCfgDelete));
    QCOMPARE(bench.window().action(maCmdDeleteAll)->text(), langText(43));
    QVERIFY(!bench.isEnabled(maCmdMoveUp));
    QVERIFY(bench.isEnabled(maCmdMoveDown));
    bench.clickRow(2);
    QVERIFY(bench.isEnabled(maCmdMoveUp));
    QVERIFY(!bench.isEnabled(maCmdMoveDown));
    QVERIFY(!bench.isEnabled(maCmdPaste));
    QVERIFY(bench.trigger(maCmdCopy));
    QVERIFY(bench.isEnabled(maCmdPaste));
    QCOMPARE(bench.window().action(maCmdPaste)->text(), QStringLiteral("Paste commands [Pause]"));
    bench.typed = QStringList{QStringLiteral("R&D")};
    QVERIFY(bench.trigger(maCfgNew));
    QVERIFY(bench.isEnabled(maCfgDelete));
    QCOMPARE(bench.window().action(maCmdDeleteAll)->text(), langText(44));
    QVERIFY(!bench.isEnabled(maCmdDeleteAll));
    QVERIFY(bench.trigger(maCfgCopy));
    QCOMPARE(bench.window().action(maCfgPaste)->text(), QStringLiteral("Paste configuration [R&&D]"));
    QCOMPARE(bench.status(), QStringLiteral("Configuration \"R&D\" copied"));
}

void TestMainWindow::focusGuardsHotKeys()
{
    WindowBench bench;
    bench.openWith({QStringLiteral("A: delay value=0; stop; pause")});
    bench.prj().current()->logExec()->edit()->setFocus();
    bench.trigger(maSetViewParamExec);
    bench.prj().current()->logExec()->edit()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    QVERIFY(bench.trigger(maCmdDeleteCur));
    QCOMPARE(bench.words(0).size(), 3);
    bench.clickRow(1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    bench.settle();
    QCOMPARE(bench.words(0), (QStringList{QStringLiteral("delay"), QStringLiteral("pause")}));
    QTest::mouseClick(bench.window().button(mbSave), Qt::LeftButton);
    QVERIFY(bench.prj().tableHasFocus());
}

void TestMainWindow::startButtonThreeMeanings()
{
    SimProcess sim({QStringLiteral("--chip"), QStringLiteral("W25Q64")});
    QVERIFY2(sim.isReady(), sim.output().constData());
    WindowBench bench;
    appData().progNames.append(QStringLiteral("Simulator"), true, sim.path(), QStringLiteral("Simulator"));
    const QString chip = QStringLiteral("set_device device=W25Q64 file=spi-flash/W25Q64FV.dev clk=4000000");
    bench.openWith({QStringLiteral("Go: %1; %2; ident; pause; delay value=1").arg(link, chip)});
    const TButtonAction* execute = bench.window().button(mbExecute);
    QCOMPARE(execute->toolTip(), langText(68));

    bench.click(mbExecute);
    QVERIFY(becomes(0, csPause));
    QCOMPARE(execute->toolTip(), langText(69));
    QCOMPARE(bench.prj().current()->page(), TWgtConfig::PageExec);
    QCOMPARE(execute->palette().color(QPalette::Button), appData().ExecBtnColorPause);
    QVERIFY(!bench.isEnabled(maExecIDProg));
    bench.click(mbExecute);
    QVERIFY(becomes(0, csDone));
    QVERIFY(bench.waitIdle());
    QCOMPARE(execute->toolTip(), langText(68));
    QCOMPARE(tabColor(bench, 0), appData().ExecTabColorSuccess);
    const QString log = bench.log(0);
    QVERIFY2(log.contains(QStringLiteral("Ident")) && log.trimmed().endsWith(langText(391)), qPrintable(log));
    // The lines have their colours.
    QTextCursor cursor(bench.prj().current()->logExec()->edit()->document());
    cursor.movePosition(QTextCursor::End);
    QCOMPARE(cursor.charFormat().foreground().color(), appData().ExecLogColorSuccess);

    // A pause that is stopped by Ctrl.
    bench.click(mbExecute);
    QVERIFY(becomes(0, csPause));
    bench.click(mbExecute, Qt::ControlModifier);
    QVERIFY(becomes(0, csDone));
    QVERIFY(bench.waitIdle());
    QVERIFY2(bench.log(0).trimmed().endsWith(langText(390)), qPrintable(bench.log(0)));
    QVERIFY(bench.trigger(maExecClearState));
    QCOMPARE(status(0), int(csIdle));
}

void TestMainWindow::wrongRunIsRed()
{
    WindowBench bench;
    bench.openWith({QStringLiteral("A: ") + link});
    appData().ConfirmExecConfig = true;
    bench.yes = false;
    bench.trigger(maExecCfg);
    QCOMPARE(bench.boxes, QStringList{langText(384)});
    QCOMPARE(status(0), int(csIdle));
    bench.yes = true;
    bench.trigger(maExecCfg);
    QVERIFY(becomes(0, csFailed));
    QVERIFY(bench.waitIdle());
    QCOMPARE(tabColor(bench, 0), appData().ExecTabColorFailed);
    QVERIFY(bench.log(0).contains(QStringLiteral("Port /nowhere: ") + langText(393)));
    QVERIFY(bench.log(0).contains(langText(386)));
}

void TestMainWindow::runsSideBySide()
{
    WindowBench bench;
    bench.openWith({QStringLiteral("A: execute cfg=1; delay value=3000"), QStringLiteral("B: pause; stop"),
                    QStringLiteral("C: delay value=3000")});
    bench.trigger(maExecCfg);
    QVERIFY(becomes(1, csPause));
    QCOMPARE(status(0), int(csRun));
    bench.prj().setCurrentIndex(2);
    bench.trigger(maExecCfg);
    QCOMPARE(status(2), int(csRun));
    QCOMPARE(tabColor(bench, 0), appData().ExecTabColorExecute);
    QCOMPARE(tabColor(bench, 1), appData().ExecTabColorPause);
    // Each tab has its own button.
    bench.prj().setCurrentIndex(1);
    bench.settle();
    QCOMPARE(bench.window().button(mbExecute)->toolTip(), langText(69));
    bench.prj().setCurrentIndex(0);
    bench.settle();
    QCOMPARE(bench.window().button(mbExecute)->toolTip(), langText(70));
    bench.click(mbExecute);
    QVERIFY(becomes(0, csDone));
    QCOMPARE(status(1), int(csPause));
    QCOMPARE(status(2), int(csRun));
    // The state of what runs cannot be cleared.
    QVERIFY(bench.trigger(maExecClearAllState));
    QCOMPARE(status(0), int(csIdle));
    QCOMPARE(status(1), int(csPause));
    bench.window().runs()->stopAll();
    QVERIFY(bench.waitIdle());
}

void TestMainWindow::pauseOfABackgroundTab()
{
    WindowBench bench;
    bench.openWith({QStringLiteral("A: pause"), QStringLiteral("B: stop")});
    bench.trigger(maExecCfg);
    QVERIFY(becomes(0, csPause));
    bench.prj().setCurrentIndex(1);
    bench.settle();
    // The button means the configuration that is shown.
    bench.click(mbExecute);
    QVERIFY(becomes(1, csDone));
    QCOMPARE(status(0), int(csPause));
    bench.window().runs()->stopAll();
    QVERIFY(bench.waitIdle());
}

void TestMainWindow::idProgAndReset_data()
{
    QTest::addColumn<QString>("commands");
    QTest::addColumn<int>("action");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("last");
    const QString flash =
        QStringLiteral("; set_device device=W25Q64 file=spi-flash/W25Q64FV.dev clk=4000000");
    const QString avr =
        QStringLiteral("; set_device device=ATmega328P file=avr/ATmega328P.dev clk=100000 data=");
    QTest::newRow("id") << link << int(maExecIDProg) << true << "Done";
    QTest::newRow("id without programmer") << "delay value=0" << int(maExecIDProg) << false << "";
    QTest::newRow("reset without reset line") << link + flash << int(maExecReset) << false << "";
    QTest::newRow("reset") << link + avr << int(maExecReset) << true << "Done";
}

void TestMainWindow::idProgAndReset()
{
    QFETCH(QString, commands);
    QFETCH(int, action);
    QFETCH(bool, enabled);
    QFETCH(QString, last);
    SimProcess sim;
    QVERIFY2(sim.isReady(), sim.output().constData());
    WindowBench bench;
    appData().progNames.append(QStringLiteral("Simulator"), true, sim.path(), QStringLiteral("Simulator"));
    bench.openWith({QStringLiteral("A: ") + commands});
    bench.clickRow(bench.words(0).size() - 1);
    QCOMPARE(bench.isEnabled(TMainAction(action)), enabled);
    bench.trigger(TMainAction(action));
    QVERIFY2(bench.log(0).trimmed().endsWith(last), qPrintable(bench.log(0)));
    if (action == maExecReset && enabled)
        QVERIFY2(bench.log(0).contains(QStringLiteral("Reset (-400 ms)")), qPrintable(bench.log(0)));
    QCOMPARE(status(0), int(csIdle));
}

void TestMainWindow::closeDuringRun_data()
{
    QTest::addColumn<QString>("commands");
    QTest::newRow("delay") << "delay value=20000";
    QTest::newRow("pause") << "pause";
    QTest::newRow("loop") << "delay value=1; jamp to_cmd=0";
    QTest::newRow("process") << "process file=sleep_1";
    QTest::newRow("execute loop") << "execute cfg=0; delay value=1; jamp to_cmd=0";
    QTest::newRow("dead port") << "set_prog prog=Simulator alt_enabled=true alt_port=/dev/ptmx";
}

void TestMainWindow::closeDuringRun()
{
    QFETCH(QString, commands);
    WindowBench bench;
    const QString sleeper = bench.dir().write(QStringLiteral("sleep_1"), "#!/bin/sh\nsleep 1\n");
    QFile::setPermissions(sleeper, QFile::permissions(sleeper) | QFile::ExeOwner);
    commands.replace(QStringLiteral("sleep_1"), sleeper);
    bench.openWith({QStringLiteral("A: ") + commands});
    bench.trigger(maExecCfg);
    QTest::qWait(30);
    const bool ran = !bench.window().runs()->isIdle();
    QVERIFY(bench.close());
    QCOMPARE(bench.boxes, ran ? QStringList{runsQuestion} : QStringList());
    QVERIFY(bench.window().runs()->isIdle());
    QVERIFY(!project().isOpen());
}

void TestMainWindow::refusedQuestionLeavesTheRunAlone()
{
    WindowBench bench;
    bench.addSampleNodes();
    bench.open();
    bench.clickNode(QStringLiteral("One"));
    bench.prj().focusTable();
    bench.clickRow(0);
    bench.trigger(maExecCfg);
    QVERIFY(becomes(0, csPause));
    appData().LastPrj = 77;
    bench.yes = false;
    QVERIFY(!bench.close());
    bench.clickNode(QStringLiteral("Two"));
    QCOMPARE(bench.window().prjList()->nodeName(), QStringLiteral("One"));
    bench.trigger(maPrjListReload);
    bench.prj().focusTable();
    bench.trigger(maCfgDelete);
    bench.trigger(maPrjDelete);
    QCOMPARE(bench.boxes,
             (QStringList{runsQuestion, runsQuestion, runsQuestion, runsQuestion, runsQuestion}));
    QCOMPARE(status(0), int(csPause));
    QCOMPARE(bench.nodeNames().size(), 4);
    QCOMPARE(bench.difference(), QString());
    // The question before all: nothing is stored when it is refused.
    appData().ConfirmQuit = true;
    QVERIFY(!bench.close());
    QCOMPARE(bench.boxes.last(), langText(89));
    QCOMPARE(appData().LastPrj, 77);
    bench.window().runs()->stopAll();
    QVERIFY(bench.waitIdle());
}

void TestMainWindow::switchDuringRun()
{
    WindowBench bench;
    bench.addSampleNodes();
    bench.open();
    bench.clickNode(QStringLiteral("One"));
    bench.trigger(maExecCfg);
    QVERIFY(becomes(0, csPause));
    bench.clickNode(QStringLiteral("Two"));
    QVERIFY(bench.waitIdle());
    QTRY_VERIFY(project().file().endsWith(QStringLiteral("two.prj")));
    QCOMPARE(bench.difference(), QString());
    QCOMPARE(bench.boxes, QStringList{runsQuestion});
    QVERIFY(bench.isEnabled(maExecCfg));
}

void TestMainWindow::deleteCfgDuringRun()
{
    WindowBench bench;
    bench.openWith({QStringLiteral("A: pause"), QStringLiteral("B: stop")});
    bench.trigger(maExecCfg);
    QVERIFY(becomes(0, csPause));
    QVERIFY(bench.trigger(maCfgDelete));
    QVERIFY(bench.waitIdle());
    QTRY_COMPARE(project().cfgNames(), QStringList{QStringLiteral("B")});
    QCOMPARE(bench.difference(), QString());
}

void TestMainWindow::runsStartedBehindTheStopEndToo()
{
    // A process cannot be stopped; behind it the run starts another one before it looks.
    WindowBench bench;
    const QString sleeper = bench.dir().write(QStringLiteral("sleeper"), "#!/bin/sh\nsleep 0.5\n");
    QFile::setPermissions(sleeper, QFile::permissions(sleeper) | QFile::ExeOwner);
    bench.openWith(
        {QStringLiteral("A: process file=%1; execute cfg=1").arg(sleeper), QStringLiteral("B: pause")});
    bench.trigger(maExecCfg);
    QTest::qWait(100);
    bench.window().close();
    bench.settle();
    QVERIFY(bench.window().isWaitingForRuns());
    QCOMPARE(bench.status(), langText(422));
    QVERIFY(!bench.isEnabled(maExecCfg));
    // While it waits the window lives.
    QVERIFY(bench.trigger(maSetViewParamPrj));
    QTRY_VERIFY_WITH_TIMEOUT(!bench.window().isVisible(), 5000);
}

void TestMainWindow::typedValueCountsForRunAndSave()
{
    WindowBench bench;
    bench.openWith({QStringLiteral("A: delay value=5")});
    const auto typeValue = [&](const QString& text) {
        bench.clickRow(0);
        QWidget* form = bench.prj().current()->form();
        QVERIFY(form);
        auto* field = form->findChild<QLineEdit*>();
        QVERIFY(field);
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
    };
    const auto value = [] { return project().cmdAt(0)->param(key::value).toString(); };
    typeValue(QStringLiteral("17"));
    bench.click(mbExecute);
    QCOMPARE(value(), QStringLiteral("17"));
    QVERIFY(bench.waitIdle());
    typeValue(QStringLiteral("23"));
    bench.click(mbSave);
    QCOMPARE(value(), QStringLiteral("23"));
    QVERIFY(bench.dir().read(QStringLiteral("projects/main.prj")).contains("\"23\""));
}

void TestMainWindow::unsavedChanges_data()
{
    QTest::addColumn<bool>("autoSave");
    QTest::addColumn<bool>("writable");
    QTest::addColumn<bool>("yes");
    QTest::addColumn<int>("questions");
    QTest::addColumn<bool>("closes");
    QTest::addColumn<bool>("stored");
    QTest::newRow("saved by itself") << true << true << false << 0 << true << true;
    QTest::newRow("yes saves") << false << true << true << 1 << true << true;
    QTest::newRow("no drops") << false << true << false << 1 << true << false;
    QTest::newRow("cannot be saved, dropped") << false << false << true << 2 << true << false;
    QTest::newRow("cannot be saved, kept open") << true << false << false << 1 << false << false;
}

void TestMainWindow::unsavedChanges()
{
    QFETCH(bool, autoSave);
    QFETCH(bool, writable);
    QFETCH(bool, yes);
    QFETCH(int, questions);
    QFETCH(bool, closes);
    QFETCH(bool, stored);
    WindowBench bench;
    bench.addSampleNodes();
    bench.open();
    bench.clickNode(QStringLiteral("One"));
    bench.prj().focusTable();
    appData().AutoSavePrj = autoSave;
    bench.yes = yes;
    QVERIFY(bench.trigger(maCmdDeleteCur));
    QVERIFY(project().isChanged());
    const QByteArray before = bench.dir().read(QStringLiteral("projects/one.prj"));
    if (!writable) {
        // A folder in the place of the file cannot be written, whoever runs the test.
        const QString file = bench.dir().file(QStringLiteral("projects/one.prj"));
        QVERIFY(QFile::remove(file) && QDir().mkpath(file + QStringLiteral("/x")));
    }
    bench.clickNode(QStringLiteral("Two"));
    QCOMPARE(bench.boxes.size(), questions);
    QCOMPARE(bench.window().prjList()->nodeName(), closes ? QStringLiteral("Two") : QStringLiteral("One"));
    QCOMPARE(project().isChanged(), !closes);
    QCOMPARE(project().file().endsWith(closes ? QStringLiteral("two.prj") : QStringLiteral("one.prj")), true);
    if (writable)
        QCOMPARE(bench.dir().read(QStringLiteral("projects/one.prj")) != before, stored);
    project().clearChanged();
}

void TestMainWindow::failedLoadIsRed()
{
    WindowBench bench;
    bench.dir().write(QStringLiteral("projects/bad.prj"), "{ not a project");
    bench.addSampleNodes();
    bench.addNode(QStringLiteral("Bad"), QStringLiteral("bad.prj"));
    bench.addNode(QStringLiteral("Gone"), QStringLiteral("gone.prj"));
    bench.open();
    bench.clickNode(QStringLiteral("One"));
    for (const auto& [name, text] :
         {qMakePair(QStringLiteral("Bad"), 88), qMakePair(QStringLiteral("Gone"), 87)}) {
        bench.clickNode(name);
        QVERIFY2(bench.status().startsWith(langText(text) + QStringLiteral(": ")),
                 qPrintable(bench.status()));
        QVERIFY(!project().isOpen());
        QCOMPARE(bench.prj().count(), 0);
        QVERIFY(!bench.window().button(mbExecute)->isVisible());
    }
    bench.clickNode(QStringLiteral("One"));
    QCOMPARE(bench.difference(), QString());
}

void TestMainWindow::selectorFollows()
{
    WindowBench bench;
    bench.openWith({QStringLiteral("A: delay value=0; stop")});
    bench.clickRow(0);
    QVERIFY(bench.trigger(maCmdSelector));
    QVERIFY(bench.window().cmdSelector());
    QVERIFY(bench.window().button(mbCmdSelector)->isChecked());
    emit bench.window().cmdSelector()->signalAddCmd(cmd::pause, false);
    bench.settle();
    QCOMPARE(bench.words(0),
             (QStringList{QStringLiteral("delay"), QStringLiteral("!pause"), QStringLiteral("stop")}));
    QCOMPARE(bench.prj().currentRow(), 1);
    bench.window().cmdSelector()->close();
    bench.settle();
    QVERIFY(!bench.window().cmdSelector());
    QVERIFY(!bench.window().action(maCmdSelector)->isChecked());
    QVERIFY(bench.trigger(maCmdSelector));
    QVERIFY(bench.trigger(maCmdSelector));
    QVERIFY(!bench.window().cmdSelector());
    QVERIFY(bench.trigger(maCmdSelector));
    project().clearChanged();
    QVERIFY(bench.close());
    QVERIFY(!bench.window().cmdSelector());
}

void TestMainWindow::lastPlaceIsOpened()
{
    WindowBench bench;
    bench.addSampleNodes();
    bench.open();
    bench.clickNode(QStringLiteral("One"));
    bench.prj().setCurrentIndex(1);
    bench.prj().setCurrentRow(1);
    QVERIFY(bench.close());
    QCOMPARE(appData().LastPrj, 0);
    QCOMPARE(appData().LastCfg, 1);
    QCOMPARE(appData().LastCmd, 1);
    bench.destroy();
    appData().OpenLastPrj = true;
    bench.open();
    QVERIFY(project().file().endsWith(QStringLiteral("one.prj")));
    QCOMPARE(bench.prj().currentIndex(), 1);
    QCOMPARE(bench.prj().currentRow(), 1);
    QVERIFY(bench.prj().tableHasFocus());
    // A place that is no more.
    QVERIFY(bench.close());
    bench.destroy();
    appData().LastPrj = 99;
    appData().LastCmd = 99;
    bench.open();
    QVERIFY(!project().isOpen());
}

void TestMainWindow::settingsAreWrittenAtTheEnd()
{
    WindowBench bench;
    bench.addSampleNodes();
    bench.open();
    bench.window().setGeometry(31, 42, 801, 555);
    bench.window().prjList()->tree()->topLevelItem(1)->setExpanded(false);
    QVERIFY(bench.close());
    appData().SaveSettingsWindow = true;
    bench.destroy();
    QCOMPARE(appData().WindowMainWidth, 801);
    QCOMPARE(appData().WindowMainLeft, 31);
    QVERIFY(bench.listBytes().contains("\"expand\": 0, \"name\": \"Two\""));
}

QTEST_MAIN(TestMainWindow)
#include "test_main_window.moc"
