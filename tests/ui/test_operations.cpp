#include "core/TAppData.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "support/tables.h"
#include "ui/TTreeWidget.h"
#include "ui/TWgtCmdList.h"
#include "ui/TWgtPrj.h"
#include "ui/WindowBench.h"

#include <QTableWidget>

namespace {

const QString flash = "set_device device=W25Q64 file=spi-flash/W25Q64FV.dev clk=4000000";
const QString prog = "set_prog prog=Simulator alt_enabled=false";

/// Instead of the row to copy: all that are checked.
constexpr int checkedRows = 99;

} // namespace

/// What the actions do to the model, the panels and the files.
class TestOperations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void commands_data();
    void commands();
    void questions_data();
    void questions();
    void pasteElsewhereLosesReferences_data();
    void pasteElsewhereLosesReferences();
    void checkAllAndHide();
    void configurations();
    void deletedJampTargetTurnsRed();
    void newProjects();
    void pasteProjectNeverOverwrites();
    void editProject();
    void deleteProjects();
    void dragIsKeptAtTheNextSave();
    void lists();
};

void TestOperations::initTestCase()
{
    const WindowBench loadsTheTexts;
}

/// Whatever the last step says: its box, or the status bar.
void TestOperations::commands_data()
{
    tableColumns<QStringList, int, int, int, QString, int, QString>("configs", "copied", "row", "action",
                                                                    "words", "current", "told");
    const QStringList three{"A: delay value=0; !pause; stop", "B: stop"};
    const QStringList alone{"A: delay value=0; !pause; stop"};
    const QString two =
        prog + ";" + flash + "; ident; delay value=0; erase; set_vcc vcc=3.3;" + flash + "; ident";
    const QStringList chips{"A: " + two, "B: stop"};
    const QString kept = "set_prog set_device ident delay erase set_vcc set_device ident";
    const auto add = [](const char* name, const QStringList& configs, int copied, int row, TMainAction action,
                        const char* words, int current, const QString& told = QString()) {
        tableRow(name, configs, copied, row, int(action), QString(words), current, told);
    };
    add("delete first", three, -1, 0, maCmdDeleteCur, "!pause stop", 0, "Command \"Delay\" deleted");
    add("delete last", three, -1, 2, maCmdDeleteCur, "delay !pause", 1, "Command \"Stop\" deleted");
    add("delete none", three, -1, -1, maCmdDeleteCur, "delay !pause stop", -1);
    add("delete checked", three, -1, 1, maCmdDeleteSelected, "!pause", 0, "Checked commands deleted");
    add("delete checked, none", {"A: !stop", "B: stop"}, -1, 0, maCmdDeleteSelected, "!stop", 0,
        langText(136));
    add("delete all", three, -1, 1, maCmdDeleteAll, "", -1, langText(152).arg("A"));
    add("delete all, one tab", alone, -1, 1, maCmdDeleteAll, "", -1, langText(151));
    add("up from first", three, -1, 0, maCmdMoveUp, "delay !pause stop", 0);
    add("down from first", three, -1, 0, maCmdMoveDown, "!pause delay stop", 1);
    add("up from last", three, -1, 2, maCmdMoveUp, "delay stop !pause", 1);
    add("down from last", three, -1, 2, maCmdMoveDown, "delay !pause stop", 2);
    add("up from none", three, -1, -1, maCmdMoveUp, "delay !pause stop", -1);
    add("paste behind first", three, 2, 0, maCmdPaste, "delay stop !pause stop", 1,
        "Command \"Stop\" pasted");
    add("paste behind last", three, 0, 2, maCmdPaste, "delay !pause stop delay", 3,
        "Command \"Delay\" pasted");
    add("paste, none current", three, 2, -1, maCmdPaste, "stop delay !pause stop", 0,
        "Command \"Stop\" pasted");
    add("paste more", three, checkedRows, 1, maCmdPaste, "delay !pause delay stop stop", 2, langText(133));
    add("new behind first", three, -1, 0, maCmdNewSetProg, "delay set_prog !pause stop", 1);
    add("two new behind last", three, -1, 2, maCmdNewSetProgDevice, "delay !pause stop set_prog set_device",
        4);
    add("new, none current", three, -1, -1, maCmdNewSetDevice, "delay !pause stop set_device", 3);
    add("delete invalid", {"A: " + two + "; fuse_read", "B: fuse_read"}, -1, 0, maCmdDeleteError,
        qPrintable(kept), 0, langText(144).arg("A"));
    add("delete invalid, one tab", {"A: stop; set_vcc vcc=3.3"}, -1, 0, maCmdDeleteError, "stop", 0,
        langText(143));
    add("nothing invalid", {"A: stop", "B: fuse_read"}, -1, 0, maCmdDeleteError, "stop", 0,
        langText(140).arg("A"));
    add("nothing invalid, one tab", {"A: stop"}, -1, 0, maCmdDeleteError, "stop", 0, langText(139));
    // From a command in the middle, back to its chip and on to the next one.
    add("delete of device", chips, -1, 3, maCmdDeleteDev,
        "set_prog set_device delay set_vcc set_device ident", 1, langText(148).arg("W25Q64"));
    add("delete of device, none", {"A: " + prog + ";" + flash + "; stop", "B: stop"}, -1, 2, maCmdDeleteDev,
        "set_prog set_device stop", 2, langText(146).arg("W25Q64"));
    add("no device above", chips, -1, 0, maCmdDeleteDev, qPrintable(kept), 0,
        langText(145).arg("Set Device"));
}

