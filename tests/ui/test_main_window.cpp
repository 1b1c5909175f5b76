#include "app/startup.h"
#include "base/TLang.h"
#include "base/helpers.h"
#include "base/qt_versions.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "support/SimProcess.h"
#include "ui/TButtonAction.h"
#include "ui/WindowBench.h"
#include "ui/dialogs/TDialogCmdSelector.h"
#include "ui/dialogs/TDialogManual.h"
#include "ui/panels/TWgtLogExec.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDesktopServices>
#include <QLibraryInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QTabBar>
#include <QTextBrowser>

#include <thread>

namespace {

const QString runsQuestion = "Configurations are running. Stop them?";

QColor tabColor(WindowBench& bench, int index)
{
    return bench.prj().findChild<QTabBar*>()->tabTextColor(index);
}

/// Of the runs of all configurations.
QList<int> states()
{
    QList<int> all;
    for (const TDataCfg* config : project().cfgList())
        all.append(project().cfgStatus(config->id()));
    return all;
}

bool becomes(int index, int wanted)
{
    return QTest::qWaitFor([=] { return states().at(index) == wanted; }, 15000);
}

bool runsTo(WindowBench& bench, int index, int wanted, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    bench.click(mbExecute, modifiers);
    return becomes(index, wanted);
}

/// Whether a pattern is in the log of a tab, which it shows if not.
bool logHas(WindowBench& bench, int index, const QString& pattern)
{
    const QRegularExpression wanted(pattern, QRegularExpression::DotMatchesEverythingOption);
    if (wanted.match(bench.log(index)).hasMatch())
        return true;
    qWarning().noquote() << bench.log(index);
    return false;
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

void choose(QMenu* menu, QAction* action)
{
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    WindowBench::settle();
}

/// Clicks with the right button, as the window system hands it in, and chooses; the texts of the menu.
QStringList fromMenuAt(WindowBench& bench, const QWidget* widget, const QPoint& pos, TMainAction id,
                       Qt::KeyboardModifiers keys = {})
{
    const QPoint at = widget->mapTo(&bench.window(), pos);
    QTest::mouseClick(bench.window().windowHandle(), Qt::RightButton, keys, at);
    QMenu* menu = openMenu();
    const QStringList all = texts(menu);
    if (menu)
        choose(menu, bench.window().action(id));
    return all;
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
    void startButtonAndTasks();
    void runsSideBySide();
    void dialogHoldsNoRunUp();
    void closeDuringRun();
    void leaveDuringRun_data();
    void leaveDuringRun();
    void typedValueCounts();
    void cancelledQuestion();
    void listOfOthers_data();
    void listOfOthers();
    void savedElsewhere();
    void saveDuringRun();
    void selectorFollows();
    void textKeysOfViews();
    void unchecked();
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
    QVERIFY(bench.play(
        "-CfgNew ExecCfg1, +PrjListNew Quit, @Group, +PrjEdit, -CfgNew, @Two, +CfgNew, -CmdPaste"));
    QVERIFY(execute->isVisible());
    QVERIFY(bench.status().endsWith("projects/two.prj"));
    QCOMPARE(text(maCmdDeleteAll), langText(Text::ActionCmdDeleteAll));
    QVERIFY(bench.play("#2, CmdCopyOne, +CmdPaste"));
    QCOMPARE(text(maCmdPaste), QString("Paste commands [Pause]"));
    QVERIFY(bench.play("CfgNew R&D, +CfgDelete, -CmdDeleteAll, CfgCopy, +CfgPasteNew"));
    QCOMPARE(text(maCmdDeleteAll), langText(Text::ActionCmdDeleteAllOfCfg));
    QCOMPARE(text(maCfgPaste), QString("Paste configuration [R&&D]"));
    QCOMPARE(bench.status(), QString("Configuration \"R&D\" copied"));
    QVERIFY(bench.play("PrjCopy, +PrjPasteNew"));
    QCOMPARE(text(maPrjPasteNew), QString("Paste project [Two]"));
}

/// Actions on commands are done while the table has the focus, which menus and buttons leave to it.
void TestMainWindow::keysAndMenus()
{
    WindowBench bench;
    bench.openWith("A: delay value=0, stop, pause, stop, calc_crc");
    TMainWindow& window = bench.window();
    const QTableWidget* table = bench.table(0);
    bench.play("ViewParamExec");
    bench.prj().current()->logExec()->edit()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    QCOMPARE(bench.after("CmdDeleteCur"), QString("A: delay stop pause stop calc_crc"));
    bench.clickRow(4);
    bench.click(mbSave);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
    QCOMPARE(bench.configs(), QString("A: delay stop pause stop"));

    const auto row = [&](int i) { return table->visualItemRect(table->item(i, 1)).center(); };
    QCOMPARE(fromMenuAt(bench, table->viewport(), row(1), maCmdDeleteCur), texts(window.menu(mmCmd)));
    QCOMPARE(bench.configs(), QString("A: delay pause stop"));
    QCOMPARE(fromMenuAt(bench, table->viewport(), row(0), maCfgCopy, Qt::ControlModifier),
             texts(window.menu(mmCfg)));
    QCOMPARE(bench.status(), langText(Text::CfgCopied).arg("A"));
    QCOMPARE(fromMenuAt(bench, window.prjList()->tree()->viewport(), {50, 5}, maPrjListDragDrop),
             texts(window.menu(mmPrj)) << "" << langText(Text::ActionPrjListDragDrop));
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
            if (QStringList{langText(Text::SettingPrjListShowName), langText(Text::SettingPrjHideTabCfg),
                            langText(Text::SettingHideUncheckCmd)}
                    .contains(box->text()))
                box->click();
        }
    };
    bench.click(mbSettings);
    QVERIFY(bar->isVisible() && table->isRowHidden(1));
    QVERIFY(bench.window().button(mbHide)->isChecked());
    QVERIFY(!appData().PrjListShowName && !appData().PrjHideTabCfg);
    bench.click(mbHide);
    QVERIFY(!table->isRowHidden(1) && !appData().HideUncheckCmd);
    QCOMPARE(bench.after("CmdUncheckAll"), QString("A: !delay !stop"));
    bench.click(mbHide);
    QVERIFY(table->isRowHidden(0) && table->isRowHidden(1));

