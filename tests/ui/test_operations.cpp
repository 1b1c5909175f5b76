#include "ui/WindowBench.h"

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
    /// The texts are there before the tables are made.
    void initTestCase() { const WindowBench bench; }
    void commands_data();
    void commands();
    void questions_data();
    void questions();
    void pasteElsewhereLosesReferences();
    void configurations();
    void deletedJampTargetTurnsRed();
    void newAndAddedProjects();
    void copiedAndEditedProjects();
    void deletedProjects();
    void lists();
};

void TestOperations::commands_data()
{
    tableColumns<QString, int, int, int, QString, int, QString>("configs", "copied", "row", "action", "after",
                                                                "current", "told");
    const QString b = "; B: stop";
    const QString one = "A: delay value=0, !pause, stop";
    const QString three = one + b;
    const QString chips =
        "A: " + prog + "," + flash + ", ident, delay value=0, erase, set_vcc vcc=3.3," + flash + ", ident";
    const QString kept = "A: set_prog set_device ident delay erase set_vcc set_device ident";
    const auto add = [](const char* name, const QString& configs, int copied, int row, TMainAction action,
                        const QString& after, int current, const QString& told = QString()) {
        tableRow(name, configs, copied, row, int(action), after, current, told);
    };
    const QString same = "A: delay !pause stop" + b;
    add("delete first", three, -1, 0, maCmdDeleteCur, "A: !pause stop" + b, 0, langText(135).arg("Delay"));
    add("delete last", three, -1, 2, maCmdDeleteCur, "A: delay !pause" + b, 1, langText(135).arg("Stop"));
    add("delete none", three, -1, -1, maCmdDeleteCur, same, -1);
    add("delete checked", three, -1, 1, maCmdDeleteSelected, "A: !pause" + b, 0, langText(138));
    add("delete checked, none", "A: !stop" + b, -1, 0, maCmdDeleteSelected, "A: !stop" + b, 0, langText(136));
    add("delete all", three, -1, 1, maCmdDeleteAll, "A: " + b, -1, langText(152).arg("A"));
    add("delete all, one tab", one, -1, 1, maCmdDeleteAll, "A: ", -1, langText(151));
    add("check all", three, -1, 0, maCmdCheckAll, "A: delay pause stop" + b, 0);
    add("uncheck all", three, -1, 0, maCmdUncheckAll, "A: !delay !pause !stop" + b, 0);
    add("up from first", three, -1, 0, maCmdMoveUp, same, 0);
    add("down from first", three, -1, 0, maCmdMoveDown, "A: !pause delay stop" + b, 1);
    add("up from last", three, -1, 2, maCmdMoveUp, "A: delay stop !pause" + b, 1);
    add("down from last", three, -1, 2, maCmdMoveDown, same, 2);
    add("up from none", three, -1, -1, maCmdMoveUp, same, -1);
    add("paste behind first", three, 2, 0, maCmdPaste, "A: delay stop !pause stop" + b, 1,
        langText(132).arg("Stop"));
    add("paste behind last", three, 0, 2, maCmdPaste, "A: delay !pause stop delay" + b, 3,
        langText(132).arg("Delay"));
    add("paste, none current", three, 2, -1, maCmdPaste, "A: stop delay !pause stop" + b, 0);
    add("paste more", three, checkedRows, 1, maCmdPaste, "A: delay !pause delay stop stop" + b, 2,
        langText(133));
    add("new behind first", three, -1, 0, maCmdNewSetProg, "A: delay set_prog !pause stop" + b, 1);
    add("two new", three, -1, 2, maCmdNewSetProgDevice, "A: delay !pause stop set_prog set_device" + b, 4);
    add("new, none current", three, -1, -1, maCmdNewSetDevice, "A: delay !pause stop set_device" + b, 3);
    add("invalid", chips + ", fuse_read; B: erase", -1, 0, maCmdDeleteError, kept + "; B: erase", 0,
        langText(144).arg("A"));
    add("invalid, one tab", "A: stop, set_vcc vcc=3.3", -1, 0, maCmdDeleteError, "A: stop", 0, langText(143));
    add("none invalid", "A: stop; B: erase", -1, 0, maCmdDeleteError, "A: stop; B: erase", 0,
        langText(140).arg("A"));
    add("none invalid, one tab", "A: stop", -1, 0, maCmdDeleteError, "A: stop", 0, langText(139));
    // From a command in the middle, back to its chip and on to the next one.
    add("of device", chips + b, -1, 3, maCmdDeleteDev,
        "A: set_prog set_device delay set_vcc set_device ident" + b, 1, langText(148).arg("W25Q64"));
    add("of device, none", "A: " + prog + "," + flash + ", stop", -1, 2, maCmdDeleteDev,
        "A: set_prog set_device stop", 2, langText(146).arg("W25Q64"));
    add("no device above", chips + b, -1, 0, maCmdDeleteDev, kept + b, 0, langText(145).arg("Set Device"));
}

