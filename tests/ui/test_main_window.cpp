#include "core/helpers.h"
#include "core/startup.h"
#include "support/SimProcess.h"
#include "ui/TButtonAction.h"
#include "ui/TDialogCmdSelector.h"
#include "ui/TWgtLogExec.h"
#include "ui/WindowBench.h"

#include <QCheckBox>
#include <QDesktopServices>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QTabBar>
#include <QTextEdit>

namespace {

const QString runsQuestion = "Configurations are running. Stop them?";
const QString link = "set_prog prog=Simulator alt_enabled=false";
const QString flash = ", set_device device=W25Q64 file=spi-flash/W25Q64FV.dev clk=4000000";

/// Ways out of a project beside the actions.
constexpr int closing = -1;
constexpr int switching = -2;

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

/// The project waits in the pause that it runs into, or ends well.
bool runsTo(WindowBench& bench, int index, int wanted)
{
    bench.click(mbExecute);
    return becomes(index, wanted) && (wanted == csPause || bench.waitIdle());
}

/// A separator has none.
QStringList texts(const QMenu* menu)
{
    QStringList all;
    for (const QAction* action : menu ? menu->actions() : QList<QAction*>())
        all.append(action->text());
    return all;
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
    void keysAndMenus();
    void settingsFromTheWindow();
    void languageAndHelp();
    void startButtonThreeMeanings();
    void runsSideBySide();
    void idProgAndReset();
    void closeDuringRun();
    void leaveDuringRun();
    void typedValueCounts();
    void unsavedChanges();
    void failedLoadIsRed();
    void selectorFollows();
    void lastPlaceIsOpened();

private:
    QStringList m_opened;
};

void TestMainWindow::enabledByState()
{
    WindowBench bench;
    bench.openSamples();
    const TButtonAction* execute = bench.window().button(mbExecute);
    const auto text = [&](TMainAction id) { return bench.window().action(id)->text(); };
    QVERIFY(!execute->isVisible());
    for (TMainAction id : {maCfgNew, maCmdSelector, maCmdCopy, maCmdPaste, maCmdDeleteAll, maExecCfg,
                           maExecIDProg, maExecReset, maSetViewParamExec, maPrjCopy, maPrjEdit})
        QVERIFY2(!bench.isEnabled(id), qPrintable(text(id)));
    for (TMainAction id : {maPrjListReload, maPrjNew, maPrjListNew, maQuit, maCmdUncheckHide})
        QVERIFY2(bench.isEnabled(id), qPrintable(text(id)));
    bench.clickNode("Group");
    QVERIFY(!project().isOpen());
    QVERIFY(bench.isEnabled(maPrjEdit) && !bench.isEnabled(maPrjDeleteSubAll));
    bench.clickNode("Two");
    QVERIFY(bench.isEnabled(maPrjDeleteSubAll) && execute->isVisible());
    QVERIFY(bench.status().endsWith("projects/two.prj"));
    QCOMPARE(text(maCmdDeleteAll), langText(43));
    bench.prj().focusTable();
    for (TMainAction id : {maCfgDelete, maCfgPaste, maCmdMoveUp, maCmdPaste, maPrjPasteNew})
        QVERIFY2(!bench.isEnabled(id), qPrintable(text(id)));
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

/// Actions on commands are done while the table has the focus, which menus and buttons leave to it.
void TestMainWindow::keysAndMenus()
{
    WindowBench bench;
    bench.openWith("A: delay value=0, stop, pause, stop, calc_crc");
    TMainWindow& window = bench.window();
    const QTableWidget* table = bench.table(0);
    bench.trigger(maSetViewParamExec);
    bench.prj().current()->logExec()->edit()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    QCOMPARE(bench.after(maCmdDeleteCur), QString("A: delay stop pause stop calc_crc"));
    bench.clickRow(4);
    bench.click(mbSave);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    QCOMPARE(bench.configs(), QString("A: delay stop pause stop"));

    const auto row = [&](int i) { return table->visualItemRect(table->item(i, 1)).center(); };
    QMenu* menu = contextMenu(bench, table->viewport(), row(1));
    QCOMPARE(texts(menu), texts(window.menu(mmCmd)));
    choose(menu, window.action(maCmdDeleteCur));
    QCOMPARE(bench.configs(), QString("A: delay pause stop"));

    menu = contextMenu(bench, table->viewport(), row(0), Qt::ControlModifier);
    QCOMPARE(texts(menu), texts(window.menu(mmCfg)));
    choose(menu, window.action(maCfgCopy));
    QCOMPARE(bench.status(), langText(121).arg("A"));

    TTreeWidget* tree = window.prjList()->tree();
    menu = contextMenu(bench, tree->viewport(), {50, 5});
    QCOMPARE(texts(menu), texts(window.menu(mmPrj)) << "" << langText(11));
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
    QCOMPARE(bench.configs(), QString("A: pause delay stop"));
}

void TestMainWindow::settingsFromTheWindow()
{
    WindowBench bench;
    bench.openWith("A: delay value=0, !stop");
    const auto* bar = bench.prj().findChild<QTabBar*>();
    const QTableWidget* table = bench.table(0);
    QVERIFY(!bar->isVisible() && !table->isRowHidden(1));
    bench.inDialog = [](QDialog& dialog) {
        for (QCheckBox* box : dialog.findChildren<QCheckBox*>()) {
            if (QStringList{langText(237), langText(241), langText(242)}.contains(box->text()))
                box->click();
        }
    };
    bench.click(mbSettings);
    QVERIFY(bar->isVisible() && table->isRowHidden(1));
    QVERIFY(bench.window().button(mbHide)->isChecked());
    QVERIFY(!appData().PrjListShowName && !appData().PrjHideTabCfg);
    bench.click(mbHide);
    QVERIFY(!table->isRowHidden(1) && !appData().HideUncheckCmd);
    QCOMPARE(bench.after(maCmdUncheckAll), QString("A: !delay !stop"));
    bench.click(mbHide);
    QVERIFY(table->isRowHidden(0) && table->isRowHidden(1));

    const QString file = fileInAppDir("ini");
    QFile::remove(file);
    QVERIFY(bench.trigger(maSaveSettings));
    QCOMPARE(bench.boxes, QStringList{langText(83)});
    QVERIFY(QSettings(file, QSettings::IniFormat).value("Interface/HideUncheckCmd").toBool());
    // A folder in the place of the file cannot be written, whoever runs the test.
    QVERIFY(QFile::remove(file) && QDir().mkpath(file));
    QVERIFY(bench.trigger(maSaveSettings));
    QVERIFY2(bench.boxes.last().contains(file), qPrintable(bench.boxes.last()));
    QVERIFY(QDir().rmdir(file));
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
    bench.open();
    QVERIFY(bench.window().menu(mmTop)->title() != "&File" &&
            bench.window().menu(mmTop)->title() == langText(3));

    QDesktopServices::setUrlHandler("file", this, "slotUrl");
    const QString manual = QCoreApplication::applicationDirPath() + "/manual.html";
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
    bench.openWith("Go: " + link + flash + ", ident, pause, delay value=1");
    const TButtonAction* execute = bench.window().button(mbExecute);
    QCOMPARE(execute->toolTip(), langText(68));

    QVERIFY(runsTo(bench, 0, csPause));
    QCOMPARE(execute->toolTip(), langText(69));
    QCOMPARE(bench.prj().current()->page(), TWgtConfig::PageExec);
    QCOMPARE(execute->palette().color(QPalette::Button), appData().ExecBtnColorPause);
    QVERIFY(!bench.isEnabled(maExecIDProg));
    QVERIFY(runsTo(bench, 0, csDone));
    QCOMPARE(execute->toolTip(), langText(68));
    QCOMPARE(tabColor(bench, 0), appData().ExecTabColorSuccess);
    QVERIFY2(bench.log(0).contains("Ident") && bench.log(0).endsWith(langText(391)),
             qPrintable(bench.log(0)));
    // The lines have their colours.
    QTextCursor cursor(bench.prj().current()->logExec()->edit()->document());
    cursor.movePosition(QTextCursor::End);
    QCOMPARE(cursor.charFormat().foreground().color(), appData().ExecLogColorSuccess);

    // A pause that is stopped by Ctrl.
    QVERIFY(runsTo(bench, 0, csPause));
    bench.click(mbExecute, Qt::ControlModifier);
    QVERIFY(becomes(0, csDone) && bench.waitIdle());
    QVERIFY2(bench.log(0).endsWith(langText(390)), qPrintable(bench.log(0)));
    QVERIFY(bench.trigger(maExecClearState));
    QCOMPARE(status(0), int(csIdle));
}

void TestMainWindow::runsSideBySide()
{
    WindowBench bench;
    bench.openWith("A: execute cfg=1, delay value=3000; B: pause, stop; C: delay value=3000; D: " + link);
    const TButtonAction* execute = bench.window().button(mbExecute);
    const auto showTab = [&](int index) { bench.prj().setCurrentIndex(index); };
    bench.trigger(maExecCfg);
    QVERIFY(becomes(1, csPause));
    QCOMPARE(status(0), int(csRun));
    showTab(2);
    bench.trigger(maExecCfg);
    QCOMPARE(status(2), int(csRun));
    QCOMPARE(tabColor(bench, 0), appData().ExecTabColorExecute);
    QCOMPARE(tabColor(bench, 1), appData().ExecTabColorPause);
    // The button means the configuration that is shown. There is nothing at its port.
    showTab(3);
    bench.click(mbExecute);
    QVERIFY(becomes(3, csFailed));
    QCOMPARE(tabColor(bench, 3), appData().ExecTabColorFailed);
    const QString log = bench.log(3);
    QVERIFY2(log.contains("Port /nowhere: " + langText(393)) && log.contains(langText(386)), qPrintable(log));
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
    QVERIFY(bench.close());
}

void TestMainWindow::idProgAndReset()
{
    const QString avr = ", set_device device=ATmega328P file=avr/ATmega328P.dev clk=100000 data=";
    const struct
    {
        QString commands;
        TMainAction action;
        const char* log; ///< null if the action is off
    } rows[] = {
        {link, maExecIDProg, "ID Prog"},
        {"delay value=0", maExecIDProg, nullptr},
        {link + flash, maExecReset, nullptr},
        {link + avr, maExecReset, "Reset (-400 ms)"},
    };
    for (const auto& row : rows) {
        SimProcess sim;
        QVERIFY2(sim.isReady(), sim.output().constData());
        WindowBench bench;
        appData().progNames.append("Simulator", true, sim.path(), "Simulator");
        bench.openWith("A: " + row.commands);
        bench.clickRow(row.commands.count(','));
        QCOMPARE(bench.trigger(row.action), row.log != nullptr);
        const QString log = bench.log(0);
        QVERIFY2(log.contains(row.log) && log.endsWith(row.log ? "Done" : ""), qPrintable(log));
        QCOMPARE(status(0), int(csIdle));
    }
}

/// The last one starts another run behind the stop, for which a process does not end.
void TestMainWindow::closeDuringRun()
{
    for (const QString& commands : QStringList{"delay value=20000", "delay value=1, jamp to_cmd=0",
                                               "execute cfg=0, delay value=1, jamp to_cmd=0",
                                               "set_prog prog=Simulator alt_enabled=true alt_port=/dev/ptmx",
                                               "process file=%1, execute cfg=1"}) {
        WindowBench bench;
        const QString script = bench.dir().write("script", "#!/bin/sh\nsleep 0.5\n");
        QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner);
        bench.openWith("A: " + QString(commands).replace("%1", script) + "; B: pause");
        bench.trigger(maExecCfg);
        QTest::qWait(30);
        const bool ran = !bench.window().runs()->isIdle();
        bench.window().close();
        bench.settle();
        if (commands.contains("%1")) {
            QVERIFY(bench.window().isWaitingForRuns());
            QCOMPARE(bench.status(), langText(422));
            // While it waits the window lives.
            QVERIFY(!bench.isEnabled(maExecCfg) && bench.trigger(maSetViewParamPrj));
        }
        QVERIFY2(bench.close(), qPrintable(commands));
        QCOMPARE(bench.boxes, ran ? QStringList{runsQuestion} : QStringList());
        QVERIFY(bench.window().runs()->isIdle() && !project().isOpen());
    }
}

/// Refused, nothing has happened; agreed to, the run ends first.
void TestMainWindow::leaveDuringRun()
{
    const std::pair<int, const char*> rows[] = {
        {closing, ""},
        {switching, "C: jamp stop !pause"},
        {maPrjListReload, ""},
        {maCfgDelete, "B: delay delay"},
        {maPrjDelete, "C: jamp stop !pause"},
        {maPrjEdit, "D: stop"},
    };
    for (const auto& [way, after] : rows) {
        WindowBench bench;
        bench.openSamples("One");
        const auto leave = [&bench, way = way] {
            bench.prj().focusTable();
            bench.typed = QStringList{"One", "sub.prj"};
            if (way == switching)
                bench.clickNode("Two");
            else
                way == closing ? bench.close() : bench.trigger(TMainAction(way));
        };
        QVERIFY(runsTo(bench, 0, csPause));
        bench.yes = false;
        leave();
        QCOMPARE(bench.boxes, QStringList{runsQuestion});
        QCOMPARE(status(0), int(csPause));
        QCOMPARE(bench.nodeNames(), QString("One Two .Sub Group"));
        QCOMPARE(bench.window().prjList()->nodeName(), QString("One"));
        QCOMPARE(bench.configs(), QString("A: delay pause stop; B: delay delay"));
        bench.yes = true;
        leave();
        QVERIFY(bench.waitIdle());
        QTRY_COMPARE(bench.configs(), QString(after));
        QVERIFY(!bench.window().isWaitingForRuns());
        QCOMPARE(bench.isEnabled(maExecCfg), project().isOpen());
    }
}

/// Buttons and hot keys leave the focus in the field whose value is not stored yet.
void TestMainWindow::typedValueCounts()
{
    for (const TMainAction id : {maExecCfg, maPrjSave, maPrjListReload}) {
        WindowBench bench;
        bench.openWith("A: delay value=5");
        appData().AutoSavePrj = true;
        bench.clickRow(0);
        auto* field = bench.prj().current()->form()->findChild<QLineEdit*>();
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, "17");
        QVERIFY(bench.trigger(id) && bench.waitIdle());
        if (id == maExecCfg)
            QCOMPARE(project().cmdAt(0)->param(key::value).toString(), QString("17"));
        else
            QVERIFY(bench.dir().read("projects/main.prj").contains("\"17\""));
    }
}