    const QString file = fileInAppDir("ini");
    QFile::remove(file);
    QVERIFY(bench.play("SaveSettings"));
    QCOMPARE(bench.boxes, QStringList{langText(Text::AskSaveSettings)});
    QVERIFY(QSettings(file, QSettings::IniFormat).value("Interface/HideUncheckCmd").toBool());
    // A folder in the place of the file cannot be written, whoever runs the test.
    QVERIFY(QFile::remove(file) && QDir().mkpath(file));
    QVERIFY(bench.play("SaveSettings"));
    QVERIFY2(bench.boxes.last().contains(file), qPrintable(bench.boxes.last()));
    QVERIFY(QDir().rmdir(file));
}

void TestMainWindow::languageAndHelp()
{
    WindowBench bench;
    bench.openSamples("One");
    const auto title = [&] { return bench.window().menu(mmTop)->title(); };
    for (int row : {0, 1}) {
        QCOMPARE(bench.boxes, QStringList());
        bench.inDialog = [row](QDialog& dialog) { dialog.findChild<QListWidget*>()->setCurrentRow(row); };
        QVERIFY(bench.play("Language"));
    }
    QCOMPARE(appData().Language, QString("rus.lng"));
    QCOMPARE(QSettings(fileInAppDir("ini"), QSettings::IniFormat).value("Main/Language").toString(),
             QString("rus.lng"));
    QCOMPARE(bench.boxes, QStringList{langText(Text::LanguageChanged)});
    QCOMPARE(title(), QString("&File"));
    loadLanguage();
    bench.open();
    QVERIFY(title() != "&File" && title() == langText(Text::MenuFile));
    // Qt's own words come along; those in the folder of languages go before Qt's.
    const auto cancel = [] { return QCoreApplication::translate("QPlatformTheme", "Cancel"); };
    QCOMPARE(cancel(), QString("Отмена"));
    appData().Language = "eng.lng";
    loadLanguage();
    QCOMPARE(cancel(), QString("Cancel"));
    const QString words = qtTranslationsFolder() + "/qtbase_ru.qm";
    QVERIFY(QFile::copy(VM_DATA_DIR "/language/eng.lng", bench.dir().file("eng.lng")));
    QVERIFY(QFile::copy(words, bench.dir().file("qtbase_en.qm")));
    appData().PathLanguage = bench.dir().path();
    loadLanguage();
    QCOMPARE(cancel(), QString("Отмена"));

    QDesktopServices::setUrlHandler("file", this, "slotUrl");
    const QString manual = QCoreApplication::applicationDirPath() + "/manual.html";
    QFile::remove(manual);
    bench.boxes.clear();
    QVERIFY(bench.play("Help"));
    QCOMPARE(bench.boxes, QStringList{langText(Text::ManualNotOpened).arg(manual)});
    QVERIFY(QFile::copy(VM_DATA_DIR "/manual.html", manual));
    QVERIFY(bench.play("Help, Help, @One, PrjOpenFolder, PrjListOpenFolder"));
    const auto pages = bench.window().findChildren<TDialogManual*>();
    QVERIFY(pages.size() == 1 && pages[0]->isVisible() && !pages[0]->isModal());
    QVERIFY(pages[0]->page()->toPlainText().contains("BIN+"));
    const QString folder = bench.dir().file("projects");
    QCOMPARE(m_opened, (QStringList{folder, folder}));
    QDesktopServices::unsetUrlHandler("file");
}