void TestOperations::commands()
{
    QFETCH(QString, configs);
    QFETCH(int, copied);
    QFETCH(int, row);
    QFETCH(int, action);
    QFETCH(QString, told);
    WindowBench bench;
    bench.openWith(configs);
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
    QTEST(bench.configs(), "after");
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
    add("ProjectSave", maPrjSave, langText(112).arg("Main"));
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
    const QString avr = "set_device device=ATmega328P file=avr/ATmega328P.dev clk=100000 data=";
    WindowBench bench;
    bench.writeProject("main.prj", "A%5&: " + prog + "," + (action == maExecReset ? avr : flash) +
                                       ", ident, fuse_nothing; B: stop");
    bench.addNode("Main", "main.prj");
    bench.addNode("Below", "below.prj", 1);
    bench.open();
    bench.clickNode("Main");
    bench.clickRow(2);
    QVERIFY(bench.trigger(maCmdCopySelected));
    const QString before = bench.configs();
    bench.question(key) = true;
    bench.yes = false;
    QCOMPARE(bench.after(TMainAction(action)), before);
    QCOMPARE(bench.boxes, QStringList{text});
    QCOMPARE(bench.nodeNames(), QString("Main .Below"));
    QVERIFY(!project().isChanged() && bench.log(0).isEmpty());

    bench.question(key) = false;
    QVERIFY(bench.trigger(TMainAction(action)));
    QCOMPARE(bench.boxes.size(), 1);
    QVERIFY(bench.waitIdle());
    QCOMPARE(bench.difference(), QString());
}

/// Copied within a project, commands keep what they refer to.
void TestOperations::pasteElsewhereLosesReferences()
{
    for (const bool wholeCfg : {false, true}) {
        for (const bool elsewhere : {false, true}) {
            WindowBench bench;
            bench.writeProject("refs.prj", "R: jamp to_cmd=2, execute cfg=0, auto_detect route=EF4017=0");
            bench.addNode("Refs", "refs.prj");
            bench.openSamples("Refs");
            bench.clickRow(0);
            QVERIFY(bench.trigger(wholeCfg ? maCfgCopy : maCmdCopySelected));
            QCOMPARE(bench.status(), wholeCfg ? langText(121).arg("R") : langText(129));
            if (elsewhere)
                bench.clickNode("Sub");
            bench.clickRow(0);
            const int place = wholeCfg ? project().cmdCount() : 1;
            const QString all = bench.after(wholeCfg ? maCfgPaste : maCmdPaste, {"New"});
            QVERIFY2(all.contains("jamp execute auto_detect") && all.contains("New") == wholeCfg,
                     qPrintable(all));
            const auto value = [&](int i, const QString& key) {
                return project().cmdAt(place + i)->param(key);
            };
            QCOMPARE(value(0, key::to_cmd).toInt(), elsewhere ? -1 : 2);
            QCOMPARE(value(1, key::cfg).toInt(), elsewhere ? -1 : 0);
            QCOMPARE(value(2, key::route).toString(), QString(elsewhere ? "" : "EF4017=0"));
        }
    }
}

