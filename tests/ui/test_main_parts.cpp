#include "core/files/TPrjListFile.h"
#include "exec/TLineGate.h"
#include "exec/TRunControl.h"
#include "ui/WindowBench.h"
#include "ui/main/TActionState.h"
#include "ui/main/TCmdClipboard.h"
#include "ui/main/TMainPanels.h"
#include "ui/main/TPrjSession.h"

#include <QtTest>

namespace {

/// The parts of a window without it, on a list of four nodes.
struct Parts
{
    Parts()
    {
        bench.addNode("One", "A: delay value=0, pause, stop; B: delay value=1");
        bench.addNode("Two", "C: jamp to_cmd=1, stop, !pause, execute cfg=0, auto_detect route=EF4017=0");
        TPrjListFile list;
        list.setItems({{0, true, "One", "one.prj"}, {0, true, "Two", "two.prj"}, {2, false, "Sub", ""}, {}});
        bench.dir().write("projects/test.lst", list.toBytes());
        session.openStartList();
    }
    ~Parts()
    {
        session.stopRuns();
        session.clear();
    }
    Q_DISABLE_COPY(Parts)

    void go(int node)
    {
        panels.prjList()->selectByIndex(node);
        session.selectPrj(panels.prjList()->nodePath());
        bench.settle();
    }
    QString nodes() const
    {
        QStringList names;
        for (const TPrjListItem& item : panels.prjList()->items())
            names.append(item.name);
        return names.join(' ').trimmed();
    }

    WindowBench bench;
    TLineGate gate;
    TMainPanels panels{gate};
    TRunControl runs{[this](int id_cfg) -> IRunView* { return panels.prj()->tabOf(id_cfg); }};
    TCmdClipboard clipboard;
    TPrjSession session{panels, runs, gate};
};

/// What the commands of the project refer to.
QString references()
{
    QStringList values;
    for (const TDataCmd* command : project().cmdList()) {
        for (const QString& reference : {QString(key::to_cmd), QString(key::cfg), QString(key::route)})
            values.append(command->param(reference).toString());
    }
    return values.join(' ').simplified();
}

bool allAre(const TActionState& state, bool on, const QString& names)
{
    QStringList others = names.split(' ', Qt::SkipEmptyParts);
    for (int id = 0; id < maCount; ++id) {
        const QString name = TMainActionRow::of(TMainAction(id)).hotKey;
        if (others.removeOne(name) && state.isOn(TMainAction(id)) != on)
            others.append("not " + name);
    }
    return others.isEmpty() || (qWarning() << others, false);
}

} // namespace