void TestMainWindow::startButtonAndTasks()
{
    SimProcess sim({"--chip", "W25Q64"});
    QVERIFY2(sim.isReady(), sim.output().constData());
    WindowBench bench;
    appData().progNames.append("Simulator", true, sim.path(), "Simulator");
    bench.openWith("Go: delay value=1, PROG, FLASH, ident, pause, unique_id_read; R: PROG, AVR");
    const TButtonAction* execute = bench.window().button(mbExecute);
    QCOMPARE(execute->toolTip(), langText(Text::TipExecute));
    QVERIFY(runsTo(bench, 0, csPause));
    QCOMPARE(execute->toolTip(), langText(Text::TipContinue));
    QCOMPARE(bench.prj().current()->page(), TWgtConfig::PageExec);
    QCOMPARE(execute->palette().color(QPalette::Button), appData().ExecBtnColorPause);
    QVERIFY(bench.play("#1, -ExecIDProg, #5"));
    // The form of a command that reads is open: it, the row and the project take what the chip answers.
    const auto shown = [&] { return bench.prj().current()->form()->findChild<QLineEdit*>()->text(); };
    QCOMPARE(shown(), QString(16, '0'));
    QVERIFY(runsTo(bench, 0, csDone) && bench.waitIdle());
    const QString read = project().cmdsOfCfg(bench.prj().currentCfg()).at(5)->param(key::data).toString();
    QVERIFY(read.size() == 16 && read != QString(16, '0'));
    QTRY_COMPARE(shown(), read);
    QCOMPARE(bench.table(0)->item(5, 2)->text(), read);
    QVERIFY(bench.play("PrjSave"));
    QCOMPARE(bench.fileDifference(), QString());
    QCOMPARE(execute->toolTip(), langText(Text::TipExecute));
    QCOMPARE(tabColor(bench, 0), appData().ExecTabColorSuccess);
    QVERIFY(logHas(bench, 0, "Ident.*" + langText(Text::Done) + '$'));

    // A pause that is stopped by Ctrl.
    QVERIFY(runsTo(bench, 0, csPause));
    QVERIFY(runsTo(bench, 0, csDone, Qt::ControlModifier) && bench.waitIdle());
    QVERIFY(logHas(bench, 0, langText(Text::StoppedByUser) + '$'));
    QCOMPARE(tabColor(bench, 0), appData().ExecTabColorStopped);
    QVERIFY(bench.play("ExecClearCfgState, #0, -ExecIDProg, #2, -ExecReset, ExecIDProg"));
    QVERIFY(logHas(bench, 0, "ID Prog\n.*Velmarkion simulator\n.*Done$"));
    // From anywhere in the window, as its button does not take the focus.
    bench.prj().tabAt(0)->logExec()->clear();
    bench.prj().tabAt(0)->logExec()->edit()->setFocus();
    bench.click(mbIdProg);
    QVERIFY(logHas(bench, 0, "ID Prog\n.*Done$"));
    bench.prj().setCurrentIndex(1);
    QVERIFY(bench.play("#1, ExecReset"));
    QVERIFY(logHas(bench, 1, "Reset .-400 ms..*Done$"));
    QCOMPARE(states(), (QList<int>{csIdle, csIdle}));
}

