#include "core/FakeDevices.h"
#include "core/TAppData.h"
#include "core/TDataCfg.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "link/TProg.h"
#include "support/TestDir.h"
#include "support/tables.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <memory>
#include <thread>

namespace {

const char goodChip[] = "W=0102/W.dev";
const char otherChip[] = "X=0304/X.dev";
const char longChip[] = "Y=050607/Y.dev";
const char unreadableChip[] = "gone=missing";

/// "word" or "word argument": the alias of set_prog, NAME=FILE of set_device, the entry of auto_detect,
/// the register of any other word. A "-" in front unchecks the command.
TData commandOf(const QString& text, int id_cfg)
{
    const bool isOff = text.startsWith(QLatin1Char('-'));
    const QString word = text.section(QLatin1Char(' '), 0, 0).mid(isOff ? 1 : 0);
    const QString argument = text.section(QLatin1Char(' '), 1);
    TData data{{key::id_cfg, id_cfg}, {key::status, !isOff}, {key::cmd, word}};
    if (word == cmd::set_prog) {
        data.insert(key::prog, argument);
    } else if (word == cmd::set_device) {
        data.insert(key::device, argument.section(QLatin1Char('='), 0, 0));
        data.insert(key::file, argument.section(QLatin1Char('='), 1));
    } else if (word == cmd::auto_detect) {
        data.insert(key::name, argument);
    } else if (!argument.isEmpty()) {
        data.insert(key::data, argument);
    }
    return data;
}

using Lists = QList<QStringList>;

/// A project of which each list is one configuration.
struct Project
{
    explicit Project(const Lists& configurations)
    {
        model.reset();
        model.setCatalogue(&catalogue);
        model.setFile(QStringLiteral("/nowhere/test.prj"));
        for (const QStringList& commands : configurations) {
            const int id_cfg = model.addCfg(QStringLiteral("Config"), QString(), -1);
            for (const QString& text : commands)
                model.addCmd(commandOf(text, id_cfg), -1);
        }
    }
    TData dataAt(int index) const { return model.cmdAt(index)->toData(); }

    FakeCatalogue catalogue;
    TDataPrj model;
};

/// All that a command is bound to, as text: "dp owner/family/prog", d and p for the valid flags.
QString bound(const TDataCmd& command)
{
    const auto name = [](const IDevice* device) { return device ? device->name() : QStringLiteral("-"); };
    return QStringLiteral("%1%2 %3/%4/%5")
        .arg(command.validDev() ? QStringLiteral("d") : QStringLiteral("-"),
             command.validParam() ? QStringLiteral("p") : QStringLiteral("-"), name(command.device()),
             name(command.family()), command.prog() ? QStringLiteral("prog") : QStringLiteral("-"));
}

QStringList boundAll(const TDataPrj& model)
{
    QStringList list;
    for (const TDataCmd* command : model.cmdList())
        list.append(bound(*command));
    return list;
}

QString words(const TDataPrj& model)
{
    return model.commandKeys().join(QLatin1Char(' '));
}

} // namespace

class TestModel : public QObject
{
    Q_OBJECT

private slots:
    void listWalks();
    void initTestCase();

    void bindsByPlace_data();
    void bindsByPlace();
    void sweepEqualsWalks();
    void sweepAsksOncePerChip();
    void listedFamilyAndChipOfOneNameStayApart();

    void nextCommand_data();
    void nextCommand();

    void blocksStayTogetherInTabOrder();
    void movesInsideConfigurationOnly();
    void removesWhatHangsOnChip();
    void everyChangeIsReported();

    void deviceChangeClearsAndDefaults();
    void partialEditKeepsTheRest_data();
    void partialEditKeepsTheRest();
    void detectionChangeKeepsModes();
    void registersOutliveWhatDoesNotConcernThem_data();
    void registersOutliveWhatDoesNotConcernThem();

    void replacedObjectsLiveUntilClear();
    void workersAndEditsSideBySide();

private:
    TestDir m_dir{TestDir::Empty};
};