void TestMainWindow::unsavedChanges()
{
    const struct
    {
        bool autoSave, writable, yes;
        int questions;
        bool closes, stored;
    } rows[] = {
        {true, true, false, 0, true, true},    {false, true, true, 1, true, true},
        {false, true, false, 1, true, false},  {false, false, true, 2, true, false},
        {true, false, false, 1, false, false},
    };
    for (const auto& row : rows) {
        WindowBench bench;
        bench.openSamples("One");
        appData().AutoSavePrj = row.autoSave;
        bench.yes = row.yes;
        QVERIFY(bench.trigger(maCmdDeleteCur) && project().isChanged());
        const QString file = bench.dir().file("projects/one.prj");
        const QByteArray before = bench.dir().read("projects/one.prj");
        // A folder in the place of the file cannot be written, whoever runs the test.
        if (!row.writable)
            QVERIFY(QFile::remove(file) && QDir().mkpath(file + "/x"));
        bench.clickNode("Two");
        QCOMPARE(bench.boxes.size(), row.questions);
        QCOMPARE(bench.window().prjList()->nodeName(), QString(row.closes ? "Two" : "One"));
        QVERIFY(project().file().endsWith(row.closes ? "two.prj" : "one.prj"));
        QCOMPARE(project().isChanged(), !row.closes);
        QCOMPARE(row.writable && bench.dir().read("projects/one.prj") != before, row.stored);
        project().clearChanged();
    }
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
        bench.show("One");
        QVERIFY(bench.trigger(maCmdMoveDown));
        bench.clickNode(name);
        QVERIFY2(bench.status().startsWith(langText(text) + ": "), qPrintable(bench.status()));
        QVERIFY(!project().isOpen());
        QCOMPARE(bench.prj().count(), 0);
        QVERIFY(!bench.window().button(mbExecute)->isVisible());
    }
}