void TestMainWindow::runsSideBySide()
{
    WindowBench bench;
    bench.openWith("A: execute cfg=1, delay value=3000; B: pause, stop; C: delay value=3000; D: PROG");
    const auto toolTip = [&](int index) {
        bench.prj().setCurrentIndex(index);
        return bench.window().button(mbExecute)->toolTip();
    };
    QVERIFY(bench.play("ExecCfg1") && becomes(1, csPause));
    QCOMPARE(toolTip(2), langText(Text::TipExecute));
    QVERIFY(bench.play("ExecCfg1"));
    QCOMPARE(states(), (QList<int>{csRun, csPause, csRun, csIdle}));
    QCOMPARE(tabColor(bench, 0), appData().ExecTabColorExecute);
    QCOMPARE(tabColor(bench, 1), appData().ExecTabColorPause);
    // The button means the configuration that is shown. There is nothing at its port.
    QCOMPARE(toolTip(3), langText(Text::TipExecute));
    QVERIFY(runsTo(bench, 3, csFailed));
    QCOMPARE(tabColor(bench, 3), appData().ExecTabColorFailed);
    QVERIFY(logHas(bench, 3, langText(Text::RunFailed) + ".*Port /nowhere: " + langText(Text::PortMissing)));
    QCOMPARE(toolTip(1), langText(Text::TipContinue));
    QCOMPARE(toolTip(0), langText(Text::TipStop));
    QVERIFY(runsTo(bench, 0, csDone));
    QCOMPARE(states(), (QList<int>{csDone, csPause, csRun, csFailed}));
    // The state of what runs cannot be cleared.
    QVERIFY(bench.play("ExecClearAllState"));
    QCOMPARE(states(), (QList<int>{csIdle, csPause, csRun, csIdle}));
    QVERIFY(bench.close());
}

/// A click may arrive in the middle of a line that a run writes, and the run waits for the line's end.
void TestMainWindow::dialogHoldsNoRunUp()
{
    WindowBench bench;
    bench.openWith("A: delay value=1");
    QStringList order;
    for (const bool closes : {false, true}) {
        const auto use = [&] {
            order << "user";
            closes ? void(bench.window().close()) : bench.click(mbSettings);
        };
        bench.inDialog = [&](QDialog&) { order << "dialog"; };
        QTimer::singleShot(0, &bench.window(), use);
        bench.prj().tabAt(0)->slotExecEventText(ceText, "text");
        order << (bench.window().isVisible() ? "line" : "closed");
        bench.settle();
    }
    QCOMPARE(order, (QStringList{"user", "line", "dialog", "user", "line"}));
    QVERIFY(!bench.window().isVisible());
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
        // Nobody answers at that port; the silence shall cost no seconds.
        bench.dir().write("progs/simulator.cfg",
                          bench.dir().read("progs/simulator.cfg").replace("TimeOut=10000", "TimeOut=400"));
        bench.openWith("A: " + QString(commands).replace("%1", script) + "; B: pause");
        bench.play("ExecCfg1");
        QTest::qWait(30);
        const bool ran = !bench.window().runs()->isIdle();
        bench.window().close();
        bench.settle();
        if (commands.contains("%1")) {
            QVERIFY(bench.window().isWaitingForRuns());
            QCOMPARE(bench.status(), langText(Text::WaitingForRuns));
            // While it waits the window lives.
            QVERIFY(bench.play("-ExecCfg1, ViewParamPrj"));
        }
        QVERIFY2(bench.close(), qPrintable(commands));
        QCOMPARE(bench.boxes, ran ? QStringList{runsQuestion} : QStringList());
        QVERIFY(bench.window().runs()->isIdle() && !project().isOpen());
    }
}

