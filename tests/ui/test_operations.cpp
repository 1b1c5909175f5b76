#include "base/TSettings.h"
#include "base/helpers.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "support/namedTexts.h"
#include "ui/WindowBench.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>

namespace {

/// A text of the window by its name, and what is filled in: "CmdDeleted:Delay"; or the text's beginning.
void compareTold(const WindowBench& bench, const QString& told)
{
    const QString said = bench.boxes.isEmpty() ? bench.status() : bench.boxes.last();
    QStringList parts = told.split(':');
    const Text named = textNamed(parts.takeFirst());
    QString text = langText(named);
    for (const QString& part : parts)
        text = text.arg(part);
    QVERIFY2(named != Text::None ? said == text : said.startsWith(told), qPrintable(said));
}

constexpr char commandRows[] = R"(
#0, CmdDeleteCur | A: !pause stop; B: stop | 0 | CmdDeleted:Delay
#2, CmdDeleteCur | A: delay !pause; B: stop | 1 | CmdDeleted:Stop
#-, -CmdDeleteCur CmdCopyOne | A: delay !pause stop; B: stop | -1
#1, CmdDeleteSelected | A: !pause; B: stop | 0 | CheckedCmdsDeleted
#1, CmdDeleteSelected | A: !pause !stop | 1 | CheckedCmdsDeleted | A: !pause, delay value=0, !stop
#0, CmdUncheckAll, CmdDeleteSelected | A: !delay !pause !stop; B: stop | 0 | NoCheckedCmds
#1, CmdDeleteAll | A: ; B: stop | -1 | AllCmdsOfCfgDeleted:A
#1, CmdDeleteAll | A: | -1 | AllCmdsDeleted | A: delay value=0, stop
#0, CmdCheckAll | A: delay pause stop; B: stop | 0
#0, CmdMoveDown | A: !pause delay stop; B: stop | 1
#2, CmdMoveUp | A: delay stop !pause; B: stop | 1
#-, -CmdMoveUp CmdMoveDown | A: delay !pause stop; B: stop | -1
#2, CmdCopyOne, #0, CmdPaste | A: delay stop !pause stop; B: stop | 1 | CmdPasted:Stop
#0, CmdCopyOne, #2, CmdPaste | A: delay !pause stop delay; B: stop | 3 | CmdPasted:Delay
#2, CmdCopyOne, #-, CmdPaste | A: stop delay !pause stop; B: stop | 0
#0, CmdCopySelected | A: delay !pause stop; B: stop | 0 | CheckedCmdsCopied
#0, CmdUncheckAll, CmdCopySelected, -CmdPaste | A: !delay !pause !stop; B: stop | 0 | NoCheckedCmds
#0, CmdCopySelected, #1, CmdPaste | A: delay !pause delay stop stop; B: stop | 2 | CmdsPasted
#0, CmdNewSetProg | A: delay set_prog !pause stop; B: stop | 1
#2, CmdNewSetProgDevice | A: delay !pause stop set_prog set_device; B: stop | 4
#-, CmdNewSetDevice | A: delay !pause stop set_device; B: stop | 3
#0, CmdDeleteError | A: set_prog set_device stop set_vcc; B: erase | 0 | InvalidCmdsOfCfgDeleted:A
 | A: PROG, FLASH, fuse_nothing, stop, fuse_nothing, set_vcc vcc=3.3; B: erase
#0, CmdDeleteError | A: stop | 0 | InvalidCmdsDeleted | A: stop, set_vcc vcc=3.3
#0, CmdDeleteError | A: stop; B: erase | 0 | NoInvalidCmdsOfCfg:A | A: stop; B: erase
#3, CmdDeleteDev | A: set_prog set_device delay set_vcc set_device ident | 1 | CmdsOfDeviceDeleted:W25Q64
 | A: PROG, FLASH, ident, delay value=0, erase, set_vcc vcc=3.3, FLASH, ident
#2, CmdDeleteDev | A: set_prog set_device stop | 2 | NoCmdsOfDevice:W25Q64 | A: PROG, FLASH, stop
#0, CmdDeleteDev | A: set_prog set_device ident | 0 | NoCmdAbove:Set Device | A: PROG, FLASH, ident
CfgNew New | A: delay !pause stop; New: ; B: stop | -1 | CfgCreated:New
CfgNew New, CmdNewSetProg | A: delay !pause stop; New: set_prog; B: stop | 0
CfgNew | A: delay !pause stop; B: stop | 0
CfgEdit R&D | R&D: delay !pause stop; B: stop | 0
CfgCopy, CfgPasteNew New | A: delay !pause stop; New: delay !pause stop; B: stop | 0 | CfgPasted
CfgNew New, CfgDelete | A: delay !pause stop; B: stop | 0 | CfgDeleted:New
)";