void TestModel::initTestCase()
{
    registerMetaTypes();
    TAppData& app = appData();
    app.PathDevices = m_dir.path();
    app.PathProgs = m_dir.path();
    m_dir.write(QStringLiteral("auto.lst"), "fam=0102/W.dev|w.sig\nW=0102/other.dev|w.sig\n");
    m_dir.write(QStringLiteral("model.cfg"), "[Commands]\nset_vcc=true\nreset=false\n");
    app.progTypes.append(QStringLiteral("model"), QStringLiteral("model.cfg"));
    app.progTypes.append(QStringLiteral("lost"), QStringLiteral("lost.cfg"));
    app.progNames.append(QStringLiteral("sim"), true, QStringLiteral("p"), QStringLiteral("model"));
    app.progNames.append(QStringLiteral("off"), false, QStringLiteral("p"), QStringLiteral("model"));
    app.progNames.append(QStringLiteral("lost"), true, QStringLiteral("p"), QStringLiteral("lost"));
    app.progNames.append(QStringLiteral("untyped"), true, QStringLiteral("p"), QStringLiteral("?"));
}

void TestModel::bindsByPlace_data()
{
    tableColumns<QStringList, QStringList>("commands", "expected");
    const QString prog = QStringLiteral("set_prog sim");
    const QString chip = QStringLiteral("set_device ") + goodChip;
    const QString okProg = QStringLiteral("dp Tools/Tools/prog");
    const QString okChip = QStringLiteral("dp Prog/W/prog");

    tableRow("an ordinary run", QStringList{prog, chip, "erase", "delay", "set_vcc", "reset", "lock"},
             QStringList{okProg, okChip, "dp W/W/prog", "dp Tools/W/prog", "dp Prog/W/prog", "-p Prog/W/prog",
                         "-p W/W/prog"});
    tableRow("nothing in force", QStringList{"erase", "delay", "set_vcc", chip, "erase"},
             QStringList{"-- -/-/-", "dp Tools/-/-", "-p Prog/-/-", "-p Prog/W/-", "-- -/W/-"});
    tableRow("a programmer behind a chip cancels it", QStringList{prog, chip, prog, "erase", chip, "erase"},
             QStringList{okProg, okChip, okProg, "-p W/-/prog", okChip, "dp W/W/prog"});
    tableRow("an alias that is not usable still has its description",
             QStringList{"set_prog off", chip, "set_vcc", "erase"},
             QStringList{"-p Tools/Tools/prog", "-p Prog/W/-", "-p Prog/W/-", "-- -/W/-"});
    tableRow("aliases without a description",
             QStringList{"set_prog lost", "set_prog untyped", "set_prog unknown", "set_prog"},
             QStringList{"-p Tools/Tools/-", "-p Tools/Tools/-", "-p Tools/Tools/-", "-p Tools/Tools/-"});
    tableRow("a chip that cannot be read strands what is behind it, not itself",
             QStringList{prog, QStringLiteral("set_device ") + unreadableChip, "erase", "set_vcc"},
             QStringList{okProg, "dp Prog/-/prog", "-- -/-/prog", "dp Prog/-/prog"});
    tableRow("class words are no chips",
             QStringList{prog, "set_device Tools", "erase", "set_device Dev25=0102/W.dev", "erase"},
             QStringList{okProg, "dp Prog/-/prog", "-- -/-/prog", "dp Prog/-/prog", "-- -/-/prog"});
    tableRow("detection sets no chip in force",
             QStringList{prog, "auto_detect fam", "erase", "auto_detect unknown"},
             QStringList{okProg, "dp Prog/fam/prog", "-- -/-/prog", "dp Prog/-/prog"});
    tableRow("unknown word", QStringList{prog, chip, "", "separator"},
             QStringList{okProg, okChip, "-p W/W/prog", "dp Tools/W/prog"});
}