void TestMainWindow::selectorFollows()
{
    WindowBench bench;
    bench.openWith("A: delay value=0, stop");
    QVERIFY(bench.trigger(maCmdSelector));
    QVERIFY(bench.window().cmdSelector() && bench.window().button(mbCmdSelector)->isChecked());
    emit bench.window().cmdSelector()->signalAddCmd(cmd::pause, false);
    bench.settle();
    QCOMPARE(bench.configs(), QString("A: delay !pause stop"));
    QCOMPARE(bench.prj().currentRow(), 1);
    bench.window().cmdSelector()->close();
    bench.settle();
    QVERIFY(!bench.window().cmdSelector() && !bench.window().action(maCmdSelector)->isChecked());
    QVERIFY(bench.trigger(maCmdSelector) && bench.trigger(maCmdSelector));
    QVERIFY(!bench.window().cmdSelector());
    QVERIFY(bench.trigger(maCmdSelector));
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
    bench.window().setGeometry(31, 42, 701, 555);
    bench.window().prjList()->tree()->topLevelItem(1)->setExpanded(false);
    bench.question("Confirmation/Quit") = true;
    bench.yes = false;
    QVERIFY(!bench.close());
    QCOMPARE(bench.boxes, QStringList{langText(89)});
    QCOMPARE(appData().LastPrj, -1);
    bench.yes = true;
    QVERIFY(bench.close());
    appData().SaveSettingsWindow = true;
    appData().OpenLastPrj = true;
    appData().WindowMainCenter = false;
    bench.open();
    QCOMPARE(bench.window().geometry(), QRect(31, 42, 701, 555));
    QVERIFY(!bench.window().prjList()->tree()->topLevelItem(1)->isExpanded());
    QVERIFY(project().file().endsWith("one.prj"));
    QCOMPARE(bench.prj().currentIndex(), 1);
    QCOMPARE(bench.prj().currentRow(), 1);
    QVERIFY(bench.prj().tableHasFocus());
    // A place that is no more.
    QVERIFY(bench.close());
    appData().LastPrj = 99;
    bench.open();
    QVERIFY(!project().isOpen());
}

QTEST_MAIN(TestMainWindow)
#include "test_main_window.moc"
