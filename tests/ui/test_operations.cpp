#include "core/TAppData.h"
#include "core/TCmdCode.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "ui/TTreeWidget.h"
#include "ui/TWgtCmdList.h"
#include "ui/TWgtPrj.h"
#include "ui/WindowBench.h"

#include <QAction>
#include <QFile>
#include <QTableWidget>
#include <QtTest>

namespace {

const QString flash = QStringLiteral("set_device device=W25Q64 file=spi-flash/W25Q64FV.dev clk=4000000");
const QString prog = QStringLiteral("set_prog prog=Simulator alt_enabled=false");

QString joined(const QStringList& words)
{
    return words.join(QLatin1Char(' '));
}

} // namespace

/// What the actions do to the model, the panels and the files.
class TestOperations : public QObject
{
    Q_OBJECT

private slots:
    void commands_data();
    void commands();
    void questions_data();
    void questions();
    void pasteIntoAnotherProjectLosesReferences_data();
    void pasteIntoAnotherProjectLosesReferences();
    void deleteErrorsAndDeviceCommands();
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

void TestOperations::commands_data()
{
    QTest::addColumn<int>("copied"); // row to copy before; -1 for none
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("action");
    QTest::addColumn<QString>("words");
    QTest::addColumn<int>("current");
    QTest::addColumn<QString>("report");
    QTest::newRow("delete first") << -1 << 0 << int(maCmdDeleteCur) << "!pause stop" << 0
                                  << "Command \"Delay\" deleted";
    QTest::newRow("delete last") << -1 << 2 << int(maCmdDeleteCur) << "delay !pause" << 1
                                 << "Command \"Stop\" deleted";
    QTest::newRow("delete checked") << -1 << 1 << int(maCmdDeleteSelected) << "!pause" << 0
                                    << "Checked commands deleted";
    QTest::newRow("delete all") << -1 << 1 << int(maCmdDeleteAll) << "" << -1
                                << "All commands of the configuration \"A\" deleted";
    QTest::newRow("up from first") << -1 << 0 << int(maCmdMoveUp) << "delay !pause stop" << 0 << "";
    QTest::newRow("down from first") << -1 << 0 << int(maCmdMoveDown) << "!pause delay stop" << 1 << "";
    QTest::newRow("up from last") << -1 << 2 << int(maCmdMoveUp) << "delay stop !pause" << 1 << "";
    QTest::newRow("down from last") << -1 << 2 << int(maCmdMoveDown) << "delay !pause stop" << 2 << "";
    QTest::newRow("paste behind first")
        << 2 << 0 << int(maCmdPaste) << "delay stop !pause stop" << 1 << "Command \"Stop\" pasted";
    QTest::newRow("paste behind last")
        << 0 << 2 << int(maCmdPaste) << "delay !pause stop delay" << 3 << "Command \"Delay\" pasted";
    QTest::newRow("paste with none current")
        << 2 << -1 << int(maCmdPaste) << "stop delay !pause stop" << 0 << "Command \"Stop\" pasted";
    QTest::newRow("new behind first")
        << -1 << 0 << int(maCmdNewSetProg) << "delay set_prog !pause stop" << 1 << "";
    QTest::newRow("new behind last, two")
        << -1 << 2 << int(maCmdNewSetProgDevice) << "delay !pause stop set_prog set_device" << 4 << "";
    QTest::newRow("new with none current")
        << -1 << -1 << int(maCmdNewSetDevice) << "delay !pause stop set_device" << 3 << "";
    QTest::newRow("nothing is current") << -1 << -1 << int(maCmdDeleteCur) << "delay !pause stop" << -1 << "";
}

void TestOperations::commands()
{
    QFETCH(int, copied);
    QFETCH(int, row);
    QFETCH(int, action);
    QFETCH(QString, words);
    QFETCH(int, current);
    QFETCH(QString, report);
    WindowBench bench;
    bench.openWith({QStringLiteral("A: delay value=0; !pause; stop"), QStringLiteral("B: stop")});
    if (copied >= 0) {
        bench.clickRow(copied);
        QVERIFY(bench.trigger(maCmdCopy));
    }
    if (row >= 0)
        bench.clickRow(row);
    else
        bench.prj().setCurrentRow(-1);
    bench.settle();
    bench.trigger(TMainAction(action));
    QCOMPARE(joined(bench.words(0)), words);
    QCOMPARE(bench.difference(), QString());
    QCOMPARE(bench.words(1), QStringList{QStringLiteral("stop")});
    QCOMPARE(bench.prj().currentRow(), current);
    if (!report.isEmpty())
        QCOMPARE(bench.status(), report);
    QVERIFY(bench.trigger(maPrjSave));
    QCOMPARE(bench.fileDifference(QStringLiteral("main.prj")), QString());
}

void TestOperations::questions_data()
{
    QTest::addColumn<int>("action");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("question");
    const QString set1 = QStringLiteral("Set Prog");
    const auto add = [&](const char* name, TMainAction action, int key, const QString& question) {
        QTest::newRow(name) << int(action) << key << question;
    };
    add("save", maPrjSave, 0, QStringLiteral("Save the project \"Main\"?"));
    add("delete project", maPrjDelete, 1,
        QStringLiteral(
            "Remove the project \"Main\" and everything below it from the list?\nThe files stay on "
            "the disk."));
    add("delete sub-projects", maPrjDeleteSubAll, 2,
        QStringLiteral("Remove all sub-projects of \"Main\" from the list?\nThe files stay on the disk."));
    add("delete configuration", maCfgDelete, 3,
        QStringLiteral("Delete the configuration \"A%5&\" with all its commands?"));
    add("insert prog", maCmdNewSetProg, 4, QStringLiteral("Insert the command \"%1\"?").arg(set1));
    add("insert device", maCmdNewSetDevice, 5, QStringLiteral("Insert the command \"Set Device\"?"));
    add("insert both", maCmdNewSetProgDevice, 6,
        QStringLiteral("Insert the commands \"%1\" and \"Set Device\"?").arg(set1));
    add("paste", maCmdPaste, 7, QStringLiteral("Paste the command \"Delay\"?"));
    add("delete command", maCmdDeleteCur, 8, QStringLiteral("Delete the command \"Delay\"?"));
    add("delete checked", maCmdDeleteSelected, 9, langText(137));
    add("delete invalid", maCmdDeleteError, 10,
        QStringLiteral("Delete all invalid commands of the configuration \"A%5&\"?"));
    add("delete all", maCmdDeleteAll, 11,
        QStringLiteral("Delete all commands of the configuration \"A%5&\"?"));
    add("reload", maPrjListReload, 12, langText(95));
    add("run", maExecCfg, 13, QStringLiteral("Execute the configuration \"A%5&\"?"));
}

/// Each question stands behind its own switch; No leaves everything as it was.
void TestOperations::questions()
{
    static constexpr bool TAppData::*keys[] = {
        &TAppData::ConfirmProjectSave,         &TAppData::ConfirmProjectDeleteCur,
        &TAppData::ConfirmProjectDeleteSubAll, &TAppData::ConfirmConfigDeleteCur,
        &TAppData::ConfirmCmdInsertProg,       &TAppData::ConfirmCmdInsertDevice,
        &TAppData::ConfirmCmdInsertProgDevice, &TAppData::ConfirmCmdPaste,
        &TAppData::ConfirmCmdDeleteCur,        &TAppData::ConfirmCmdDeleteSelected,
        &TAppData::ConfirmCmdDeleteError,      &TAppData::ConfirmCmdDeleteAll,
        &TAppData::ConfirmProjectsListReload,  &TAppData::ConfirmExecConfig};
    QFETCH(int, action);
    QFETCH(int, key);
    QFETCH(QString, question);
    WindowBench bench;
    bench.writeProject(QStringLiteral("main.prj"),
                       {QStringLiteral("A%5&: delay value=0; set_vcc vcc=3.3"), QStringLiteral("B: stop")});
    bench.addNode(QStringLiteral("Main"), QStringLiteral("main.prj"));
    bench.addNode(QStringLiteral("Below"), QStringLiteral("below.prj"), 1);
    bench.open();
    bench.clickNode(QStringLiteral("Main"));
    bench.clickRow(0);
    QVERIFY(bench.trigger(maCmdCopy));
    appData().*keys[key] = true;
    bench.yes = false;
    QVERIFY(bench.trigger(TMainAction(action)));
    QCOMPARE(bench.boxes, QStringList{question});
    QCOMPARE(joined(bench.words(0)), QStringLiteral("delay set_vcc"));
    QCOMPARE(bench.nodeNames().size(), 2);
    QCOMPARE(bench.difference(), QString());
    QCOMPARE(project().cfgStatus(project().cfgIdAt(0)), int(csIdle));
    QVERIFY(!project().isChanged());

    appData().*keys[key] = false;
    QVERIFY(bench.trigger(TMainAction(action)));
    QCOMPARE(bench.boxes.size(), 1);
    QVERIFY(bench.waitIdle());
    QCOMPARE(bench.difference(), QString());
}

void TestOperations::pasteIntoAnotherProjectLosesReferences_data()
{
    QTest::addColumn<bool>("sameProject");
    QTest::addColumn<bool>("wholeCfg");
    QTest::newRow("commands, same project") << true << false;
    QTest::newRow("commands, other project") << false << false;
    QTest::newRow("configuration, same project") << true << true;
    QTest::newRow("configuration, other project") << false << true;
}

void TestOperations::pasteIntoAnotherProjectLosesReferences()
{
    QFETCH(bool, sameProject);
    QFETCH(bool, wholeCfg);
    WindowBench bench;
    bench.writeProject(QStringLiteral("refs.prj"), {QStringLiteral("R: jamp to_cmd=2; execute cfg=0; stop")});
    bench.addSampleNodes();
    bench.addNode(QStringLiteral("Refs"), QStringLiteral("refs.prj"));
    bench.open();
    bench.clickNode(QStringLiteral("Refs"));
    bench.clickRow(0);
    QVERIFY(bench.trigger(wholeCfg ? maCfgCopy : maCmdCopySelected));
    QCOMPARE(bench.status(), wholeCfg ? langText(121).arg(QStringLiteral("R")) : langText(129));
    if (!sameProject) {
        bench.clickNode(QStringLiteral("Sub"));
        bench.clickRow(0);
    }
    bench.typed = QStringList{QStringLiteral("New")};
    const int before = project().cmdCount();
    QVERIFY(bench.trigger(wholeCfg ? maCfgPaste : maCmdPaste));
    QCOMPARE(project().cmdCount(), before + 3);
    QCOMPARE(bench.difference(), QString());
    const int place = wholeCfg ? before : 1;
    QCOMPARE(project().cmdAt(place)->param(key::to_cmd).toInt(), sameProject ? 2 : -1);
    QCOMPARE(project().cmdAt(place + 1)->param(key::cfg).toInt(), sameProject ? 0 : -1);
    if (wholeCfg)
        QCOMPARE(project().cfgNames().last(), QStringLiteral("New"));
}

void TestOperations::deleteErrorsAndDeviceCommands()
{
    WindowBench bench;
    bench.openWith(
        {QStringLiteral("A: %1; %2; ident; delay value=0; erase; set_vcc vcc=3.3; %2; ident; fuse_read")
             .arg(prog, flash)});
    QVERIFY(bench.trigger(maCmdDeleteError));
    QCOMPARE(bench.status(), langText(143));
    QCOMPARE(joined(bench.words(0)),
             QStringLiteral("set_prog set_device ident delay erase set_vcc set_device ident"));
    QVERIFY(bench.trigger(maCmdDeleteError));
    QCOMPARE(bench.boxes, QStringList{langText(139)});
    // From a command in the middle, back to its chip and on to the next one.
    bench.clickRow(3);
    QVERIFY(bench.trigger(maCmdDeleteDev));
    QCOMPARE(joined(bench.words(0)), QStringLiteral("set_prog set_device delay set_vcc set_device ident"));
    QCOMPARE(bench.prj().currentRow(), 1);
    QCOMPARE(bench.status(), langText(148).arg(QStringLiteral("W25Q64")));
    QVERIFY(bench.trigger(maCmdDeleteDev));
    QCOMPARE(bench.boxes.last(), langText(146).arg(QStringLiteral("W25Q64")));
    bench.clickRow(0);
    QVERIFY(bench.trigger(maCmdDeleteDev));
    QCOMPARE(bench.boxes.last(), langText(145).arg(QStringLiteral("Set Device")));
    QCOMPARE(bench.difference(), QString());
}

void TestOperations::checkAllAndHide()
{
    WindowBench bench;
    bench.openWith({QStringLiteral("A: delay value=0; !pause; stop"), QStringLiteral("B: !stop")});
    const auto hidden = [&](int row) { return bench.prj().tabAt(0)->cmdList()->table()->isRowHidden(row); };
    QVERIFY(bench.trigger(maCmdUncheckHide));
    QVERIFY(hidden(1) && !hidden(0));
    QVERIFY(appData().HideUncheckCmd);
    QVERIFY(bench.trigger(maCmdCheckAll));
    QVERIFY(!hidden(1));
    QCOMPARE(joined(bench.words(0)), QStringLiteral("delay pause stop"));
    QCOMPARE(joined(bench.words(1)), QStringLiteral("!stop"));
    QVERIFY(bench.trigger(maCmdUncheckAll));
    QVERIFY(hidden(0) && hidden(1) && hidden(2));
    QVERIFY(bench.trigger(maCmdUncheckHide));
    QVERIFY(!hidden(0));
    bench.clickCheck(2);
    QCOMPARE(joined(bench.words(0)), QStringLiteral("!delay !pause stop"));
    QCOMPARE(bench.difference(), QString());
}

void TestOperations::configurations()
{
    WindowBench bench;
    bench.openWith({QStringLiteral("A: stop"), QStringLiteral("B: pause")});
    bench.typed = QStringList{QStringLiteral("New")};
    QVERIFY(bench.trigger(maCfgNew));
    QCOMPARE(joined(project().cfgNames()), QStringLiteral("A New B"));
    QCOMPARE(bench.prj().currentIndex(), 1);
    QCOMPARE(bench.status(), langText(118).arg(QStringLiteral("New")));
    QVERIFY(bench.trigger(maCmdNewSetProg));
    QCOMPARE(joined(bench.words(1)), QStringLiteral("set_prog"));
    bench.typed = QStringList{QStringLiteral("Renamed")};
    QVERIFY(bench.trigger(maCfgEdit));
    QCOMPARE(joined(project().cfgNames()), QStringLiteral("A Renamed B"));
    QVERIFY(bench.trigger(maCfgCopy));
    bench.typed = QStringList{QStringLiteral("Pasted")};
    QVERIFY(bench.trigger(maCfgPaste));
    QCOMPARE(joined(project().cfgNames()), QStringLiteral("A Renamed Pasted B"));
    QCOMPARE(joined(bench.words(2)), QStringLiteral("set_prog"));
    QCOMPARE(bench.difference(), QString());
    QVERIFY(bench.trigger(maCfgDelete));
    QVERIFY(bench.trigger(maCfgDelete));
    QCOMPARE(project().cfgNames().size(), 2);
    // Cancelled dialogs change nothing.
    QVERIFY(bench.trigger(maCfgNew));
    QCOMPARE(project().cfgNames().size(), 2);
    QVERIFY(bench.trigger(maPrjSave));
    QCOMPARE(bench.difference() + bench.fileDifference(QStringLiteral("main.prj")), QString());
}

void TestOperations::deletedJampTargetTurnsRed()
{
    WindowBench bench;
    bench.openWith({QStringLiteral("A: jamp to_cmd=1; stop"), QStringLiteral("B: jamp to_cmd=1")});
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
    bench.addSampleNodes();
    bench.open();
    bench.clickNode(QStringLiteral("One"));
    bench.typed = QStringList{QStringLiteral("Fresh"), QStringLiteral("fresh")};
    QVERIFY(bench.trigger(maPrjNew));
    QCOMPARE(joined(bench.nodeNames()), QStringLiteral("One Fresh Two .Sub Group"));
    QVERIFY(project().file().endsWith(QStringLiteral("fresh.prj")));
    QCOMPARE(project().cfgNames(), QStringList{QStringLiteral("Config")});
    bench.clickNode(QStringLiteral("Two"));
    bench.typed = QStringList{QStringLiteral("Child"), QStringLiteral("one.prj")};
    QVERIFY(bench.trigger(maPrjAddSub));
    QCOMPARE(joined(bench.nodeNames()), QStringLiteral("One Fresh Two .Sub .Child Group"));
    QCOMPARE(joined(bench.words(0)), QStringLiteral("delay pause stop"));
    // An existing file is taken as it is.
    bench.typed = QStringList{QStringLiteral("Again"), QStringLiteral("one.prj")};
    QVERIFY(bench.trigger(maPrjNewSub));
    QCOMPARE(joined(bench.words(0)), QStringLiteral("delay pause stop"));
    bench.typed = QStringList{QStringLiteral("No"), QStringLiteral("missing/folder/x.prj")};
    QVERIFY(bench.trigger(maPrjNew));
    QVERIFY(!bench.node(QStringLiteral("No")));
    QVERIFY(bench.listBytes().contains("\"name\": \"Again\""));
}

void TestOperations::pasteProjectNeverOverwrites()
{
    WindowBench bench;
    bench.addSampleNodes();
    bench.open();
    bench.clickNode(QStringLiteral("One"));
    QVERIFY(bench.trigger(maPrjCopy));
    QCOMPARE(bench.window().action(maPrjPasteNew)->text(), QStringLiteral("Paste project [One]"));
    const QByteArray two = bench.dir().read(QStringLiteral("projects/two.prj"));
    bench.typed = QStringList{QStringLiteral("Bad"), QStringLiteral("two")};
    QVERIFY(bench.trigger(maPrjPasteNew));
    QVERIFY(!bench.node(QStringLiteral("Bad")));
    QCOMPARE(bench.dir().read(QStringLiteral("projects/two.prj")), two);
    bench.typed = QStringList{QStringLiteral("Copy"), QStringLiteral("copy")};
    QVERIFY(bench.trigger(maPrjPasteNewSub));
    QCOMPARE(joined(bench.nodeNames()), QStringLiteral("One .Copy Two .Sub Group"));
    QCOMPARE(bench.dir().read(QStringLiteral("projects/copy.prj")),
             bench.dir().read(QStringLiteral("projects/one.prj")));
    QCOMPARE(bench.status(), langText(111).arg(QStringLiteral("One")));
}

void TestOperations::editProject()
{
    WindowBench bench;
    bench.addSampleNodes();
    bench.open();
    bench.clickNode(QStringLiteral("One"));
    bench.typed = QStringList{QStringLiteral("Renamed"), QStringLiteral("one.prj")};
    QVERIFY(bench.trigger(maPrjEdit));
    QCOMPARE(project().name(), QStringLiteral("Renamed"));
    QVERIFY(bench.listBytes().contains("Renamed"));
    bench.typed = QStringList{QStringLiteral("Renamed"), QStringLiteral("sub.prj")};
    QVERIFY(bench.trigger(maPrjEdit));
    QVERIFY(project().file().endsWith(QStringLiteral("sub.prj")));
    QCOMPARE(joined(bench.words(0)), QStringLiteral("stop"));
    QCOMPARE(bench.difference(), QString());
}

void TestOperations::deleteProjects()
{
    WindowBench bench;
    bench.addSampleNodes();
    bench.open();
    bench.clickNode(QStringLiteral("Two"));
    QVERIFY(bench.trigger(maPrjDeleteSubAll));
    QCOMPARE(joined(bench.nodeNames()), QStringLiteral("One Two Group"));
    QVERIFY(project().file().endsWith(QStringLiteral("two.prj")));
    QVERIFY(bench.trigger(maPrjDelete));
    QCOMPARE(joined(bench.nodeNames()), QStringLiteral("One Group"));
    QCOMPARE(bench.status(), langText(114).arg(QStringLiteral("Two")));
    // The project that is shown is that of the node that is current now.
    QCOMPARE(project().isOpen(), !bench.window().prjList()->nodePath().isEmpty());
    QVERIFY(QFile::exists(bench.dir().file(QStringLiteral("projects/two.prj"))));
    bench.clickNode(QStringLiteral("One"));
    QVERIFY(bench.trigger(maPrjDelete));
    QVERIFY(bench.trigger(maPrjDelete));
    QVERIFY(bench.nodeNames().isEmpty());
    QVERIFY(!project().isOpen());
    QVERIFY(!bench.isEnabled(maPrjDelete));
    QVERIFY(!bench.listBytes().contains("name\":"));
}

void TestOperations::dragIsKeptAtTheNextSave()
{
    WindowBench bench;
    bench.addSampleNodes();
    bench.open();
    TTreeWidget* tree = bench.window().prjList()->tree();
    tree->addTopLevelItem(tree->takeTopLevelItem(0));
    bench.settle();
    QVERIFY(bench.listBytes().indexOf("One") < bench.listBytes().indexOf("Two"));
    const QString other =
        bench.dir().write(QStringLiteral("projects/other.lst"), "{\"version\": 1, \"list\": []}");
    bench.typedFile = other;
    QVERIFY(bench.trigger(maPrjListLoad));
    QCOMPARE(bench.window().prjList()->listFile(), other);
    QVERIFY(bench.listBytes().indexOf("One") > bench.listBytes().indexOf("Two"));
}

void TestOperations::lists()
{
    WindowBench bench;
    bench.addSampleNodes();
    bench.open();
    bench.clickNode(QStringLiteral("One"));
    const QByteArray old = bench.listBytes();
    // The list that is open is not emptied under its own nodes.
    bench.typedFile = bench.dir().file(QStringLiteral("projects/test.lst"));
    QVERIFY(bench.trigger(maPrjListNew));
    QCOMPARE(bench.listBytes(), old);
    QVERIFY(project().isOpen());
    bench.typedFile = bench.dir().file(QStringLiteral("projects/fresh"));
    QVERIFY(bench.trigger(maPrjListNew));
    QVERIFY(bench.window().prjList()->listFile().endsWith(QStringLiteral("fresh.lst")));
    QVERIFY(bench.nodeNames().isEmpty());
    QVERIFY(!project().isOpen());
    const QByteArray left = bench.listBytes();
    // Copies: a new one, and none over a file that is there.
    bench.typedFile = bench.dir().file(QStringLiteral("projects/copy.lst"));
    QVERIFY(bench.trigger(maPrjListSaveAs));
    QVERIFY(QFile::exists(bench.dir().file(QStringLiteral("projects/copy.lst"))));
    bench.boxes.clear();
    bench.typedFile = bench.dir().file(QStringLiteral("projects/test.lst"));
    QVERIFY(bench.trigger(maPrjListSaveAs));
    QCOMPARE(bench.listBytes(), left);
    QCOMPARE(bench.boxes.size(), 1);
    bench.dir().write(QStringLiteral("projects/bad.lst"), "{ no list");
    bench.typedFile = bench.dir().file(QStringLiteral("projects/bad.lst"));
    QVERIFY(bench.trigger(maPrjListLoad));
    QVERIFY(bench.boxes.last().contains(QStringLiteral("bad.lst")));
    QVERIFY(!bench.isEnabled(maPrjNew) && !bench.isEnabled(maPrjListReload));
    bench.typedFile = bench.dir().file(QStringLiteral("projects/test.lst"));
    QVERIFY(bench.trigger(maPrjListLoad));
    QCOMPARE(joined(bench.nodeNames()), QStringLiteral("One Two .Sub Group"));
    bench.dir().write(QStringLiteral("projects/test.lst"), QByteArray(left).replace("One", "Uno"));
    QVERIFY(bench.trigger(maPrjListReload));
    QCOMPARE(joined(bench.nodeNames()), QStringLiteral("Uno Two .Sub Group"));
}

QTEST_MAIN(TestOperations)
#include "test_operations.moc"