void TestModel::bindsByPlace()
{
    QFETCH(QStringList, commands);
    QFETCH(QStringList, expected);
    // The same commands behind others: nothing may come over from another configuration.
    Project project(
        Lists{{QStringLiteral("set_prog sim"), QStringLiteral("set_device ") + otherChip}, commands});
    project.model.bindAll();
    QCOMPARE(boundAll(project.model).mid(2), expected);
    for (int i = 0; i < project.model.cmdCount(); ++i)
        project.model.bindCmd(i);
    QCOMPARE(boundAll(project.model).mid(2), expected);
    project.model.bindCmd(-1);
    project.model.bindCmd(project.model.cmdCount());
}

void TestModel::sweepEqualsWalks()
{
    const QStringList choice{"set_prog sim",
                             "set_prog off",
                             "set_prog lost",
                             "erase",
                             "delay",
                             "set_vcc",
                             "reset",
                             "lock",
                             "status_reg_write 0102",
                             "auto_detect fam",
                             QStringLiteral("set_device ") + goodChip,
                             QStringLiteral("set_device ") + otherChip,
                             QStringLiteral("set_device ") + unreadableChip,
                             "set_device W=missing",
                             "set_device Tools",
                             "auto_detect W"};
    QRandomGenerator random(20);
    for (int round = 0; round < 3000; ++round) {
        Lists lists;
        for (int cfg = random.bounded(1, 4); cfg > 0; --cfg) {
            QStringList commands;
            for (int n = random.bounded(12); n > 0; --n)
                commands.append(choice.at(random.bounded(choice.size())));
            lists.append(commands);
        }
        Project swept(lists);
        swept.model.bindAll();
        Project walked(lists);
        for (int i = 0; i < walked.model.cmdCount(); ++i)
            walked.model.bindCmd(i);
        if (boundAll(swept.model) != boundAll(walked.model))
            qDebug() << lists;
        QCOMPARE(boundAll(swept.model), boundAll(walked.model));
    }
}

void TestModel::sweepAsksOncePerChip()
{
    QStringList commands{QStringLiteral("set_prog sim")};
    for (int i = 0; i < 50; ++i) {
        commands << QStringLiteral("set_device ") + unreadableChip << QStringLiteral("erase")
                 << QStringLiteral("set_device ") + goodChip << QStringLiteral("auto_detect unknown");
    }
    Project project(Lists{commands});
    project.model.bindAll();
    QCOMPARE(project.catalogue.questions, QStringList({"Tools|", "Prog|", "gone|missing", "W|0102/W.dev"}));
    project.model.bindAll();
    QCOMPARE(project.catalogue.questions.mid(4), QStringList({"gone|missing"}));
}

void TestModel::listedFamilyAndChipOfOneNameStayApart()
{
    Project project(Lists{{QStringLiteral("set_prog sim"), QStringLiteral("auto_detect W"),
                           QStringLiteral("set_device ") + goodChip, QStringLiteral("erase")}});
    project.model.bindAll();
    IDevice* listed = project.model.cmdAt(1)->family();
    IDevice* chip = project.model.cmdAt(2)->family();
    QVERIFY(listed && chip && listed != chip);
    QCOMPARE(project.model.cmdAt(3)->family(), chip);
    QVERIFY(project.catalogue.questions.contains(QStringLiteral("W|0102/other.dev")));
}

void TestModel::nextCommand_data()
{
    tableColumns<int, int, int>("cfg", "before", "expected");
    tableRow("from the start", 0, -1, 1);
    tableRow("unchecked are passed over", 0, 1, 3);
    tableRow("the end", 0, 3, -1);
    tableRow("of another configuration", 1, -1, 5);
    tableRow("from a place in an earlier configuration", 1, 1, 5);
    tableRow("no configuration", 7, -1, -1);
    tableRow("behind a command that is gone", 0, 4711, -1);
}