void TestMainWindow::leaveDuringRun_data()
{
    textRows(R"(
Quit |
@Two | C: jamp stop !pause
PrjListReload |
CfgDelete | B: delay delay
PrjDeleteCur | C: jamp stop !pause
PrjEdit One sub.prj | D: stop
)",
             {"way", "after"});
}

/// Refused, nothing has happened; agreed to, the run ends first.
void TestMainWindow::leaveDuringRun()
{
    QFETCH(QString, way);
    WindowBench bench;
    bench.openSamples("One");
    QVERIFY(runsTo(bench, 0, csPause));
    bench.prj().focusTable();
    bench.yes = false;
    QVERIFY(bench.play(way));
    QCOMPARE(bench.boxes, QStringList{runsQuestion});
    QCOMPARE(states(), (QList<int>{csPause, csIdle}));
    QCOMPARE(bench.nodeNames() + bench.window().prjList()->nodeName(), QString("One Two .Sub GroupOne"));
    QCOMPARE(bench.configs(), QString("A: delay pause stop; B: delay delay"));
    bench.yes = true;
    bench.prj().focusTable();
    QVERIFY(bench.play(way) && bench.waitIdle());
    QFETCH(QString, after);
    QTRY_COMPARE(bench.configs(), after);
    QVERIFY(!bench.window().isWaitingForRuns());
    QVERIFY(bench.play(project().isOpen() ? "+ExecCfg1" : "-ExecCfg1"));
}

/// Buttons and hot keys leave the focus in the field whose value is not stored yet.
void TestMainWindow::typedValueCounts()
{
    for (const QString action : {"ExecCfg1", "PrjSave", "PrjListReload"}) {
        WindowBench bench;
        bench.openWith("A: delay value=5");
        appData().AutoSavePrj = true;
        bench.clickRow(0);
        auto* field = bench.prj().current()->form()->findChild<QLineEdit*>();
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, "17");
        QVERIFY(bench.play(action) && bench.waitIdle());
        if (action == "ExecCfg1")
            QCOMPARE(project().cmdAt(0)->param(key::value).toString(), QString("17"));
        else
            QVERIFY(bench.dir().read("projects/main.prj").contains("\"17\""));
    }
}

/// Cancelled, nothing has happened, whatever led to the question.
void TestMainWindow::cancelledQuestion()
{
    WindowBench bench;
    bench.dir().write("projects/other.lst", R"({"list": []})");
    bench.openSamples("One");
    QVERIFY(bench.play("CmdDeleteCur"));
    bench.yes = false;
    for (const QString way : {"@Two", "PrjListReload", "PrjListLoad other.lst", "PrjDeleteCur",
                              "PrjEdit One sub.prj", "PrjNew New new", "Quit"}) {
        QVERIFY(bench.play(way));
        QCOMPARE(bench.boxes, QStringList{langText(Text::AskSaveChangedPrj).arg("One")});
        QVERIFY(bench.window().isVisible() && project().isChanged());
        QCOMPARE(bench.configs() + bench.window().prjList()->nodeName(),
                 QString("A: pause stop; B: delay delayOne"));
        QCOMPARE(bench.nodeNames().remove(" New"), QString("One Two .Sub Group"));
        bench.boxes.clear();
        bench.prj().focusTable();
    }
}