/// What the main window is made of, without the window.
class TestMainParts : public QObject
{
    Q_OBJECT

private slots:
    void actionState_data()
    {
        // Node, row | what has been copied, or that something waits for runs | what is on | what is off.
        textRows(R"(
- | | PrjListReload PrjNew Quit CmdUncheckHide | CfgNew CmdSelector CmdCopyOne CmdDeleteAll ExecCfg1 ExecIDProg
- | cmd cfg prj | PrjPasteNew | CmdPaste CfgPasteNew PrjEdit PrjCopy
3 -1 | | PrjEdit | PrjDeleteSubAll CfgNew PrjSave PrjOpenFolder
1 0 | | PrjDeleteSubAll CmdMoveDown PrjSave | CfgDelete CfgPasteNew CmdMoveUp CmdPaste PrjPasteNew ExecIDProg
1 4 | cmd | CmdMoveUp CmdPaste | CmdMoveDown PrjPasteNew CfgPasteNew
1 -1 | cfg | CfgPasteNew CmdDeleteAll | CmdMoveUp CmdCopyOne CmdDeleteCur ExecReset
0 0 | | CfgDelete ExecCfg1 | PrjDeleteSubAll
0 0 | waits | Quit PrjListOpenFolder CmdUncheckHide ViewParamExec | CfgNew PrjNew ExecCfg1 PrjSave Setup
)",
                 {"place", "given", "on", "off"});
    }
    void actionState()
    {
        QFETCH(QString, place);
        QFETCH(QString, given);
        QFETCH(QString, on);
        QFETCH(QString, off);
        Parts parts;
        QString error;
        parts.go(0);
        if (given.contains("cmd"))
            parts.clipboard.copyCmd(project().cmdIdAt(0));
        if (given.contains("cfg"))
            parts.clipboard.copyCfg(project().cfgIdAt(0));
        QVERIFY(!given.contains("prj") || parts.clipboard.copyPrj("One", project().file(), error));
        if (place == "-") {
            QVERIFY(parts.session.closePrj());
            parts.panels.prjList()->restoreCurrent(nullptr);
        } else {
            parts.go(place.section(' ', 0, 0).toInt());
            parts.panels.prj()->setCurrentRow(place.section(' ', 1).toInt());
        }
        const TActionState state(parts.panels, parts.clipboard, given != "waits");
        QVERIFY(allAre(state, true, on));
        QVERIFY(allAre(state, false, off));
    }

    // Kept by copies in a project that stays open.
    void clipboard()
    {
        Parts parts;
        parts.go(1);
        const QString before = references();
        const int cfg = project().cfgIdAt(0);
        QVERIFY(!parts.clipboard.copyCmd(-1) && parts.clipboard.cmdTitle().isNull());
        parts.clipboard.copyChecked(cfg);
        parts.clipboard.copyCfg(cfg);
        QCOMPARE(parts.clipboard.cfgName(), QString("C"));
        const int copy = parts.clipboard.pasteCfg("Copy", 1);
        QCOMPARE(references(), before + ' ' + before);
        QCOMPARE(project().cmdsOfCfg(copy).size(), 5);
        // Without the unchecked one, behind the first; then in front of all.
        parts.clipboard.pasteCmds(copy, project().cmdsOfCfg(copy).first()->id());
        QCOMPARE(project().cmdsOfCfg(copy).at(1)->cmd() + project().cmdsOfCfg(copy).at(5)->cmd(),
                 QString(cmd::jamp) + cmd::stop);
        parts.clipboard.dropReferences();
        project().removeCmdsOfCfg(cfg);
        project().removeCmdsOfCfg(copy);
        parts.clipboard.pasteCmds(cfg, -1);
        parts.clipboard.pasteCfg("Late", 0);
        QCOMPARE(references(), QString("-1 -1 -1 -1"));
        QString error;
        QVERIFY(!parts.clipboard.copyPrj("None", "/none", error) && !error.isEmpty());
        QVERIFY(parts.clipboard.prjName().isEmpty());
    }

    void unsavedChanges_data()
    {
        // Whether it is asked about | what is pressed | state of the file | project behind it | file of the
        // changes.
        textRows(R"(
auto | | | two | one
ask | Enter | | two | one
ask | Save | | two | one
ask | Do not save | | two |
ask | Cancel | | one |
ask | Escape | | one |
auto | Enter | broken | one |
auto | Escape | broken | one |
ask | Enter, Enter | broken | one |
ask | Save, Yes | broken | two |
ask | Save, Save as... | broken | two | saved
auto | Escape | foreign | one |
ask | Save, Enter | foreign | one |
ask | Save, Keep theirs | foreign | two |
ask | Save, Write mine | foreign | two | one
)",
                 {"asks", "press", "state", "after", "stored"});
    }
    // A project that is left with changes: no key that is pressed without reading loses them.
    void unsavedChanges()
    {
        QFETCH(QString, press);
        QFETCH(QString, state);
        QFETCH(QString, after);
        QFETCH(QString, stored);
        Parts parts;
        parts.go(0);
        appData().AutoSavePrj = QString(QTest::currentDataTag()).startsWith("auto");
        project().removeCmd(project().cmdIdAt(0));
        // A folder in the place of the file cannot be written, whoever runs the test.
        const QString file = parts.bench.dir().file("projects/one.prj");
        QVERIFY(state != "broken" || (QFile::remove(file) && QDir().mkpath(file + "/x")));
        if (state == "foreign")
            parts.bench.dir().write("projects/one.prj", "{\"theirs\": \"0\"}");
        parts.bench.press = press.split(", ", Qt::SkipEmptyParts);
        const int questions = parts.bench.press.size();
        parts.bench.typed = QStringList{"saved"};
        parts.go(1);
        QCOMPARE(parts.bench.boxes.size(), questions);
        QCOMPARE(parts.panels.prjList()->nodeName().toLower(), after);
        QVERIFY(project().file().endsWith(after + ".prj"));
        QCOMPARE(project().isChanged(), after == "one");
        // The command that was deleted is the only one with a 0.
        const auto isMine = [&](const QString& name) {
            const QByteArray bytes = parts.bench.dir().read("projects/" + name + ".prj");
            return !bytes.isEmpty() && !bytes.contains("\"0\"");
        };
        QCOMPARE(QString(isMine("one") ? "one" : isMine("saved") ? "saved" : ""), stored);
        QCOMPARE(parts.nodes(), QString(stored == "saved" ? "One saved Two Sub" : "One Two Sub"));
    }

    void runsComeFirst()
    {
        Parts parts;
        parts.go(0);
        parts.runs.start(project().cfgIdAt(0));
        parts.bench.yes = false;
        QStringList order;
        const auto step = [&order](const QString& name) { return [&order, name] { order.append(name); }; };
        parts.session.stopRunsThen(step("then"), step("refused"));
        QVERIFY(!parts.runs.isIdle() && !parts.session.isWaitingForRuns());
        parts.bench.yes = true;
        for (const QString name : {"replaced", "then"})
            parts.session.stopRunsThen(step(name));
        QVERIFY(parts.session.isWaitingForRuns());
        QTRY_VERIFY(!parts.session.isWaitingForRuns());
        QCOMPARE(order, (QStringList{"refused", "then"}));
        QCOMPARE(parts.bench.boxes.size(), 2);
    }
};

QTEST_MAIN(TestMainParts)
#include "test_main_parts.moc"