void TestModel::nextCommand()
{
    QFETCH(int, cfg);
    QFETCH(int, before);
    QFETCH(int, expected);
    const Project project(
        Lists{{"-delay", "delay", "-erase", "pause"}, {"-delay", "stop"}}); // ids are positions
    const TDataCmd* next = project.model.nextCmd(cfg, before);
    QCOMPARE(next ? next->id() : -1, expected);
    const TRunStep step = project.model.nextStep(cfg, before);
    QCOMPARE(step.found, next != nullptr);
    QCOMPARE(step.found ? step.data.value(key::id_cmd).toInt() : -1, expected);
}

void TestModel::blocksStayTogetherInTabOrder()
{
    Project project(Lists{{"erase", "delay"}, {}, {"pause", "stop"}});
    TDataPrj& model = project.model;
    QSignalSpy spy(&model, &TDataPrj::signalChangePrj);
    model.addCmd(commandOf(QStringLiteral("jamp"), 0), -1);
    QCOMPARE(words(model), QStringLiteral("erase delay jamp pause stop"));
    model.addCmd(commandOf(QStringLiteral("counter"), 2), 0);
    QCOMPARE(words(model), QStringLiteral("erase delay jamp counter pause stop"));
    model.addCmd(commandOf(QStringLiteral("process"), 1), 99);
    QCOMPARE(words(model), QStringLiteral("erase delay jamp process counter pause stop"));
    model.addCmd(commandOf(QStringLiteral("execute"), 0), 1);
    QCOMPARE(words(model), QStringLiteral("erase execute delay jamp process counter pause stop"));
    model.moveCfg(2, 0);
    QCOMPARE(words(model), QStringLiteral("counter pause stop erase execute delay jamp process"));
    QCOMPARE(model.indexCfg(2), 0);
    QCOMPARE(spy.count(), 5);
    for (const auto& move : {qMakePair(-1, 0), qMakePair(0, -1), qMakePair(0, 3), qMakePair(3, 0)})
        model.moveCfg(move.first, move.second);
    QCOMPARE(spy.count(), 5);
    model.removeCfg(0);
    QCOMPARE(words(model), QStringLiteral("counter pause stop process"));
    QCOMPARE(model.cfgList().size(), 2);
    QVERIFY(!model.cmdById(0));
    QCOMPARE(model.indexCmd(model.cmdIdAt(3)), 3);
    // A number that was given away once is not given again before the project is closed.
    model.removeCmd(model.cmdIdAt(3));
    QCOMPARE(model.addCmd(commandOf(QStringLiteral("stop"), 2), -1), 8);
    model.clear();
    QVERIFY(!model.isOpen() && model.cmdCount() == 0);
    QCOMPARE(model.addCfg(QStringLiteral("a"), QString(), -1), 0);
}

void TestModel::movesInsideConfigurationOnly()
{
    Project project(Lists{{"set_prog sim", QStringLiteral("set_device ") + goodChip, "erase"}, {"delay"}});
    TDataPrj& model = project.model;
    model.bindAll();
    const QString before = words(model);
    for (const auto& move : {qMakePair(0, -1), qMakePair(2, 1), qMakePair(3, -1), qMakePair(3, 1),
                             qMakePair(4711, 1), qMakePair(2, INT_MAX), qMakePair(0, INT_MIN)}) {
        model.moveCmd(move.first, move.second);
        QCOMPARE(words(model), before);
    }
    model.moveCmd(2, -1);
    QCOMPARE(words(model), QStringLiteral("set_prog erase set_device delay"));
    QVERIFY(!model.cmdById(2)->validDev());
    QCOMPARE(model.indexCmd(1), 2);
}

void TestModel::removesWhatHangsOnChip()
{
    const QString chip = QStringLiteral("set_device ") + goodChip;
    const QStringList commands{chip, "erase", "delay", "leave", "set_vcc", chip, "erase"};
    const QString both = QStringLiteral("set_device delay set_vcc set_device erase erase");
    for (int asked : {0, 2, 4}) {
        Project project(Lists{commands, {"erase"}});
        project.model.removeDeviceCmds(asked);
        QCOMPARE(words(project.model), both);
    }
    Project last(Lists{commands, {"erase"}});
    last.model.removeDeviceCmds(5);
    QCOMPARE(words(last.model), QStringLiteral("set_device erase delay leave set_vcc set_device erase"));
    last.model.removeDeviceCmds(7); // no chip before it
    QCOMPARE(last.model.cmdCount(), 7);
}