void TestOperations::commands()
{
    QFETCH(QStringList, configs);
    QFETCH(int, copied);
    QFETCH(int, row);
    QFETCH(int, action);
    QFETCH(QString, words);
    QFETCH(QString, told);
    WindowBench bench;
    bench.openWith(configs);
    const QString second = bench.words(1);
    if (copied >= 0) {
        bench.clickRow(copied == checkedRows ? 0 : copied);
        QVERIFY(bench.trigger(copied == checkedRows ? maCmdCopySelected : maCmdCopy));
    }
    if (row >= 0)
        bench.clickRow(row);
    else
        bench.prj().setCurrentRow(-1);
    bench.settle();
    bench.trigger(TMainAction(action));
    QCOMPARE(bench.words(0), words);
    QCOMPARE(bench.words(1), second);
    QCOMPARE(bench.difference(), QString());
    QTEST(bench.prj().currentRow(), "current");
    if (!told.isEmpty())
        QCOMPARE(bench.boxes.isEmpty() ? bench.status() : bench.boxes.last(), told);
    QVERIFY(bench.trigger(maPrjSave));
    QCOMPARE(bench.fileDifference(), QString());
}

void TestOperations::questions_data()
{
    tableColumns<int, QString>("action", "text");
    const auto add = [](const char* key, TMainAction action, const QString& text) {
        tableRow(key, int(action), text);
    };
    add("ProjectSave", maPrjSave, "Save the project \"Main\"?");
    add("ProjectDeleteCur", maPrjDelete, langText(113).arg("Main"));
    add("ProjectDeleteSubAll", maPrjDeleteSubAll, langText(115).arg("Main"));
    add("ConfigDeleteCur", maCfgDelete, langText(124).arg("A%5&"));
    add("CmdInsertProg", maCmdNewSetProg, langText(127).arg("Set Prog"));
    add("CmdInsertDevice", maCmdNewSetDevice, langText(127).arg("Set Device"));
    add("CmdInsertProgDevice", maCmdNewSetProgDevice, langText(126).arg("Set Prog", "Set Device"));
    add("CmdPaste", maCmdPaste, langText(131));
    add("CmdDeleteCur", maCmdDeleteCur, langText(134).arg("Identification"));
    add("CmdDeleteSelected", maCmdDeleteSelected, langText(137));
    add("CmdDeleteError", maCmdDeleteError, "Delete all invalid commands of the configuration \"A%5&\"?");
    add("CmdDeleteDev", maCmdDeleteDev, langText(147).arg("W25Q64"));
    add("CmdDeleteAll", maCmdDeleteAll, "Delete all commands of the configuration \"A%5&\"?");
    add("ProjectsListReload", maPrjListReload, langText(95));
    add("ExecConfig", maExecCfg, langText(385).arg("A%5&"));
    add("ExecReset", maExecReset, langText(383));
}