void TestOperations::configurations()
{
    WindowBench bench;
    bench.openWith("A: stop; B: pause");
    QCOMPARE(bench.after(maCfgNew, {"New"}), QString("A: stop; New: ; B: pause"));
    QCOMPARE(bench.prj().currentIndex(), 1);
    QCOMPARE(bench.status(), langText(118).arg("New"));
    QCOMPARE(bench.after(maCmdNewSetProg), QString("A: stop; New: set_prog; B: pause"));
    QCOMPARE(bench.after(maCfgEdit, {"R&D"}), QString("A: stop; R&D: set_prog; B: pause"));
    QVERIFY(bench.trigger(maCfgCopy));
    QCOMPARE(bench.after(maCfgPaste, {"P"}), QString("A: stop; R&D: set_prog; P: set_prog; B: pause"));
    QCOMPARE(bench.after(maCfgDelete), QString("A: stop; R&D: set_prog; B: pause"));
    QCOMPARE(bench.status(), langText(125).arg("P"));
    // A cancelled dialog changes nothing.
    QCOMPARE(bench.after(maCfgNew), QString("A: stop; R&D: set_prog; B: pause"));
    QVERIFY(bench.trigger(maPrjSave));
    QCOMPARE(bench.fileDifference(), QString());
}

void TestOperations::deletedJampTargetTurnsRed()
{
    WindowBench bench;
    bench.openWith("A: jamp to_cmd=1, stop; B: jamp to_cmd=1");
    bench.clickRow(1);
    QVERIFY(bench.trigger(maCmdDeleteCur));
    for (int tab : {0, 1})
        QCOMPARE(bench.table(tab)->item(0, 1)->foreground().color(), QColor(Qt::red));
}

void TestOperations::newAndAddedProjects()
{
    WindowBench bench;
    bench.openSamples("One");
    QCOMPARE(bench.after(maPrjNew, {"Fresh", "fresh"}), QString("Config: "));
    QCOMPARE(bench.nodeNames(), QString("One Fresh Two .Sub Group"));
    QVERIFY(project().file().endsWith("fresh.prj"));
    bench.clickNode("Two");
    QCOMPARE(bench.after(maPrjAddSub, {"Child", "sub.prj"}), QString("D: stop"));
    // An existing file is taken as it is.
    QCOMPARE(bench.after(maPrjNewSub, {"Again", "sub.prj"}), QString("D: stop"));
    QVERIFY(bench.trigger(maPrjAdd));
    bench.after(maPrjNew, {"No", "missing/folder/x.prj"});
    QVERIFY2(bench.status().contains("x.prj"), qPrintable(bench.status()));
    QCOMPARE(bench.nodeNames(), QString("One Fresh Two .Sub .Child ..Again Group"));
    QCOMPARE(bench.listDifference(), QString());
}

void TestOperations::copiedAndEditedProjects()
{
    WindowBench bench;
    bench.openSamples("One");
    QVERIFY(bench.trigger(maPrjCopy));
    QCOMPARE(bench.window().action(maPrjPasteNew)->text(), QString("Paste project [One]"));
    // Pasting never writes over a file.
    const QByteArray two = bench.dir().read("projects/two.prj");
    bench.after(maPrjPasteNew, {"Bad", "two.prj"});
    QVERIFY(bench.status().contains("two.prj"));
    QCOMPARE(bench.dir().read("projects/two.prj"), two);
    bench.after(maPrjPasteNewSub, {"Copy", "copy"});
    QCOMPARE(bench.nodeNames(), QString("One .Copy Two .Sub Group"));
    QCOMPARE(bench.dir().read("projects/copy.prj"), bench.dir().read("projects/one.prj"));
    QCOMPARE(bench.status(), langText(111).arg("One"));

    QCOMPARE(bench.after(maPrjEdit, {"Renamed", "copy.prj"}).left(2), QString("A:"));
    QCOMPARE(project().name(), QString("Renamed"));
    QCOMPARE(bench.after(maPrjEdit, {"Renamed", "sub.prj"}), QString("D: stop"));
    QCOMPARE(bench.nodeNames(), QString("One .Renamed Two .Sub Group"));
    QCOMPARE(bench.listDifference(), QString());
}