void TestModel::everyChangeIsReported()
{
    Project project(Lists{{"delay"}});
    QSignalSpy changed(&project.model, &TDataPrj::signalChangePrj);
    project.model.setChanged();
    project.model.clearChanged();
    QCOMPARE(changed.count(), 2);
    QVERIFY(changed.at(0).at(0).toBool() && !changed.at(1).at(0).toBool());
    project.model.setCfgStatus(0, csRun);
    project.model.bindAll();
    QVERIFY(!project.model.isChanged());
    QSignalSpy data(&project.model, &TDataPrj::signalChangeData);
    // Keys that are the command's own are no parameters, wherever they come from.
    project.model.setCmdParam(0, {{key::value, 7}, {key::id_cfg, 5}, {key::cmd, "stop"}, {key::status, 0}});
    project.model.setCmdParam(4711, {{key::value, 7}});
    QVERIFY(project.model.isChanged());
    QCOMPARE(data.count(), 1);
    QCOMPARE(data.at(0).at(1).value<TData>(), project.dataAt(0));
    const TDataCmd* command = project.model.cmdById(0);
    QVERIFY(command->cmd() == cmd::delay && command->cfgId() == 0 && command->status());
    QVERIFY(!command->param(key::id_cfg).isValid() && !command->param(key::status).isValid());
}

void TestModel::deviceChangeClearsAndDefaults()
{
    Project project(Lists{{"set_prog sim", QStringLiteral("set_device ") + goodChip, "erase"}});
    project.model.setCmdParam(1, {{QStringLiteral("bad"), 1}});
    project.model.bindAll();
    QVERIFY(!project.model.cmdById(1)->validParam());
    project.model.setCmdParam(1, {{key::id_cmd, 1}, {key::device, "Y"}, {key::file, "050607/Y.dev"}});
    const TDataCmd* chip = project.model.cmdById(1);
    QVERIFY(!chip->param(QStringLiteral("bad")).isValid());
    QCOMPARE(chip->param(key::clk).toInt(), 6);
    QVERIFY(chip->validParam());
    QCOMPARE(bound(*project.model.cmdById(2)), QStringLiteral("dp Y/Y/prog"));
}

void TestModel::partialEditKeepsTheRest_data()
{
    tableColumns<QString, TData>("command", "edit");
    tableRow("clock of a chip", QStringLiteral("set_device ") + goodChip, TData{{key::clk, 9}});
    tableRow("same chip again", QStringLiteral("set_device ") + goodChip,
             TData{{key::device, "W"}, {key::clk, 9}});
    tableRow("port of a programmer", "set_prog sim", TData{{key::alt_port, "x"}});
}

void TestModel::partialEditKeepsTheRest()
{
    QFETCH(QString, command);
    QFETCH(TData, edit);
    Project project(Lists{{command}});
    TData expected = project.dataAt(0);
    edit.insert(key::id_cmd, 0);
    project.model.bindAll();
    project.model.setCmdParam(0, edit);
    TData result = project.dataAt(0);
    for (auto it = edit.cbegin(); it != edit.cend(); ++it)
        expected.insert(it.key(), it.value());
    for (const QLatin1String& flag : {key::valid_dev, key::valid_param}) {
        expected.remove(flag);
        result.remove(flag);
    }
    QCOMPARE(result, expected);
}

