#include "core/TAppData.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "core/keys.h"
#include "core/startup.h"
#include "support/SimProcess.h"
#include "support/tables.h"
#include "ui/TButtonAction.h"
#include "ui/TDialogCmdSelector.h"
#include "ui/TTreeWidget.h"
#include "ui/TWgtCmdList.h"
#include "ui/TWgtLogExec.h"
#include "ui/TWgtPrj.h"
#include "ui/WindowBench.h"

#include <QCheckBox>
#include <QDesktopServices>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTableWidget>
#include <QTextEdit>

namespace {

const QString runsQuestion = "Configurations are running. Stop them?";
const QString link = "set_prog prog=Simulator alt_enabled=false";
const QString flash = "; set_device device=W25Q64 file=spi-flash/W25Q64FV.dev clk=4000000";

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

/// Those that are not as they should be.
QString wrong(WindowBench& bench, bool enabled, const QList<TMainAction>& actions)
{
    QString texts;
    for (TMainAction id : actions)
        texts += bench.isEnabled(id) == enabled ? QString() : bench.window().action(id)->text() + "; ";
    return texts;
}

QList<QAction*> entries(const QMenu* menu)
{
    QList<QAction*> actions = menu ? menu->actions() : QList<QAction*>();
    actions.erase(std::remove_if(actions.begin(), actions.end(), [](auto* a) { return a->isSeparator(); }),
                  actions.end());
    return actions;
}

QMenu* openMenu()
{
    WindowBench::settle();
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

/// The menu of a click of the right button, as the window system hands it in.
QMenu* contextMenu(WindowBench& bench, const QWidget* widget, const QPoint& pos,
                   Qt::KeyboardModifiers keys = {})
{
    const QPoint at = widget->mapTo(&bench.window(), pos);
    QTest::mouseClick(bench.window().windowHandle(), Qt::RightButton, keys, at);
    return openMenu();
}

void choose(QMenu* menu, QAction* action)
{
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    WindowBench::settle();
}

} // namespace

/// The frame of the window: what is enabled, menus and keys, the start button, ID Prog and Reset, and the
/// ways out of a project while something runs.
class TestMainWindow : public QObject
{
    Q_OBJECT

public slots:
    void slotUrl(const QUrl& url) { m_opened.append(url.toLocalFile()); }

private slots:
    void enabledByState();
    void focusGuard();
    void menus();
    void settingsFromTheWindow();
    void languageAndHelp();
    void startButtonThreeMeanings();
    void wrongRunIsRed();
    void runsSideBySide();
    void idProgAndReset_data();
    void idProgAndReset();
    void closeDuringRun_data();
    void closeDuringRun();
    void leaveDuringRun_data();
    void leaveDuringRun();
    void runsStartedBehindTheStopEndToo();
    void typedValueCounts_data();
    void typedValueCounts();
    void unsavedChanges_data();
    void unsavedChanges();
    void failedLoadIsRed();
    void selectorFollows();
    void lastPlaceIsOpened();
    void settingsAreWrittenAtTheEnd();

private:
    QStringList m_opened;
};

void TestMainWindow::enabledByState()
{
    WindowBench bench;
    bench.openSamples();
    const TButtonAction* execute = bench.window().button(mbExecute);
    QVERIFY(!execute->isVisible());
    QCOMPARE(wrong(bench, false,
                   {maCfgNew, maCmdSelector, maCmdCopy, maCmdPaste, maCmdDeleteAll, maExecCfg, maExecIDProg,
                    maExecReset, maSetViewParamExec, maPrjCopy, maPrjEdit}),
             QString());
    QCOMPARE(wrong(bench, true, {maPrjListReload, maPrjNew, maPrjListNew, maQuit, maCmdUncheckHide}),
             QString());
    bench.clickNode("Group");
    QVERIFY(!project().isOpen());
    QVERIFY(bench.isEnabled(maPrjEdit) && !bench.isEnabled(maPrjDeleteSubAll));
    bench.clickNode("Two");
    QVERIFY(bench.isEnabled(maPrjDeleteSubAll) && execute->isVisible());
    QVERIFY(bench.status().endsWith("projects/two.prj"));
    const auto text = [&](TMainAction id) { return bench.window().action(id)->text(); };
    QCOMPARE(text(maCmdDeleteAll), langText(43));
    bench.prj().focusTable();
    QCOMPARE(wrong(bench, false, {maCfgDelete, maCfgPaste, maCmdMoveUp, maCmdPaste, maPrjPasteNew}),
             QString());
    QVERIFY(bench.isEnabled(maCmdMoveDown));
    bench.clickRow(2);
    QVERIFY(bench.isEnabled(maCmdMoveUp) && !bench.isEnabled(maCmdMoveDown));
    QVERIFY(bench.trigger(maCmdCopy));
    QVERIFY(bench.isEnabled(maCmdPaste));
    QCOMPARE(text(maCmdPaste), QString("Paste commands [Pause]"));
    bench.typed = QStringList{"R&D"};
    QVERIFY(bench.trigger(maCfgNew));
    QVERIFY(bench.isEnabled(maCfgDelete) && !bench.isEnabled(maCmdDeleteAll));
    QCOMPARE(text(maCmdDeleteAll), langText(44));
    QVERIFY(bench.trigger(maCfgCopy));
    QCOMPARE(text(maCfgPaste), QString("Paste configuration [R&&D]"));
    QCOMPARE(bench.status(), QString("Configuration \"R&D\" copied"));
}

void TestMainWindow::focusGuard()
{
    WindowBench bench;
    bench.openWith({"A: delay value=0; stop; pause"});
    bench.trigger(maSetViewParamExec);
    bench.prj().current()->logExec()->edit()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    QVERIFY(bench.trigger(maCmdDeleteCur));
    QCOMPARE(bench.words(0), QString("delay stop pause"));
    bench.clickRow(1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    bench.settle();
    QCOMPARE(bench.words(0), QString("delay pause"));
    bench.click(mbSave);
    QVERIFY(bench.prj().tableHasFocus());
}

void TestMainWindow::menus()
{
    WindowBench bench;
    bench.openWith({"A: delay value=0; stop; pause; stop"});
    TMainWindow& window = bench.window();
    QTableWidget* table = bench.prj().current()->cmdList()->table();
    const auto row = [&](int i) { return table->visualItemRect(table->item(i, 1)).center(); };
    QMenu* menu = contextMenu(bench, table->viewport(), row(1));
    QCOMPARE(entries(menu), entries(window.menu(mmCmd)));
    choose(menu, window.action(maCmdDeleteCur));
    QCOMPARE(bench.words(0), QString("delay pause stop"));

    menu = contextMenu(bench, table->viewport(), row(0), Qt::ControlModifier);
    QCOMPARE(entries(menu), entries(window.menu(mmCfg)));
    choose(menu, window.action(maCfgCopy));
    QCOMPARE(bench.status(), langText(121).arg("A"));

    TTreeWidget* tree = window.prjList()->tree();
    menu = contextMenu(bench, tree->viewport(), tree->visualItemRect(tree->topLevelItem(0)).center());
    QCOMPARE(entries(menu), entries(window.menu(mmPrj)) << window.action(maPrjListDragDrop));
    choose(menu, window.action(maPrjListDragDrop));
    QVERIFY(!appData().PrjListDragDrop);

    // From the menu bar: the table has the focus again when the action is done.
    bench.clickRow(0);
    QTest::mouseClick(window.menuBar(), Qt::LeftButton, {},
                      window.menuBar()->actionGeometry(window.menu(mmTop)->menuAction()).center());
    QCOMPARE(openMenu(), window.menu(mmTop));
    choose(window.menu(mmTop), window.menu(mmCmd)->menuAction());
    QTRY_COMPARE(openMenu(), window.menu(mmCmd));
    choose(window.menu(mmCmd), window.action(maCmdMoveDown));
    QCOMPARE(bench.words(0), QString("pause delay stop"));
    QVERIFY(!openMenu());
}

void TestMainWindow::settingsFromTheWindow()
{
    WindowBench bench;
    bench.openWith({"A: delay value=0; !stop"});
    const auto turn = [&](const QStringList& texts) {
        bench.inDialog = [texts](QDialog& dialog) {
            for (QCheckBox* box : dialog.findChildren<QCheckBox*>()) {
                if (texts.contains(box->text()))
                    box->click();
            }
        };
        bench.click(mbSettings);
        QVERIFY(!bench.inDialog);
    };
    const auto* bar = bench.prj().findChild<QTabBar*>();
    const auto* table = bench.prj().current()->cmdList()->table();
    QVERIFY(!bar->isVisible() && !table->isRowHidden(1));
    turn({langText(237), langText(241), langText(242)});
    QVERIFY(bar->isVisible() && table->isRowHidden(1));
    QVERIFY(bench.window().button(mbHide)->isChecked());
    QVERIFY(!appData().PrjListShowName && !appData().PrjHideTabCfg);
    QCOMPARE(bench.difference(), QString());
    turn({langText(242)});
    QVERIFY(!table->isRowHidden(1));
}

void TestMainWindow::languageAndHelp()
{
    WindowBench bench;
    bench.openSamples("One");
    const auto pick = [&](int row) {
        bench.inDialog = [row](QDialog& dialog) { dialog.findChild<QListWidget*>()->setCurrentRow(row); };
        QVERIFY(bench.trigger(maSetLanguage));
    };
    pick(0);
    QCOMPARE(bench.boxes, QStringList());
    pick(1);
    QCOMPARE(appData().Language, QString("rus.lng"));
    QCOMPARE(bench.boxes, QStringList{langText(2)});
    QCOMPARE(bench.window().menu(mmTop)->title(), QString("&File"));
    loadLanguage();
    bench.destroy();
    bench.open();
    QVERIFY(bench.window().menu(mmTop)->title() != "&File" &&
            bench.window().menu(mmTop)->title() == langText(3));

    QDesktopServices::setUrlHandler("file", this, "slotUrl");
    const QString manual = absFile(QCoreApplication::applicationDirPath(), "manual.html");
    QFile::remove(manual);
    QVERIFY(bench.trigger(maHelp));
    QVERIFY(m_opened.isEmpty());
    QVERIFY(QFile::copy(VM_DATA_DIR "/manual.html", manual));
    bench.clickNode("One");
    for (TMainAction id : {maHelp, maPrjOpenFolder, maPrjListOpenFolder})
        QVERIFY(bench.trigger(id));
    const QString folder = bench.dir().file("projects");
    QCOMPARE(m_opened, (QStringList{manual, folder, folder}));
    QDesktopServices::unsetUrlHandler("file");
}

void TestMainWindow::startButtonThreeMeanings()
{
    SimProcess sim({"--chip", "W25Q64"});
    QVERIFY2(sim.isReady(), sim.output().constData());
    WindowBench bench;
    appData().progNames.append("Simulator", true, sim.path(), "Simulator");
    bench.openWith({"Go: " + link + flash + "; ident; pause; delay value=1"});
    const TButtonAction* execute = bench.window().button(mbExecute);
    QCOMPARE(execute->toolTip(), langText(68));

    bench.click(mbExecute);
    QVERIFY(becomes(0, csPause));
    QCOMPARE(execute->toolTip(), langText(69));
    QCOMPARE(bench.prj().current()->page(), TWgtConfig::PageExec);
    QCOMPARE(execute->palette().color(QPalette::Button), appData().ExecBtnColorPause);
    QVERIFY(!bench.isEnabled(maExecIDProg));
    bench.click(mbExecute);
    QVERIFY(becomes(0, csDone) && bench.waitIdle());
    QCOMPARE(execute->toolTip(), langText(68));
    QCOMPARE(tabColor(bench, 0), appData().ExecTabColorSuccess);
    QVERIFY2(bench.log(0).contains("Ident") && bench.log(0).endsWith(langText(391)),
             qPrintable(bench.log(0)));
    // The lines have their colours.
    QTextCursor cursor(bench.prj().current()->logExec()->edit()->document());
    cursor.movePosition(QTextCursor::End);
    QCOMPARE(cursor.charFormat().foreground().color(), appData().ExecLogColorSuccess);

    // A pause that is stopped by Ctrl.
    bench.click(mbExecute);
    QVERIFY(becomes(0, csPause));
    bench.click(mbExecute, Qt::ControlModifier);
    QVERIFY(becomes(0, csDone) && bench.waitIdle());
    QVERIFY2(bench.log(0).endsWith(langText(390)), qPrintable(bench.log(0)));
    QVERIFY(bench.trigger(maExecClearState));
    QCOMPARE(status(0), int(csIdle));
}

void TestMainWindow::wrongRunIsRed()
{
    WindowBench bench;
    bench.openWith({"A: " + link});
    bench.question("Confirmation/ExecConfig") = true;
    bench.yes = false;
    bench.trigger(maExecCfg);
    QCOMPARE(bench.boxes, QStringList{langText(384)});
    QCOMPARE(status(0), int(csIdle));
    bench.yes = true;
    bench.trigger(maExecCfg);
    QVERIFY(becomes(0, csFailed) && bench.waitIdle());
    QCOMPARE(tabColor(bench, 0), appData().ExecTabColorFailed);
    QVERIFY(bench.log(0).contains("Port /nowhere: " + langText(393)));
    QVERIFY(bench.log(0).contains(langText(386)));
}

void TestMainWindow::runsSideBySide()
{
    WindowBench bench;
    bench.openWith(
        {"A: execute cfg=1; delay value=3000", "B: pause; stop", "C: delay value=3000", "D: stop"});
    const TButtonAction* execute = bench.window().button(mbExecute);
    const auto showTab = [&](int index) {
        bench.prj().setCurrentIndex(index);
        bench.settle();
    };
    bench.trigger(maExecCfg);
    QVERIFY(becomes(1, csPause));
    QCOMPARE(status(0), int(csRun));
    showTab(2);
    bench.trigger(maExecCfg);
    QCOMPARE(status(2), int(csRun));
    QCOMPARE(tabColor(bench, 0), appData().ExecTabColorExecute);
    QCOMPARE(tabColor(bench, 1), appData().ExecTabColorPause);
    // The button means the configuration that is shown.
    showTab(3);
    bench.click(mbExecute);
    QVERIFY(becomes(3, csDone));
    showTab(1);
    QCOMPARE(execute->toolTip(), langText(69));
    showTab(0);
    QCOMPARE(execute->toolTip(), langText(70));
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

void TestMainWindow::idProgAndReset_data()
{
    tableColumns<QString, int, bool, QString>("commands", "action", "enabled", "last");
    const QString avr = "; set_device device=ATmega328P file=avr/ATmega328P.dev clk=100000 data=";
    tableRow("id", link, int(maExecIDProg), true, QString("Done"));
    tableRow("id without programmer", QString("delay value=0"), int(maExecIDProg), false, QString());
    tableRow("reset without reset line", link + flash, int(maExecReset), false, QString());
    tableRow("reset", link + avr, int(maExecReset), true, QString("Done"));
}

void TestMainWindow::idProgAndReset()
{
    QFETCH(QString, commands);
    QFETCH(int, action);
    QFETCH(bool, enabled);
    SimProcess sim;
    QVERIFY2(sim.isReady(), sim.output().constData());
    WindowBench bench;
    appData().progNames.append("Simulator", true, sim.path(), "Simulator");
    bench.openWith({"A: " + commands});
    bench.clickRow(commands.count(';'));
    QCOMPARE(bench.isEnabled(TMainAction(action)), enabled);
    bench.trigger(TMainAction(action));
    QFETCH(QString, last);
    QVERIFY2(bench.log(0).endsWith(last), qPrintable(bench.log(0)));
    if (action == maExecReset && enabled)
        QVERIFY2(bench.log(0).contains("Reset (-400 ms)"), qPrintable(bench.log(0)));
    QCOMPARE(status(0), int(csIdle));
}

void TestMainWindow::closeDuringRun_data()
{
    tableColumns<QString>("commands");
    tableRow("delay", QString("delay value=20000"));
    tableRow("loop", QString("delay value=1; jamp to_cmd=0"));
    tableRow("process", QString("process file=%1"));
    tableRow("execute loop", QString("execute cfg=0; delay value=1; jamp to_cmd=0"));
    tableRow("dead port", QString("set_prog prog=Simulator alt_enabled=true alt_port=/dev/ptmx"));
}

void TestMainWindow::closeDuringRun()
{
    QFETCH(QString, commands);
    WindowBench bench;
    bench.openWith({"A: " + commands.replace("%1", bench.writeScript("sleep 0.5\n"))});
    bench.trigger(maExecCfg);
    QTest::qWait(30);
    const bool ran = !bench.window().runs()->isIdle();
    QVERIFY(bench.close());
    QCOMPARE(bench.boxes, ran ? QStringList{runsQuestion} : QStringList());
    QVERIFY(bench.window().runs()->isIdle());
    QVERIFY(!project().isOpen());
}

void TestMainWindow::leaveDuringRun_data()
{
    tableColumns<int, QString>("action", "configurations");
    tableRow("close", -1, QString());
    tableRow("switch", -2, QString("C"));
    tableRow("reload", int(maPrjListReload), QString());
    tableRow("delete configuration", int(maCfgDelete), QString("B"));
    tableRow("delete project", int(maPrjDelete), QString("C"));
    tableRow("other file", int(maPrjEdit), QString("D"));
}

void TestMainWindow::leaveDuringRun()
{
    QFETCH(int, action);
    WindowBench bench;
    bench.openSamples("One");
    const auto leave = [&] {
        bench.typed = QStringList{"One", "sub.prj"};
        if (action >= 0)
            bench.trigger(TMainAction(action));
        else
            action == -1 ? void(bench.close()) : bench.clickNode("Two");
    };
    bench.trigger(maExecCfg);
    QVERIFY(becomes(0, csPause));
    bench.yes = false;
    leave();
    QCOMPARE(bench.boxes, QStringList{runsQuestion});
    QCOMPARE(status(0), int(csPause));
    QCOMPARE(bench.nodeNames(), QString("One Two .Sub Group"));
    QCOMPARE(bench.window().prjList()->nodeName(), QString("One"));
    QCOMPARE(bench.difference(), QString());
    bench.yes = true;
    bench.prj().focusTable();
    leave();
    QVERIFY(bench.waitIdle());
    QFETCH(QString, configurations);
    QTRY_COMPARE(project().cfgNames().join(' '), configurations);
    QCOMPARE(bench.difference(), QString());
    QVERIFY(!bench.window().isWaitingForRuns());
    QCOMPARE(bench.isEnabled(maExecCfg), project().isOpen());
}

void TestMainWindow::runsStartedBehindTheStopEndToo()
{
    // A process cannot be stopped; behind it the run starts another one before it looks.
    WindowBench bench;
    const QString script = bench.writeScript("sleep 0.5\n");
    bench.openWith({"A: process file=" + script + "; execute cfg=1", "B: pause"});
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

void TestMainWindow::typedValueCounts_data()
{
    tableColumns<int>("action");
    for (TMainAction id : {maExecCfg, maPrjSave, maPrjListReload})
        tableRow(QByteArray::number(id).constData(), int(id));
}

/// Buttons and hot keys leave the focus in the field whose value is not stored yet.
void TestMainWindow::typedValueCounts()
{
    QFETCH(int, action);
    WindowBench bench;
    bench.openWith({"A: delay value=5"});
    appData().AutoSavePrj = true;
    bench.clickRow(0);
    auto* field = bench.prj().current()->form()->findChild<QLineEdit*>();
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, "17");
    QVERIFY(bench.trigger(TMainAction(action)));
    QVERIFY(bench.waitIdle());
    if (action == maExecCfg)
        QCOMPARE(project().cmdAt(0)->param(key::value).toString(), QString("17"));
    else
        QVERIFY(bench.dir().read("projects/main.prj").contains("\"17\""));
}

void TestMainWindow::unsavedChanges_data()
{
    tableColumns<bool, bool, bool, int, bool, bool>("autoSave", "writable", "yes", "questions", "closes",
                                                    "stored");
    tableRow("saved by itself", true, true, false, 0, true, true);
    tableRow("yes saves", false, true, true, 1, true, true);
    tableRow("no drops", false, true, false, 1, true, false);
    tableRow("cannot be saved, dropped", false, false, true, 2, true, false);
    tableRow("cannot be saved, kept open", true, false, false, 1, false, false);
}

void TestMainWindow::unsavedChanges()
{
    QFETCH(bool, autoSave);
    QFETCH(bool, writable);
    QFETCH(bool, yes);
    QFETCH(bool, closes);
    WindowBench bench;
    bench.openSamples("One");
    appData().AutoSavePrj = autoSave;
    bench.yes = yes;
    QVERIFY(bench.trigger(maCmdDeleteCur));
    QVERIFY(project().isChanged());
    const QString file = bench.dir().file("projects/one.prj");
    const QByteArray before = bench.dir().read("projects/one.prj");
    // A folder in the place of the file cannot be written, whoever runs the test.
    if (!writable)
        QVERIFY(QFile::remove(file) && QDir().mkpath(file + "/x"));
    bench.clickNode("Two");
    QTEST(bench.boxes.size(), "questions");
    QCOMPARE(bench.window().prjList()->nodeName(), QString(closes ? "Two" : "One"));
    QCOMPARE(project().isChanged(), !closes);
    QVERIFY(project().file().endsWith(closes ? "two.prj" : "one.prj"));
    if (writable)
        QTEST(bench.dir().read("projects/one.prj") != before, "stored");
    project().clearChanged();
}

void TestMainWindow::failedLoadIsRed()
{
    WindowBench bench;
    bench.dir().write("projects/bad.prj", "{ not a project");
    bench.addNode("Bad", "bad.prj");
    bench.addNode("Gone", "gone.prj");
    bench.openSamples();
    appData().AutoSavePrj = true;
    for (const auto& [name, text] : {std::pair("Bad", 88), std::pair("Gone", 87)}) {
        // The report that this one was saved must not hide the other one's error.
        bench.clickNode("One");
        bench.prj().focusTable();
        QVERIFY(bench.trigger(maCmdMoveDown));
        bench.clickNode(name);
        QVERIFY2(bench.status().startsWith(langText(text) + ": "), qPrintable(bench.status()));
        QVERIFY(!project().isOpen());
        QCOMPARE(bench.prj().count(), 0);
        QVERIFY(!bench.window().button(mbExecute)->isVisible());
    }
    bench.clickNode("One");
    QCOMPARE(bench.difference(), QString());
}

void TestMainWindow::selectorFollows()
{
    WindowBench bench;
    bench.openWith({"A: delay value=0; stop"});
    bench.clickRow(0);
    QVERIFY(bench.trigger(maCmdSelector));
    QVERIFY(bench.window().cmdSelector() && bench.window().button(mbCmdSelector)->isChecked());
    emit bench.window().cmdSelector()->signalAddCmd(cmd::pause, false);
    bench.settle();
    QCOMPARE(bench.words(0), QString("delay !pause stop"));
    QCOMPARE(bench.prj().currentRow(), 1);
    bench.window().cmdSelector()->close();
    bench.settle();
    QVERIFY(!bench.window().cmdSelector() && !bench.window().action(maCmdSelector)->isChecked());
    for (bool isOpen : {true, false, true}) {
        QVERIFY(bench.trigger(maCmdSelector));
        QCOMPARE(bench.window().cmdSelector() != nullptr, isOpen);
    }
    project().clearChanged();
    QVERIFY(bench.close());
    QVERIFY(!bench.window().cmdSelector());
}

void TestMainWindow::lastPlaceIsOpened()
{
    WindowBench bench;
    bench.openSamples("One");
    bench.prj().setCurrentIndex(1);
    bench.prj().setCurrentRow(1);
    bench.question("Confirmation/Quit") = true;
    bench.yes = false;
    QVERIFY(!bench.close());
    QCOMPARE(bench.boxes, QStringList{langText(89)});
    QCOMPARE(appData().LastPrj, -1);
    bench.yes = true;
    QVERIFY(bench.close());
    QCOMPARE(appData().LastPrj, 0);
    QCOMPARE(appData().LastCfg, 1);
    QCOMPARE(appData().LastCmd, 1);
    bench.destroy();
    bench.question("Confirmation/Quit") = false;
    appData().OpenLastPrj = true;
    bench.open();
    QVERIFY(project().file().endsWith("one.prj"));
    QCOMPARE(bench.prj().currentIndex(), 1);
    QCOMPARE(bench.prj().currentRow(), 1);
    QVERIFY(bench.prj().tableHasFocus());
    // A place that is no more.
    QVERIFY(bench.close());
    bench.destroy();
    appData().LastPrj = 99;
    bench.open();
    QVERIFY(!project().isOpen());
}

void TestMainWindow::settingsAreWrittenAtTheEnd()
{
    WindowBench bench;
    bench.openSamples();
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