void TestMainWindow::listOfOthers_data()
{
    // What the user does | what is in the file then | what is pressed | whether the window goes | the list
    // file.
    textRows(R"(
@Two | mine | | goes | mine
@Two | theirs | | goes | theirs
@Up | mine | | goes | unfolded
@Up | theirs | | goes | theirs
@Up | broken | | goes |
@One, PrjEdit Uno one.prj | mine | | goes | edited
@One, PrjEdit Uno one.prj | theirs | Write mine | goes | edited
@One, PrjEdit Uno one.prj | theirs | Keep theirs | goes | theirs
@One, PrjEdit Uno one.prj | theirs | Cancel, Cancel | stays | theirs
@One, PrjEdit Uno one.prj | theirs | Enter, Enter | stays | theirs
@One, PrjEdit Uno one.prj | broken | Enter | stays |
@One, PrjEdit Uno one.prj | broken | Escape | stays |
@One, PrjEdit Uno one.prj | broken | Yes | goes |
@One, PrjEdit Uno one.prj | broken | Save as... | goes |
)",
             {"steps", "state", "press", "goes", "list"});
}

/// A window writes a list that its user has changed, and never without a word over somebody else's. What is
/// unfolded is worth no question.
void TestMainWindow::listOfOthers()
{
    QFETCH(QString, steps);
    QFETCH(QString, state);
    QFETCH(QString, press);
    WindowBench bench;
    const QString name = "projects/test.lst";
    bench.addNode("Up");
    bench.addNode("Down", "E: stop", 1);
    bench.openSamples();
    QVERIFY(bench.close());
    // Written by another program, the node that is opened at the start inside one that is folded.
    const QByteArray mine = bench.dir().read(name).replace("\"expand\": 1", "\"expand\": 0") + "\n\n";
    bench.dir().write(name, mine);
    appData().OpenLastPrj = true;
    appData().LastPrj = 4;
    bench.open();
    QTreeWidget* tree = bench.window().prjList()->tree();
    QVERIFY(project().file().endsWith("sub.prj") && tree->topLevelItem(2)->isExpanded());
    const QByteArray theirs = "{\"list\": [{\"name\": \"Theirs\"}]}";
    const QString file = bench.dir().file(name);
    if (state == "theirs")
        bench.dir().write(name, theirs);
    QVERIFY(state != "broken" || (QFile::remove(file) && QDir().mkpath(file + "/x")));
    bench.press = press.split(", ", Qt::SkipEmptyParts);
    QVERIFY(bench.play(steps));
    if (steps == "@Up")
        QTest::keyClick(tree, Qt::Key_Right);
    bench.typed = QStringList{"saved.lst"};
    const bool goes = bench.close();
    QTEST(QString(goes ? "goes" : "stays"), "goes");
    QVERIFY(bench.press.isEmpty());
    const QByteArray bytes = bench.dir().read(name);
    const bool isUnfolded = bytes.contains("\"expand\": 1, \"name\": \"Up\"");
    const char* changed = isUnfolded ? "unfolded" : bytes.contains("\"Uno\"") ? "edited" : "";
    QTEST(QString(bytes == mine ? "mine" : bytes == theirs ? "theirs" : changed), "list");
    QCOMPARE(bench.dir().read("projects/saved.lst").contains("\"Sub\""), press == "Save as...");
}

void TestMainWindow::savedElsewhere()
{
    WindowBench bench;
    bench.addNode("Main", "A: calc_crc file=data.bin, stop; B: stop, pause");
    QVERIFY(QDir().mkpath(bench.dir().file("projects/far")));
    bench.open();
    QVERIFY(bench.play("-PrjSaveAs, @Main, #1, CmdDeleteCur, PrjSaveAs") && bench.boxes.isEmpty());
    const QByteArray before = bench.dir().read("projects/main.prj");
    QVERIFY(project().isChanged());
    bench.prj().setCurrentIndex(1);
    bench.prj().setCurrentRow(1);
    QVERIFY(bench.play("PrjSaveAs far/new"));
    QCOMPARE(bench.dir().read("projects/main.prj"), before);
    QCOMPARE(bench.nodeNames() + '=' + bench.window().prjList()->nodeFile(), QString("Main new=far/new.prj"));
    QVERIFY(project().file().endsWith("far/new.prj") && !project().isChanged());
    QCOMPARE(bench.configs() + bench.fileDifference() + bench.listDifference(),
             QString("A: calc_crc; B: stop pause"));
    QCOMPARE(project().cmdAt(0)->param(key::file).toString(), QString("../data.bin"));
    QVERIFY(bench.prj().currentIndex() == 1 && bench.prj().currentRow() == 1);
    // Back over the file of the first node, which is that node again.
    QVERIFY(bench.play("PrjSaveAs main.prj"));
    QCOMPARE(bench.nodeNames() + '=' + bench.window().prjList()->nodeFile(), QString("Main new=main.prj"));
    QCOMPARE(project().cmdAt(0)->param(key::file).toString(), QString("data.bin"));
}