constexpr char questionRows[] = R"(
ProjectSave | PrjSave | AskSavePrj:Main
ProjectDeleteCur | PrjDeleteCur | AskDeletePrj:Main
ProjectDeleteSubAll | PrjDeleteSubAll | AskDeleteSubPrjs:Main
ConfigDeleteCur | CfgDelete | AskDeleteCfg:A%5&
CmdInsertProg | CmdNewSetProg | AskInsertCmd:Set Prog
CmdInsertDevice | CmdNewSetDevice | AskInsertCmd:Set Device
CmdInsertProgDevice | CmdNewSetProgDevice | AskInsertTwoCmds:Set Prog:Set Device
CmdPaste | CmdPaste | AskPasteCmds
CmdDeleteCur | CmdDeleteCur | AskDeleteCmd:Identification
CmdDeleteSelected | CmdDeleteSelected | AskDeleteCheckedCmds
CmdDeleteError | CmdDeleteError | AskDeleteInvalidCmdsOfCfg:A%5&
CmdDeleteDev | CmdDeleteDev | AskDeleteCmdsOfDevice:W25Q64
CmdDeleteAll | CmdDeleteAll | AskDeleteAllCmdsOfCfg:A%5&
ProjectsListReload | PrjListReload | AskReloadPrjList
ExecConfig | ExecCfg1 | AskExecuteCfg:A%5&
ExecReset | ExecReset | AskReset
Quit | Quit | AskQuit
)";

constexpr char referenceRows[] = R"(
CmdCopySelected, #2, CmdPaste | 2 0 EF4017=0 2 0 EF4017=0
CmdCopySelected, @Sub, @Refs, #2, CmdPaste | 2 0 EF4017=0 -1 -1
)";

constexpr char projectRows[] = R"(
PrjNew Fresh fresh | One Fresh Two .Sub Group | Config:
PrjAdd | One Two .Sub Group | A: delay pause stop; B: delay delay
CmdMoveDown, PrjAdd Gone gone.prj, -CfgNew | One Gone Two .Sub Group | | Cannot open the project file
CmdMoveDown, PrjAdd Bad bad.prj, -CfgNew | One Bad Two .Sub Group | | Wrong format of the project file
@Two, PrjAddSub Child sub.prj | One Two .Sub .Child Group | D: stop
@Two, PrjNewSub Child sub.prj | One Two .Sub .Child Group | D: stop
PrjNew No missing/x.prj | One Two .Sub Group | A: delay pause stop; B: delay delay | missing/x.prj
PrjCopy, PrjPasteNew Bad two.prj | One Two .Sub Group | A: delay pause stop; B: delay delay | two.prj
PrjCopy, PrjPasteNew Bad two.prj, @Two | One Two .Sub Group | C: jamp stop !pause
PrjCopy, PrjPasteNewSub Copy copy | One .Copy Two .Sub Group | A: delay pause stop; B: delay delay | PrjPasted:One
PrjEdit Uno one.prj, PrjSave | Uno Two .Sub Group | A: delay pause stop; B: delay delay | PrjSaved:Uno
PrjEdit One sub.prj | One Two .Sub Group | D: stop
@Two, PrjDeleteSubAll | One Two Group | C: jamp stop !pause | SubPrjsDeleted:Two
@Group, PrjDeleteCur | One Two .Sub | C: jamp stop !pause | PrjDeleted:Group
@Two, PrjDeleteSubAll, PrjDeleteCur, PrjAdd Two two.prj | One Group Two | C: jamp stop !pause
@Sub, PrjDeleteCur, PrjDeleteCur, PrjDeleteCur, PrjDeleteCur, -PrjDeleteCur CfgNew | |
)";