void TestModel::detectionChangeKeepsModes()
{
    Project project(Lists{{"set_prog sim", "auto_detect fam"}});
    TDataPrj& model = project.model;
    model.bindAll();
    model.setCmdParam(1, {{key::stop, 0}, {key::execute, 1}, {key::route, "A=1"}, {key::addr, 3}});
    model.setCmdParam(1, {{key::name, "W"}, {key::route, ""}, {key::stop, 1}});
    const TDataCmd* command = model.cmdById(1);
    QCOMPARE(command->param(key::stop).toInt(), 0);
    QCOMPARE(command->param(key::execute).toInt(), 1);
    QCOMPARE(command->param(key::route).toString(), QString());
    QVERIFY(!command->param(key::addr).isValid());
    QCOMPARE(command->param(key::clk).toInt(), 4);
    QCOMPARE(bound(*command), QStringLiteral("dp Prog/W/prog"));
}

void TestModel::registersOutliveWhatDoesNotConcernThem_data()
{
    tableColumns<QString, QString, QString, QString>(
        "stored", "edit", "first", "second"); // NAME=FILE for the chip of the first configuration
    tableRow("opening", "AABB", "", "AABB", "AABB");
    tableRow("blanks do not count", "AA BB", "", "AA BB", "AA BB");
    tableRow("empty", "", "", "0102", "0102");
    tableRow("too long", "AABBCC", "", "0102", "0102");
    tableRow("another chip", "AABB", longChip, "050607", "AABB");
    tableRow("a chip that cannot be read", "AABB", unreadableChip, "AABB", "AABB");
}

void TestModel::registersOutliveWhatDoesNotConcernThem()
{
    QFETCH(QString, stored);
    QFETCH(QString, edit);
    QFETCH(QString, first);
    QFETCH(QString, second);
    const QStringList commands{"set_prog sim", QStringLiteral("set_device ") + goodChip,
                               QStringLiteral("status_reg_write ") + stored, "erase AABBCC"};
    Project project(Lists{commands, commands});
    TDataPrj& model = project.model;
    model.bindAll();
    model.markMadeFor();
    model.normalizeAll();
    if (!edit.isEmpty()) {
        model.setCmdParam(1, commandOf(QStringLiteral("set_device ") + edit, 0));
    }
    QCOMPARE(model.cmdById(2)->param(key::data).toString(), first);
    QCOMPARE(model.cmdById(6)->param(key::data).toString(), second);
    QCOMPARE(model.cmdById(3)->param(key::data).toString(), QStringLiteral("AABBCC"));
    if (edit == QLatin1String(unreadableChip)) {
        // Choosing the chip that the registers were made for leaves them as they are.
        model.setCmdParam(1, commandOf(QStringLiteral("set_device ") + goodChip, 0));
        QCOMPARE(model.cmdById(2)->param(key::data).toString(), stored);
    }
}

void TestModel::replacedObjectsLiveUntilClear()
{
    const int before = FakeDevice::alive;
    Project project(Lists{{"set_prog sim", QStringLiteral("set_device ") + goodChip, "erase"}});
    TDataPrj& model = project.model;
    model.bindAll();
    const TDataCmd* command = model.cmdById(2);
    const IDevice* chip = command->family();
    const TProg* prog = command->prog();
    model.clearCaches();
    model.bindAll();
    QVERIFY(command->family() != chip && command->prog() != prog);
    QCOMPARE(chip->name(), QStringLiteral("W"));
    QVERIFY(prog->supportsCommand(cmd::set_vcc));
    model.removeCfg(0);
    QCOMPARE(command->cmd(), QString(cmd::erase));
    QCOMPARE(FakeDevice::alive, before + 6);
    model.clear();
    QCOMPARE(FakeDevice::alive, before);
}