/// What a run reports of its changes arrives later than it happens.
void TestMainWindow::saveDuringRun()
{
    WindowBench bench;
    bench.openWith("A: stop");
    // A new icon each time; the images themselves belong to the program.
    const auto icon = [&] { return bench.window().button(mbSave)->icon().cacheKey(); };
    const auto changeInRun = [] { std::thread([] { project().setChanged(); }).join(); };
    const qint64 unchanged = icon();
    changeInRun();
    bench.settle();
    QVERIFY(icon() != unchanged);
    changeInRun();
    bench.window().slotPrjSave();
    const qint64 saved = icon();
    bench.settle();
    QVERIFY(!project().isChanged() && icon() == saved);
    // Somebody else's file is not written over by the save key either.
    bench.dir().write("projects/main.prj", R"({"configurations": [{"name": "Theirs"}]})");
    for (const QString& answer : QStringList{"Escape", "Keep theirs"}) {
        bench.press = QStringList{answer};
        changeInRun();
        QVERIFY(bench.play("PrjSave"));
        QCOMPARE(bench.configs(), QString(answer == "Escape" ? "A: stop" : "Theirs: "));
        QCOMPARE(project().isChanged(), answer == "Escape");
    }
    QVERIFY(bench.dir().read("projects/main.prj").contains("Theirs"));
}

void TestMainWindow::selectorFollows()
{
    WindowBench bench;
    bench.addNode("Group");
    bench.openWith("A: delay value=0, stop, PROG, AVR");
    const auto selector = [&] {
        TDialogCmdSelector* dialog = bench.window().cmdSelector();
        return bench.window().button(mbCmdSelector)->isChecked() == bool(dialog) ? dialog : nullptr;
    };
    QVERIFY(bench.play("CmdSelector") && selector());
    const QRect place = selector()->geometry();
    const QRect screen = selector()->screen()->availableGeometry();
    QCOMPARE(place.intersected(screen), place);
    QVERIFY(selector()->findChild<QPushButton*>(cmd::pause)->isEnabled());
    emit selector()->signalAddCmd(cmd::pause, false);
    bench.settle();
    QCOMPARE(bench.configs(), QString("A: delay !pause stop set_prog set_device"));
    QCOMPARE(bench.prj().currentRow(), 1);
    selector()->close();
    bench.settle();
    QVERIFY(bench.play("CmdSelector") && selector());
    QVERIFY(bench.play("CmdSelector") && !bench.window().cmdSelector());
    // Over the whole screen there is no place beside the window. The commands of a chip make it wider.
    bench.window().setGeometry(screen);
    QVERIFY(bench.play("CmdSelector") && selector());
    const TButtonAction* execute = bench.window().button(mbExecute);
    const QRect start(execute->mapToGlobal(QPoint()), execute->size());
    for (const char* row : {"#3", "#4", "#0", "#4", "#1"}) {
        if (row == QString("#1"))
            selector()->move(screen.bottomRight() - QPoint(90, 90));
        QVERIFY(bench.play(row));
        const QRect now = selector()->frameGeometry();
        QVERIFY2(screen.contains(now) && !now.intersects(start), row);
        // No chip is in force at a set_prog, or without one.
        const QWidget* column = selector()->findChild<QSplitter*>()->widget(2);
        QCOMPARE(column->findChildren<QPushButton*>().isEmpty(), row != QString("#4"));
    }
    project().clearChanged();
    QVERIFY(bench.play("@Group"));
    QVERIFY(!selector()->findChild<QPushButton*>(cmd::pause)->isEnabled());
    QVERIFY(bench.close() && !bench.window().cmdSelector());
}