constexpr char listRows[] = R"(
PrjListNew test.lst | test.lst | Two .Sub Group One
PrjListNew fresh | fresh.lst |
PrjListNew fresh, -PrjEdit CfgNew, PrjListLoad test.lst | test.lst | Two .Sub Group One
PrjListSaveAs copy.lst, PrjListLoad copy.lst | copy.lst | Two .Sub Group One
PrjListSaveAs far/copy.lst, PrjListLoad far/copy.lst, @Two, +CfgNew | far/copy.lst | Two .Sub Group One
PrjListSaveAs other.lst, PrjListLoad other.lst | other.lst | Other | other.lst
PrjListLoad far/bad.lst, -PrjNew PrjListReload | far/bad.lst | | bad.lst
PrjListLoad one.prj, -PrjNew PrjListReload | one.prj | | one.prj
PrjListReload | test.lst | Two .Sub Group One
PrjListSelect | other.lst | Other
)";

} // namespace

/// What the actions do to the model, the panels and the files.
class TestOperations : public QObject
{
    Q_OBJECT

private slots:
    /// The texts are there before they are asked for.
    void initTestCase() { const WindowBench bench; }

    void commands_data() { textRows(commandRows, {"steps", "after", "current", "told", "configs"}); }
    void commands()
    {
        QFETCH(QString, configs);
        QFETCH(QString, steps);
        QFETCH(QString, told);
        WindowBench bench;
        bench.openWith(configs.isEmpty() ? "A: delay value=0, !pause, stop; B: stop" : configs);
        QTEST(bench.after(steps).trimmed(), "after");
        QTEST(QString::number(bench.prj().currentRow()), "current");
        compareTold(bench, told);
        QVERIFY(bench.play("PrjSave"));
        QCOMPARE(bench.fileDifference(), QString());
    }

    void questions_data() { textRows(questionRows, {"key", "action", "question"}); }
    // Each question stands behind its own switch; No leaves everything as it was.
    void questions()
    {
        QFETCH(QString, key);
        QFETCH(QString, action);
        QFETCH(QString, question);
        WindowBench bench;
        const QString chip = action == "ExecReset" ? "AVR" : "FLASH";
        bench.addNode("Main", "A%5&: PROG, " + chip + ", ident, fuse_nothing; B: stop");
        bench.addNode("Below", "C: stop", 1);
        bench.open();
        QVERIFY(bench.play("@Main, #2, CmdCopySelected"));
        const QString before = bench.configs();
        bool& isAsked = bench.question("Confirmation/" + key);
        isAsked = true;
        bench.yes = false;
        QCOMPARE(bench.after(action), before);
        compareTold(bench, question);
        QCOMPARE(bench.nodeNames(), QString("Main .Below"));
        QVERIFY(!project().isChanged() && bench.log(0).isEmpty());

        isAsked = false;
        QVERIFY(bench.play(action) && bench.waitIdle());
        QCOMPARE(bench.boxes.size(), 1);
        QCOMPARE(bench.difference(), QString());
    }

    // What commands refer to: it is kept by copies in a project that stays open.
    void references_data() { textRows(referenceRows, {"steps", "after"}); }
    void references()
    {
        QFETCH(QString, steps);
        WindowBench bench;
        bench.addNode("Refs", "R: jamp to_cmd=2, execute cfg=0, auto_detect route=EF4017=0");
        bench.openSamples("Refs");
        QVERIFY(bench.play(steps));
        QStringList values;
        for (const TDataCmd* command : project().cmdList()) {
            for (const QString& reference : {QString(key::to_cmd), QString(key::cfg), QString(key::route)})
                values.append(command->param(reference).toString());
        }
        QTEST(values.join(' ').simplified(), "after");
    }

    void deletedJampTargetTurnsRed()
    {
        WindowBench bench;
        bench.openWith("A: jamp to_cmd=1, stop; B: jamp to_cmd=1");
        QVERIFY(bench.play("#1, CmdDeleteCur"));
        for (int tab : {0, 1})
            QCOMPARE(bench.table(tab)->item(0, 1)->foreground().color(), QColor(Qt::red));
    }