/// Each question stands behind its own switch; No leaves everything as it was.
void TestOperations::questions()
{
    QFETCH(int, action);
    QFETCH(QString, text);
    const QString key = QString("Confirmation/") + QTest::currentDataTag();
    const bool resets = action == maExecReset;
    const QString avr = "set_device device=ATmega328P file=avr/ATmega328P.dev clk=100000 data=";
    WindowBench bench;
    bench.writeProject("main.prj",
                       {"A%5&: " + prog + ";" + (resets ? avr : flash) + "; ident; fuse_nothing", "B: stop"});
    bench.addNode("Main", "main.prj");
    bench.addNode("Below", "below.prj", 1);
    bench.open();
    bench.clickNode("Main");
    bench.clickRow(2);
    QVERIFY(bench.trigger(maCmdCopySelected));
    const QString before = bench.words(0);
    bench.question(key) = true;
    bench.yes = false;
    QVERIFY(bench.trigger(TMainAction(action)));
    QCOMPARE(bench.boxes, QStringList{text});
    QCOMPARE(bench.words(0), before);
    QCOMPARE(bench.nodeNames(), QString("Main .Below"));
    QCOMPARE(bench.difference(), QString());
    QCOMPARE(project().cfgStatus(project().cfgIdAt(0)), int(csIdle));
    QVERIFY(!project().isChanged() && bench.log(0).isEmpty());

    bench.question(key) = false;
    QVERIFY(bench.trigger(TMainAction(action)));
    QCOMPARE(bench.boxes.size(), 1);
    QVERIFY(bench.waitIdle());
    QCOMPARE(bench.difference(), QString());
}

void TestOperations::pasteElsewhereLosesReferences_data()
{
    tableColumns<bool, bool>("sameProject", "wholeCfg");
    tableRow("commands, same project", true, false);
    tableRow("commands, other project", false, false);
    tableRow("configuration, same project", true, true);
    tableRow("configuration, other project", false, true);
}

void TestOperations::pasteElsewhereLosesReferences()
{
    QFETCH(bool, sameProject);
    QFETCH(bool, wholeCfg);
    WindowBench bench;
    bench.writeProject("refs.prj", {"R: jamp to_cmd=2; execute cfg=0; auto_detect route=EF4017=0"});
    bench.addNode("Refs", "refs.prj");
    bench.openSamples("Refs");
    bench.clickRow(0);
    QVERIFY(bench.trigger(wholeCfg ? maCfgCopy : maCmdCopySelected));
    QCOMPARE(bench.status(), wholeCfg ? langText(121).arg("R") : langText(129));
    if (!sameProject) {
        bench.clickNode("Sub");
        bench.clickRow(0);
    }
    bench.typed = QStringList{"New"};
    const int before = project().cmdCount();
    QVERIFY(bench.trigger(wholeCfg ? maCfgPaste : maCmdPaste));
    QCOMPARE(project().cmdCount(), before + 3);
    QCOMPARE(bench.difference(), QString());
    const int place = wholeCfg ? before : 1;
    QCOMPARE(project().cmdAt(place)->param(key::to_cmd).toInt(), sameProject ? 2 : -1);
    QCOMPARE(project().cmdAt(place + 1)->param(key::cfg).toInt(), sameProject ? 0 : -1);
    QCOMPARE(project().cmdAt(place + 2)->param(key::route).toString(),
             QString(sameProject ? "EF4017=0" : ""));
    if (wholeCfg)
        QCOMPARE(project().cfgNames().last(), QString("New"));
}

void TestOperations::checkAllAndHide()
{
    WindowBench bench;
    bench.openWith({"A: delay value=0; !pause; stop", "B: !stop"});
    const auto hidden = [&] {
        QString rows;
        for (int row = 0; row < 3; ++row)
            rows += bench.prj().tabAt(0)->cmdList()->table()->isRowHidden(row) ? '-' : '+';
        return rows;
    };
    QVERIFY(bench.trigger(maCmdUncheckHide));
    QVERIFY(appData().HideUncheckCmd);
    QCOMPARE(hidden(), QString("+-+"));
    QVERIFY(bench.trigger(maCmdCheckAll));
    QCOMPARE(hidden(), QString("+++"));
    QCOMPARE(bench.words(0) + ", " + bench.words(1), QString("delay pause stop, !stop"));
    QVERIFY(bench.trigger(maCmdUncheckAll));
    QCOMPARE(hidden(), QString("---"));
    QVERIFY(bench.trigger(maCmdUncheckHide));
    QCOMPARE(hidden(), QString("+++"));
    bench.clickRow(2, 0);
    QCOMPARE(bench.words(0), QString("!delay !pause stop"));
    QCOMPARE(bench.difference(), QString());
}