void TestModel::workersAndEditsSideBySide()
{
    QStringList commands{"set_prog sim", QStringLiteral("set_device ") + goodChip};
    for (int i = 0; i < 40; ++i)
        commands << QStringLiteral("erase") << QStringLiteral("counter");
    Project project(Lists{commands, commands, commands});
    TDataPrj& model = project.model;
    model.bindAll();
    std::atomic<bool> stop{false};
    std::atomic<int> steps{0};
    const auto work = [&](int cfg) {
        for (int id = -1; !stop;) {
            const TRunStep step = model.nextStep(cfg, id);
            id = step.found ? step.data.value(key::id_cmd).toInt() : -1;
            if (step.device)
                (void)step.device->hasCommand(cmd::erase);
            if (step.data.value(key::cmd) == QString(cmd::counter))
                model.setCmdParam(id, {{key::value, ++steps}});
        }
    };
    std::vector<std::thread> threads;
    for (int cfg = 0; cfg < 3; ++cfg)
        threads.emplace_back(work, cfg);
    QElapsedTimer timer;
    timer.start();
    for (int round = 0; timer.elapsed() < 700; ++round) {
        model.moveCmd(model.cmdIdAt(round % model.cmdCount()), 1);
        const int added = model.addCmd(commandOf(QStringLiteral("erase"), round % 3), round % 50);
        model.setCmdParam(1,
                          commandOf(QStringLiteral("set_device ") + (round % 2 ? goodChip : otherChip), 0));
        model.clearCaches();
        model.bindAll();
        model.removeCmd(added);
        model.moveCfg(round % 3, (round + 1) % 3);
    }
    stop = true;
    for (std::thread& thread : threads)
        thread.join();
    QVERIFY(steps > 0);
    QCOMPARE(model.cmdCount(), 3 * commands.size());
    const QStringList swept = boundAll(model);
    for (int i = 0; i < model.cmdCount(); ++i)
        model.bindCmd(i);
    QCOMPARE(swept, boundAll(model));
}

void TestModel::listWalks()
{
    const QString chip = QStringLiteral("set_device ") + goodChip;
    Project project(Lists{{QStringLiteral("set_prog sim"), chip, QStringLiteral("delay")},
                          {QStringLiteral("erase"), QStringLiteral("set_prog sim"), QStringLiteral("delay"),
                           chip, QStringLiteral("erase"), chip, QStringLiteral("delay")}});
    TDataPrj& model = project.model;
    model.bindAll();
    const int cfg = model.cfgIdAt(1);
    const auto id = [&](int index) { return model.cmdIdAt(index); };
    QCOMPARE(model.progBefore(cfg, 3), QString());
    QCOMPARE(model.progBefore(cfg, 4), QStringLiteral("sim"));
    QCOMPARE(model.progBefore(cfg, 9), QStringLiteral("sim"));
    QCOMPARE(model.progBefore(cfg, 2), QString());
    QCOMPARE(model.deviceBefore(cfg, 5), QString());
    QCOMPARE(model.deviceBefore(cfg, 7), QStringLiteral("W"));
    QCOMPARE(model.classOfCmd(cfg, 7, cmd::erase), QStringLiteral("W"));
    QCOMPARE(model.classOfCmd(cfg, 3, cmd::erase), QString());
    QCOMPARE(model.classOfCmd(cfg, 3, cmd::delay), QStringLiteral("Tools"));
    QCOMPARE(model.classOfCmd(cfg, 3, cmd::set_device), QStringLiteral("Prog"));
    QCOMPARE(model.indexProgBefore(id(3)), -1);
    QCOMPARE(model.indexProgBefore(id(4)), 4);
    QCOMPARE(model.indexProgBefore(id(9)), 4);
    QCOMPARE(model.indexProgDeviceBefore(id(5)), -1);
    QCOMPARE(model.indexProgDeviceBefore(id(7)), 6);
    QCOMPARE(model.indexProgDeviceBefore(4711), -1);
    QVERIFY(!model.dependsOnDevice(1));
    QVERIFY(!model.dependsOnDevice(4));
    QVERIFY(model.dependsOnDevice(6));
    QVERIFY(!model.dependsOnDevice(8));
    QVERIFY(!model.dependsOnDevice(-1));
    QCOMPARE(model.rowInCfg(cfg, id(7)), 4);
    QCOMPARE(model.rowInCfg(model.cfgIdAt(0), id(7)), -1);
    QCOMPARE(model.indexCfgOfCmd(id(7)), 1);
}

QTEST_GUILESS_MAIN(TestModel)
#include "test_model.moc"