    // A crash behind the dialog must not cost the programmers that were set up in it.
    void settingsReachTheDiskWithOk()
    {
        WindowBench bench;
        bench.openSamples("One");
        for (const bool writes : {false, true}) {
            appData().SaveSettingsApp = writes;
            bench.inDialog = [](QDialog& dialog) {
                for (QLineEdit* line : dialog.findChildren<QLineEdit*>()) {
                    if (line->text() == appData().PathProgs)
                        line->setText(line->text() + "x");
                }
            };
            const QString changed = appData().PathProgs + "x";
            QVERIFY(bench.play("Setup") && appData().PathProgs == changed);
            const TSettings file(fileInAppDir("ini"));
            QCOMPARE(file.readString("Main/PathProgs", {}) == changed, writes);
        }
    }

    // No file is written over by a new or a pasted project, or goes with its node.
    void projects_data() { textRows(projectRows, {"steps", "nodes", "configs", "told"}); }
    void projects()
    {
        QFETCH(QString, steps);
        QFETCH(QString, told);
        WindowBench bench;
        bench.dir().write("projects/bad.prj", "{ not a project");
        bench.openSamples("One");
        // The report that this one was saved must not hide what is wrong with the next one.
        appData().AutoSavePrj = true;
        QVERIFY(bench.play(steps));
        QTEST(bench.nodeNames(), "nodes");
        QTEST(bench.configs().trimmed(), "configs");
        compareTold(bench, told);
        QVERIFY(!project().isOpen() || project().file() == bench.window().prjList()->nodePath());
        QCOMPARE(bench.listDifference(), QString());
    }

    // Stored from the folder of the list, however it was typed; only an added one must be there.
    void typedFiles()
    {
        WindowBench bench;
        bench.openSamples("One");
        QVERIFY(bench.play("PrjEdit One " + bench.dir().file("projects/sub")));
        QCOMPARE(bench.window().prjList()->nodeFile(), QString("sub.prj"));
        QCOMPARE(bench.configs(), QString("D: stop"));
        for (const QString action : {"PrjNew", "PrjAdd", "PrjAddSub", "PrjEdit"}) {
            QFileDialog::AcceptMode mode = QFileDialog::AcceptSave;
            bench.inDialog = [&](QDialog& dialog) {
                QTimer::singleShot(0, &dialog, [&mode] {
                    mode = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())->acceptMode();
                });
                dialog.findChild<QPushButton*>()->click();
                QMetaObject::invokeMethod(&dialog, "reject", Qt::QueuedConnection);
            };
            QVERIFY(bench.play(action));
            QCOMPARE(mode == QFileDialog::AcceptOpen, action.startsWith("PrjAdd"));
        }
    }

    // The list that is open has been changed in the window and not yet in its file.
    void lists_data() { textRows(listRows, {"steps", "file", "nodes", "box"}); }
    void lists()
    {
        QFETCH(QString, steps);
        QFETCH(QString, box);
        WindowBench bench;
        const QString lists = bench.dir().file("projects/");
        bench.dir().write("projects/other.lst", R"({"list": [{"parent": 0, "name": "Other", "file": ""}]})");
        bench.dir().write("projects/far/bad.lst", "{ no list");
        bench.openSamples("One");
        TTreeWidget* tree = bench.window().prjList()->tree();
        tree->addTopLevelItem(tree->takeTopLevelItem(0));
        // The list of lists: first there is none.
        QVERIFY(bench.play("PrjListSelect") && bench.boxes.takeFirst().contains("vm.lpl"));
        const QString other = lists + "other.lst";
        bench.dir().write("vm.lpl",
                          "{\"list\": [{\"name\": \"Chosen\", \"file\": \"" + other.toUtf8() + "\"}]}");
        if (steps == "PrjListSelect")
            bench.inDialog = [](QDialog& dialog) { dialog.findChild<QTableWidget*>()->selectRow(0); };
        QVERIFY(bench.play(steps));
        QVERIFY(bench.close());
        QVERIFY(bench.dir().read("projects/one.prj").contains("configurations"));
        // A place in a list that is not the one of the next start would be that of another project.
        QCOMPARE(appData().LastPrj < 0, steps != "PrjListNew test.lst");
        QTEST(bench.window().prjList()->listFile().remove(lists), "file");
        QTEST(bench.nodeNames(), "nodes");
        QVERIFY(bench.boxes.join(' ').contains(box));
        QCOMPARE(appData().PrjListName + appData().PrjListFile,
                 steps == "PrjListSelect" ? "Chosen" + other : "test.lst");
    }
};

QTEST_MAIN(TestOperations)
#include "test_operations.moc"