void TestOperations::configurations()
{
    WindowBench bench;
    bench.openWith({"A: stop", "B: pause"});
    const auto names = [] { return project().cfgNames().join(' '); };
    bench.typed = QStringList{"New"};
    QVERIFY(bench.trigger(maCfgNew));
    QCOMPARE(names(), QString("A New B"));
    QCOMPARE(bench.prj().currentIndex(), 1);
    QCOMPARE(bench.status(), langText(118).arg("New"));
    QVERIFY(bench.trigger(maCmdNewSetProg));
    QCOMPARE(bench.words(1), QString("set_prog"));
    bench.typed = QStringList{"Renamed"};
    QVERIFY(bench.trigger(maCfgEdit));
    QVERIFY(bench.trigger(maCfgCopy));
    bench.typed = QStringList{"Pasted"};
    QVERIFY(bench.trigger(maCfgPaste));
    QCOMPARE(names(), QString("A Renamed Pasted B"));
    QCOMPARE(bench.words(2), QString("set_prog"));
    QCOMPARE(bench.difference(), QString());
    QVERIFY(bench.trigger(maCfgDelete));
    QVERIFY(bench.trigger(maCfgDelete));
    QCOMPARE(project().cfgNames().size(), 2);
    // Cancelled dialogs change nothing.
    QVERIFY(bench.trigger(maCfgNew));
    QCOMPARE(project().cfgNames().size(), 2);
    QVERIFY(bench.trigger(maPrjSave));
    QCOMPARE(bench.difference() + bench.fileDifference(), QString());
}

void TestOperations::deletedJampTargetTurnsRed()
{
    WindowBench bench;
    bench.openWith({"A: jamp to_cmd=1; stop", "B: jamp to_cmd=1"});
    bench.clickRow(1);
    QVERIFY(bench.trigger(maCmdDeleteCur));
    for (int tab : {0, 1}) {
        const auto* item = bench.prj().tabAt(tab)->cmdList()->table()->item(0, 1);
        QCOMPARE(item->foreground().color(), QColor(Qt::red));
    }
}

void TestOperations::newProjects()
{
    WindowBench bench;
    bench.openSamples("One");
    bench.typed = QStringList{"Fresh", "fresh"};
    QVERIFY(bench.trigger(maPrjNew));
    QCOMPARE(bench.nodeNames(), QString("One Fresh Two .Sub Group"));
    QVERIFY(project().file().endsWith("fresh.prj"));
    QCOMPARE(project().cfgNames(), QStringList{"Config"});
    bench.clickNode("Two");
    bench.typed = QStringList{"Child", "one.prj"};
    QVERIFY(bench.trigger(maPrjAddSub));
    QCOMPARE(bench.nodeNames(), QString("One Fresh Two .Sub .Child Group"));
    QCOMPARE(bench.words(0), QString("delay pause stop"));
    // An existing file is taken as it is.
    bench.typed = QStringList{"Again", "one.prj"};
    QVERIFY(bench.trigger(maPrjNewSub));
    QCOMPARE(bench.words(0), QString("delay pause stop"));
    bench.typed = QStringList{"No", "missing/folder/x.prj"};
    QVERIFY(bench.trigger(maPrjNew));
    QCOMPARE(bench.nodeNames(), QString("One Fresh Two .Sub .Child ..Again Group"));
    QVERIFY(bench.status().contains("x.prj") && bench.listBytes().contains("\"name\": \"Again\""));
}

void TestOperations::pasteProjectNeverOverwrites()
{
    WindowBench bench;
    bench.openSamples("One");
    QVERIFY(bench.trigger(maPrjCopy));
    QCOMPARE(bench.window().action(maPrjPasteNew)->text(), QString("Paste project [One]"));
    const QByteArray two = bench.dir().read("projects/two.prj");
    bench.typed = QStringList{"Bad", "two.prj"};
    QVERIFY(bench.trigger(maPrjPasteNew));
    QVERIFY(bench.status().contains("two.prj"));
    QCOMPARE(bench.dir().read("projects/two.prj"), two);
    bench.typed = QStringList{"Copy", "copy"};
    QVERIFY(bench.trigger(maPrjPasteNewSub));
    QCOMPARE(bench.nodeNames(), QString("One .Copy Two .Sub Group"));
    QCOMPARE(bench.dir().read("projects/copy.prj"), bench.dir().read("projects/one.prj"));
    QCOMPARE(bench.status(), langText(111).arg("One"));
}