void TestOperations::deletedProjects()
{
    WindowBench bench;
    bench.openSamples("Two");
    QVERIFY(bench.after(maPrjDeleteSubAll).startsWith("C:"));
    QCOMPARE(bench.nodeNames(), QString("One Two Group"));
    QVERIFY(bench.trigger(maPrjDelete));
    QCOMPARE(bench.nodeNames(), QString("One Group"));
    QCOMPARE(bench.status(), langText(114).arg("Two"));
    // The project that is shown is that of the node that is current now.
    QCOMPARE(project().isOpen(), !bench.window().prjList()->nodePath().isEmpty());
    QVERIFY(QFile::exists(bench.dir().file("projects/two.prj")));
    bench.clickNode("One");
    QVERIFY(bench.trigger(maPrjDelete) && bench.trigger(maPrjDelete) && !bench.trigger(maPrjDelete));
    QVERIFY(bench.nodeNames().isEmpty() && !project().isOpen());
    QCOMPARE(bench.listDifference(), QString());
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
    // What was moved is in the file when another list takes its place.
    TTreeWidget* tree = bench.window().prjList()->tree();
    tree->addTopLevelItem(tree->takeTopLevelItem(0));
    QVERIFY(withFile(maPrjListNew, "fresh"));
    QVERIFY(bench.window().prjList()->listFile().endsWith("fresh.lst"));
    QVERIFY(bench.nodeNames().isEmpty() && !project().isOpen());
    // Copies: a new one, and none over a file that is there.
    QVERIFY(withFile(maPrjListSaveAs, "copy.lst"));
    QVERIFY(QFile::exists(bench.dir().file("projects/copy.lst")));
    bench.boxes.clear();
    const QByteArray left = bench.listBytes();
    QVERIFY(withFile(maPrjListSaveAs, "test.lst"));
    QCOMPARE(bench.listBytes(), left);
    QCOMPARE(bench.boxes.size(), 1);
    bench.dir().write("projects/bad.lst", "{ no list");
    QVERIFY(withFile(maPrjListLoad, "bad.lst"));
    QVERIFY(bench.boxes.last().contains("bad.lst"));
    QVERIFY(!bench.isEnabled(maPrjNew) && !bench.isEnabled(maPrjListReload));
    QVERIFY(withFile(maPrjListLoad, "test.lst"));
    QCOMPARE(bench.nodeNames(), QString("Two .Sub Group One"));
    bench.dir().write("projects/test.lst", QByteArray(left).replace("One", "Uno"));
    QVERIFY(bench.trigger(maPrjListReload));
    QCOMPARE(bench.nodeNames(), QString("Two .Sub Group Uno"));
    // From the list of lists: first there is none.
    QVERIFY(bench.trigger(maPrjListSelect));
    QVERIFY2(bench.boxes.last().contains("vm.lpl"), qPrintable(bench.boxes.last()));
    const QString copy = bench.dir().file("projects/copy.lst");
    bench.dir().write("vm.lpl", "{\"list\": [{\"name\": \"Copy\", \"file\": \"" + copy.toUtf8() + "\"}]}");
    bench.inDialog = [](QDialog& dialog) { dialog.findChild<QTableWidget*>()->selectRow(0); };
    QVERIFY(bench.trigger(maPrjListSelect));
    QCOMPARE(bench.window().prjList()->listFile(), copy);
    QCOMPARE(appData().PrjListName + " " + appData().PrjListFile, "Copy " + copy);
}

QTEST_MAIN(TestOperations)
#include "test_operations.moc"