/// Ctrl+A in the log must not check a command that writes fuses.
void TestMainWindow::textKeysOfViews()
{
    WindowBench bench;
    bench.openWith("A: PROG, FLASH, !data_read addr_device=0 data=0102, stop");
    const QString before = bench.configs();
    bench.window().activateWindow();
    const auto press = [&](QWidget* view, Qt::Key key, Qt::KeyboardModifiers shift = {}) {
        view->setFocus();
        QTest::keyClick(bench.window().windowHandle(), key, Qt::ControlModifier | shift);
        QCOMPARE(bench.configs(), before);
    };
    const auto copied = [&](QWidget* view) {
        QApplication::clipboard()->clear();
        for (Qt::Key key : {Qt::Key_A, Qt::Key_C})
            press(view, key);
        press(view, Qt::Key_A, Qt::ShiftModifier);
        return QApplication::clipboard()->text();
    };
    QVERIFY(bench.play("#1"));
    QWidget* form = bench.prj().current()->form();
    QCOMPARE(copied(form->findChild<QLineEdit*>()), QString("W25Q64"));
    for (auto* pane : form->findChildren<QPlainTextEdit*>())
        QCOMPARE(copied(pane), pane->toPlainText());
    QVERIFY(bench.play("#2"));
    QCOMPARE(copied(bench.prj().current()->form()->findChild<QPlainTextEdit*>()), QString("0x00: 01 02"));
    QVERIFY(bench.play("ViewParamExec"));
    TWgtLogExec* log = bench.prj().current()->logExec();
    log->addEvent(ceText, "line", {});
    QCOMPARE(copied(log->edit()).trimmed(), QString("line"));
    log->lock(true);
    QCOMPARE(copied(log->edit()), QString());
}

/// An unchecked command that is new stays to be seen as long as it is the current one.
void TestMainWindow::unchecked()
{
    WindowBench bench;
    bench.openWith("A: delay value=0, !stop, pause, !pause, delay value=1");
    appData().CmdAddState = false;
    const auto shown = [&] {
        QString rows = QString::number(bench.prj().currentRow()) + ' ';
        for (int row = 0; row < bench.table(0)->rowCount(); ++row)
            rows += bench.table(0)->isRowHidden(row) ? '-' : 'x';
        return rows;
    };
    const auto after = [&](const QString& steps) { return bench.play(steps) ? shown() : "off"; };
    QCOMPARE(after("#0, CmdUncheckHide"), QString("0 x-x-x"));
    QCOMPARE(after("CmdNewSetProg"), QString("1 xx-x-x"));
    QCOMPARE(after("CmdCopyOne, #3"), QString("3 x--x-x"));
    QCOMPARE(after("CmdPaste"), QString("4 x--xx-x"));
    QCOMPARE(after("CmdMoveUp"), QString("3 x--xx-x"));
    // What is shown next to it is current, not what is hidden.
    QCOMPARE(after("CmdDeleteCur"), QString("3 x--x-x"));
    QCOMPARE(after("CmdNewSetProg, CmdUncheckHide, CmdUncheckHide"), QString("6 x--x--x"));
    bench.prj().setCurrentRow(1);
    QCOMPARE(shown(), QString("1 xx-x--x"));
    bench.clickRow(1, 0);
    bench.clickRow(1, 0);
    QCOMPARE(shown(), QString("3 x--x--x"));
    QCOMPARE(after("CmdDeleteSelected"), QString("-1 ----"));
}

void TestMainWindow::lastPlaceIsOpened()
{
    WindowBench bench;
    bench.openSamples("One");
    bench.prj().setCurrentIndex(1);
    bench.prj().setCurrentRow(1);
    bench.window().setGeometry(31, 42, 701, 555);
    bench.window().prjList()->tree()->topLevelItem(1)->setExpanded(false);
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