void TestOperations::editProject()
{
    WindowBench bench;
    bench.openSamples("One");
    bench.typed = QStringList{"Renamed", "one.prj"};
    QVERIFY(bench.trigger(maPrjEdit));
    QCOMPARE(project().name(), QString("Renamed"));
    QVERIFY(bench.listBytes().contains("Renamed"));
    bench.typed = QStringList{"Renamed", "sub.prj"};
    QVERIFY(bench.trigger(maPrjEdit));
    QVERIFY(project().file().endsWith("sub.prj"));
    QCOMPARE(bench.words(0), QString("stop"));
    QCOMPARE(bench.difference(), QString());
}

void TestOperations::deleteProjects()
{
    WindowBench bench;
    bench.openSamples("Two");
    QVERIFY(bench.trigger(maPrjDeleteSubAll));
    QCOMPARE(bench.nodeNames(), QString("One Two Group"));
    QVERIFY(project().file().endsWith("two.prj"));
    QVERIFY(bench.trigger(maPrjDelete));
    QCOMPARE(bench.nodeNames(), QString("One Group"));
    QCOMPARE(bench.status(), langText(114).arg("Two"));
    // The project that is shown is that of the node that is current now.
    QCOMPARE(project().isOpen(), !bench.window().prjList()->nodePath().isEmpty());
    QVERIFY(QFile::exists(bench.dir().file("projects/two.prj")));
    bench.clickNode("One");
    QVERIFY(bench.trigger(maPrjDelete));
    QVERIFY(bench.trigger(maPrjDelete));
    QVERIFY(bench.nodeNames().isEmpty() && !project().isOpen());
    QVERIFY(!bench.isEnabled(maPrjDelete));
    QVERIFY(!bench.listBytes().contains("name\":"));
}

void TestOperations::dragIsKeptAtTheNextSave()
{
    WindowBench bench;
    bench.openSamples();
    TTreeWidget* tree = bench.window().prjList()->tree();
    tree->addTopLevelItem(tree->takeTopLevelItem(0));
    bench.settle();
    QVERIFY(bench.listBytes().indexOf("One") < bench.listBytes().indexOf("Two"));
    const QString other = bench.dir().write("projects/other.lst", "{\"version\": 1, \"list\": []}");
    bench.typedFile = other;
    QVERIFY(bench.trigger(maPrjListLoad));
    QCOMPARE(bench.window().prjList()->listFile(), other);
    QVERIFY(bench.listBytes().indexOf("One") > bench.listBytes().indexOf("Two"));
}

void TestOperations::lists()
{
    WindowBench bench;
    bench.openSamples("One");
    const QByteArray old = bench.listBytes();
    const auto withFile = [&](TMainAction action, const QString& name) {
        bench.typedFile = bench.dir().file("projects/" + name);
        return bench.trigger(action);
    };
    // The list that is open is not emptied under its own nodes.
    QVERIFY(withFile(maPrjListNew, "test.lst"));
    QCOMPARE(bench.listBytes(), old);
    QVERIFY(project().isOpen());
    QVERIFY(withFile(maPrjListNew, "fresh"));
    QVERIFY(bench.window().prjList()->listFile().endsWith("fresh.lst"));
    QVERIFY(bench.nodeNames().isEmpty() && !project().isOpen());
    const QByteArray left = bench.listBytes();
    // Copies: a new one, and none over a file that is there.
    QVERIFY(withFile(maPrjListSaveAs, "copy.lst"));
    QVERIFY(QFile::exists(bench.dir().file("projects/copy.lst")));
    bench.boxes.clear();
    QVERIFY(withFile(maPrjListSaveAs, "test.lst"));
    QCOMPARE(bench.listBytes(), left);
    QCOMPARE(bench.boxes.size(), 1);
    bench.dir().write("projects/bad.lst", "{ no list");
    QVERIFY(withFile(maPrjListLoad, "bad.lst"));
    QVERIFY(bench.boxes.last().contains("bad.lst"));
    QVERIFY(!bench.isEnabled(maPrjNew) && !bench.isEnabled(maPrjListReload));
    QVERIFY(withFile(maPrjListLoad, "test.lst"));
    QCOMPARE(bench.nodeNames(), QString("One Two .Sub Group"));
    bench.dir().write("projects/test.lst", QByteArray(left).replace("One", "Uno"));
    QVERIFY(bench.trigger(maPrjListReload));
    QCOMPARE(bench.nodeNames(), QString("Uno Two .Sub Group"));
}

QTEST_MAIN(TestOperations)
#include "test_operations.moc"
