#include "base/TCmdCode.h"
#include "base/keys.h"
#include "core/model/IDeviceCatalogue.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "devices/tools/TDevTools.h"
#include "settings/TAppData.h"
#include "support/TestDir.h"
#include "support/tables.h"

#include <QSignalSpy>

#include <atomic>
#include <thread>

namespace {

const QString sim = QStringLiteral("set_prog prog=sim");
const QString chip = QStringLiteral("set_device device=W,file=0102/W.dev");
const QString otherChip = QStringLiteral("set_device device=X,file=0304/X.dev");
const QString longChip = QStringLiteral("set_device device=Y,file=050607/Y.dev");
const QString unreadableChip = QStringLiteral("set_device device=gone,file=missing");

/// A device without a family behind it: a chip with a register, the programmer's or the flow class.
class FakeDevice : public TDevTools
{
public:
    FakeDevice(const QString& name, const QStringList& words, const QString& registerDefault = {})
        : TDevTools(name, {})
        , m_words(words)
        , m_default(registerDefault)
    {
        ++alive;
    }
    ~FakeDevice() override { --alive; }

    bool hasCommand(const QString& key) const override { return m_words.contains(key); }
    bool refreshParams(TData& data) const override
    {
        if (m_default.isEmpty() || data.value(key::cmd) != QString(cmd::status_reg_write))
            return false;
        data.insert(key::data, m_default);
        return true;
    }
    /// Invalid exactly with the parameter "bad".
    bool checkParams(const TData& data) const override { return !data.contains(QStringLiteral("bad")); }
    bool setDeviceDefaults(TData& data) const override
    {
        data.insert(key::clk, m_default.size());
        return !m_default.isEmpty();
    }

    inline static int alive = 0;

private:
    const QStringList m_words;
    const QString m_default;
};

/// Makes chips of description files named "NAME.dev" with the bytes of its register in front:
/// "0102/NAME.dev"; any other file cannot be read. Also makes each class for its own word.
class FakeCatalogue : public IDeviceCatalogue
{
public:
    IDevice* create(const QString& name, const QString& file) override
    {
        questions.append(name + QLatin1Char('|') + file);
        if (file.endsWith(QLatin1String(".dev")))
            return new FakeDevice(name, {cmd::erase, cmd::status_reg_write}, file.section('/', 0, 0));
        if (name == dev_class::tools)
            return new FakeDevice(name, TCmdCode::toolsKeys());
        if (name == dev_class::prog)
            return new FakeDevice(name, TCmdCode::progKeys());
        return name == dev_class::dev25 ? new FakeDevice(name, {cmd::erase}) : nullptr;
    }

    bool isClassWord(const QString& word) const override
    {
        return word == "Dev25" || word == "Prog" || word == "Tools";
    }

    QStringList questions;
};

/// "word" or "word key=value,key=value"; a "-" in front unchecks the command.
TData commandOf(const QString& text, int id_cfg)
{
    const bool isOff = text.startsWith(QLatin1Char('-'));
    TData data{{key::id_cfg, id_cfg}, {key::status, !isOff}};
    data.insert(key::cmd, text.section(QLatin1Char(' '), 0, 0).mid(isOff ? 1 : 0));
    for (const QString& pair : text.section(QLatin1Char(' '), 1).split(QLatin1Char(',')))
        data.insert(pair.section(QLatin1Char('='), 0, 0), pair.section(QLatin1Char('='), 1));
    data.remove(QString());
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
    FakeCatalogue catalogue;
    TDataPrj model;
};

/// All that the commands are bound to: "dp owner/family/prog", d and p for the valid flags.
QStringList boundAll(const TDataPrj& model)
{
    const auto name = [](const IDevice* device) { return device ? device->name() : QStringLiteral("-"); };
    QStringList list;
    for (const TDataCmd* command : model.cmdList()) {
        list.append(QStringLiteral("%1%2 %3/%4/%5")
                        .arg(command->validDev() ? "d" : "-", command->validParam() ? "p" : "-",
                             name(command->device()), name(command->family()),
                             command->prog() ? "prog" : "-"));
    }
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
    void initTestCase()
    {
        registerMetaTypes();
        TAppData& app = appData();
        app.PathDevices = m_dir.path();
        app.PathProgs = m_dir.path();
        m_dir.write("auto.lst", "fam=0102/W.dev|w.sig\nW=0102/other.dev|w.sig\n");
        m_dir.write("model.cfg", "[Commands]\nset_vcc=true\nreset=false\n");
        app.progTypes.append("model", "model.cfg");
        app.progTypes.append("lost", "lost.cfg");
        app.progNames.append("sim", true, "p", "model");
        app.progNames.append("off", false, "p", "model");
        app.progNames.append("lost", true, "p", "lost");
        app.progNames.append("untyped", true, "p", "?");
    }

    void bindsByPlace()
    {
        const auto row = [](const char* name, const QStringList& commands, const QString& expected) {
            // The same commands behind others: nothing may come over from another configuration.
            Project project(Lists{{sim, otherChip}, commands});
            project.model.bindAll();
            compareRow(name, boundAll(project.model).mid(2).join(", "), expected);
            for (int i = -1; i <= project.model.cmdCount(); ++i)
                project.model.bindCmd(i);
            compareRow(name, boundAll(project.model).mid(2).join(", "), expected);
        };
        const QString okProg = "dp Tools/Tools/prog, ";
        const QString okChip = "dp Prog/W/prog, ";
        row("an ordinary run", {sim, chip, "erase", "delay", "set_vcc", "reset", "lock"},
            okProg + okChip + "dp W/W/prog, dp Tools/W/prog, dp Prog/W/prog, -p Prog/W/prog, -p W/W/prog");
        row("nothing in force", {"erase", "delay", "set_vcc", chip, "erase"},
            "-- -/-/-, dp Tools/-/-, -p Prog/-/-, -p Prog/W/-, -- -/W/-");
        row("a programmer behind a chip cancels it", {sim, chip, sim, "erase", chip, "erase"},
            okProg + okChip + okProg + "-p W/-/prog, " + okChip + "dp W/W/prog");
        row("an alias that is not usable still has its description",
            {"set_prog prog=off", chip, "set_vcc", "erase"},
            "-p Tools/Tools/prog, -p Prog/W/-, -p Prog/W/-, -- -/W/-");
        row("aliases without a description", {"set_prog prog=lost", "set_prog prog=untyped", "set_prog"},
            "-p Tools/Tools/-, -p Tools/Tools/-, -p Tools/Tools/-");
        row("a chip that cannot be read strands what is behind it, not itself",
            {sim, unreadableChip, "erase", "set_vcc"},
            okProg + "dp Prog/-/prog, -- -/-/prog, dp Prog/-/prog");
        row("class words are no chips",
            {sim, "set_device device=Tools", "erase", "set_device device=Dev25,file=0102/W.dev", "erase"},
            okProg + "dp Prog/-/prog, -- -/-/prog, dp Prog/-/prog, -- -/-/prog");
        row("detection sets no chip in force",
            {sim, "auto_detect name=fam", "erase", "auto_detect name=unknown"},
            okProg + "dp Prog/fam/prog, -- -/-/prog, dp Prog/-/prog");
        row("unknown word", {sim, chip, "", "separator"}, okProg + okChip + "-p W/W/prog, dp Tools/W/prog");
    }

    void sweepAsksOncePerChip()
    {
        QStringList commands{sim, "auto_detect name=W"};
        for (int i = 0; i < 50; ++i)
            commands << unreadableChip << "erase" << chip << "auto_detect name=unknown";
        Project project(Lists{commands});
        project.model.bindAll();
        // A listed family and a chip of the same name stay apart.
        QCOMPARE(project.catalogue.questions,
                 QStringList({"Tools|", "Prog|", "W|0102/other.dev", "gone|missing", "W|0102/W.dev"}));
        QVERIFY(project.model.cmdAt(1)->family() != project.model.cmdAt(4)->family());
    }

    void walks()
    {
        Project project(Lists{{sim, chip, "delay"}, {"erase", sim, "delay", chip, "erase", chip, "delay"}});
        const TDataPrj& model = project.model;
        const auto row = [&](int index, int prog, int device, bool depends, int rowInCfg) {
            const int id = model.cmdIdAt(index);
            const QList<int> found{model.indexProgBefore(id), model.indexProgDeviceBefore(id),
                                   model.dependsOnDevice(index), model.rowInCfg(model.cfgIdAt(1), id)};
            compareRow(QString::number(index), found, QList<int>{prog, device, depends, rowInCfg});
        };
        row(2, 0, 1, false, -1);
        row(3, -1, -1, false, 0);
        row(4, 4, -1, false, 1);
        row(6, 4, 6, true, 3);
        row(9, 4, 8, false, 6);
        QVERIFY(model.indexProgDeviceBefore(4711) == -1 && !model.dependsOnDevice(-1));
    }

    void nextCommand()
    {
        const Project project(
            Lists{{"-delay", "delay", "-erase", "pause"}, {"-delay", "stop"}}); // ids are positions
        const auto next = [&](int cfg, int before) {
            const TRunStep step = project.model.nextStep(cfg, before);
            return step.state == TRunStep::State::Found  ? step.data.value(key::id_cmd).toInt()
                   : step.state == TRunStep::State::Gone ? -2
                                                         : -1;
        };
        QCOMPARE(next(0, -1), 1);
        QCOMPARE(next(0, 1), 3);
        QCOMPARE(next(0, 3), -1);
        QCOMPARE(next(1, -1), 5);
        QCOMPARE(next(1, 1), 5);
        QCOMPARE(next(7, -1), -2);
        QCOMPARE(next(0, 4711), -2);
        QVERIFY(!project.model.nextCmd(0, 4711)); // nor does it begin again
    }

    void blocksStayTogetherInTabOrder()
    {
        Project project(Lists{{"erase", "delay"}, {}, {"pause", "stop"}});
        TDataPrj& model = project.model;
        QSignalSpy spy(&model, &TDataPrj::signalChangePrj);
        const auto with = [&model](const QString& word, int cfg, int index) {
            model.addCmd(commandOf(word, cfg), index);
            return words(model);
        };
        QCOMPARE(with("jamp", 0, -1), QString("erase delay jamp pause stop"));
        QCOMPARE(with("counter", 2, 0), QString("erase delay jamp counter pause stop"));
        QCOMPARE(with("process", 1, 99), QString("erase delay jamp process counter pause stop"));
        QCOMPARE(with("execute", 0, 1), QString("erase execute delay jamp process counter pause stop"));
        model.moveCfg(2, 0);
        QCOMPARE(words(model), QString("counter pause stop erase execute delay jamp process"));
        QCOMPARE(model.indexCfg(2), 0);
        QCOMPARE(spy.count(), 5);
        for (const auto& move : {qMakePair(-1, 0), qMakePair(0, -1), qMakePair(0, 3), qMakePair(3, 0)})
            model.moveCfg(move.first, move.second);
        QCOMPARE(spy.count(), 5);
        model.removeCfg(0);
        QCOMPARE(words(model), QString("counter pause stop process"));
        QVERIFY(!model.cmdById(0) && model.cfgList().size() == 2 && model.indexCmd(model.cmdIdAt(3)) == 3);
        // A number that was given away once is not given again before the project is closed.
        model.removeCmd(model.cmdIdAt(3));
        QCOMPARE(model.addCmd(commandOf("stop", 2), -1), 8);
        model.clear();
        QVERIFY(!model.isOpen() && model.cmdCount() == 0);
        QCOMPARE(model.addCfg("a", QString(), -1), 0);
    }

    void movesInsideConfigurationOnly()
    {
        Project project(Lists{{sim, chip, "erase"}, {"delay"}});
        TDataPrj& model = project.model;
        model.bindAll();
        const QString before = words(model);
        for (const auto& move : {qMakePair(0, -1), qMakePair(2, 1), qMakePair(3, -1), qMakePair(3, 1),
                                 qMakePair(4711, 1), qMakePair(2, INT_MAX), qMakePair(0, INT_MIN)}) {
            model.moveCmd(move.first, move.second);
            QCOMPARE(words(model), before);
        }
        model.moveCmd(2, -1);
        QCOMPARE(words(model), QString("set_prog erase set_device delay"));
        QVERIFY(!model.cmdById(2)->validDev());
        QCOMPARE(model.indexCmd(1), 2);
    }

    void removesWhatHangsOnChip()
    {
        const auto row = [](int asked, const QString& left) {
            Project project(Lists{{chip, "erase", "delay", "leave", "set_vcc", chip, "erase"}, {"erase"}});
            project.model.removeDeviceCmds(asked);
            compareRow(QString::number(asked), words(project.model), left);
        };
        for (int asked : {0, 2, 4})
            row(asked, "set_device delay set_vcc set_device erase erase");
        row(5, "set_device erase delay leave set_vcc set_device erase");
        row(7, "set_device erase delay leave set_vcc set_device erase erase"); // no chip before it
    }

    void everyChangeIsReported()
    {
        Project project(Lists{{"delay"}});
        QSignalSpy changed(&project.model, &TDataPrj::signalChangePrj);
        project.model.setChanged();
        project.model.clearChanged();
        QCOMPARE(changed, (QList<QVariantList>{{true}, {false}}));
        project.model.setCfgStatus(0, csRun);
        project.model.bindAll();
        QVERIFY(!project.model.isChanged());
        QSignalSpy data(&project.model, &TDataPrj::signalChangeData);
        // Keys that are the command's own are no parameters, wherever they come from.
        project.model.setCmdParam(0,
                                  {{key::value, 7}, {key::id_cfg, 5}, {key::cmd, "stop"}, {key::status, 0}});
        project.model.setCmdParam(4711, {{key::value, 7}});
        QVERIFY(project.model.isChanged());
        QCOMPARE(data.count(), 1);
        QCOMPARE(data.at(0).at(1).value<TData>(), project.model.cmdAt(0)->toData());
        const TDataCmd* command = project.model.cmdById(0);
        QVERIFY(command->cmd() == cmd::delay && command->cfgId() == 0 && command->status());
        QVERIFY(!command->param(key::id_cfg).isValid() && !command->param(key::status).isValid());
    }

    void deviceChangeClearsAndDefaults()
    {
        Project project(Lists{{sim, chip, "erase"}});
        project.model.setCmdParam(1, {{"bad", 1}});
        project.model.bindAll();
        QVERIFY(!project.model.cmdById(1)->validParam());
        project.model.setCmdParam(1, {{key::id_cmd, 1}, {key::device, "Y"}, {key::file, "050607/Y.dev"}});
        const TDataCmd* chip = project.model.cmdById(1);
        QVERIFY(!chip->param("bad").isValid());
        QCOMPARE(chip->param(key::clk).toInt(), 6);
        QVERIFY(chip->validParam());
        QCOMPARE(boundAll(project.model).at(2), "dp Y/Y/prog");
    }

    void partialEditKeepsTheRest()
    {
        Project project(Lists{{sim, chip}});
        TDataPrj& model = project.model;
        model.bindAll();
        model.setCmdParam(0, {{key::id_cmd, 0}, {key::alt_port, "x"}});
        QVERIFY(model.cmdById(0)->param(key::prog) == "sim" && model.cmdById(0)->param(key::alt_port) == "x");
        model.setCmdParam(1, {{key::clk, 9}, {key::device, "W"}});
        QVERIFY(model.cmdById(1)->param(key::file) == "0102/W.dev" && model.cmdById(1)->param(key::clk) == 9);
    }

    void detectionChangeKeepsModes()
    {
        Project project(Lists{{sim, "auto_detect name=fam"}});
        TDataPrj& model = project.model;
        model.bindAll();
        model.setCmdParam(1, {{key::stop, 0}, {key::execute, 1}, {key::route, "A=1"}, {key::addr, 3}});
        model.setCmdParam(1, {{key::name, "W"}, {key::route, ""}, {key::stop, 1}});
        const TDataCmd* command = model.cmdById(1);
        QVERIFY(command->param(key::stop) == 0 && command->param(key::execute) == 1);
        QVERIFY(command->param(key::route) == "" && !command->param(key::addr).isValid());
        QCOMPARE(command->param(key::clk).toInt(), 4);
        QCOMPARE(boundAll(model).at(1), "dp Prog/W/prog");
    }

    void registersOutliveWhatDoesNotConcernThem()
    {
        // A project is opened, and the chip of its first configuration changed.
        const auto row = [](const QString& stored, const QString& change, const QString& first,
                            const QString& second) {
            const QStringList commands{sim, chip, "status_reg_write data=" + stored, "erase data=AABBCC"};
            Project project(Lists{commands, commands});
            TDataPrj& model = project.model;
            model.bindAll();
            model.markMadeFor();
            model.normalizeAll();
            if (!change.isEmpty())
                model.setCmdParam(1, commandOf(change, 0));
            compareRow(stored + change, model.cmdById(2)->param(key::data).toString(), first);
            compareRow(stored + change, model.cmdById(6)->param(key::data).toString(), second);
            compareRow(stored + change, model.cmdById(3)->param(key::data).toString(), QString("AABBCC"));
            if (change != unreadableChip)
                return;
            // Choosing the chip that the registers were made for leaves them as they are.
            model.setCmdParam(1, commandOf(chip, 0));
            QCOMPARE(model.cmdById(2)->param(key::data).toString(), stored);
        };
        row("AABB", "", "AABB", "AABB");
        row("AA BB", "", "AA BB", "AA BB"); // blanks do not count
        row("", "", "0102", "0102");
        row("AABBCC", "", "AABBCC", "AABBCC"); // nothing else is written in its place
        row("AABB", longChip, "050607", "AABB");
        row("AABB", otherChip, "0304", "AABB");
        row("AABB", unreadableChip, "AABB", "AABB");
    }

    void workersAndEditsSideBySide()
    {
        const int before = FakeDevice::alive;
        QStringList commands{sim, chip};
        for (int i = 0; i < 40; ++i)
            commands += {"erase", "counter"};
        Project project(Lists{commands, commands, commands});
        TDataPrj& model = project.model;
        model.bindAll();
        std::atomic<bool> stop{false};
        std::atomic<int> steps{0};
        const auto work = [&](int cfg) {
            for (int id = -1; !stop;) {
                const TRunStep step = model.nextStep(cfg, id);
                id = step.state == TRunStep::State::Found ? step.data.value(key::id_cmd).toInt() : -1;
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
        for (int round = 0; timer.elapsed() < 400; ++round) {
            model.moveCmd(model.cmdIdAt(round % model.cmdCount()), 1);
            const int added = model.addCmd(commandOf("erase", round % 3), round % 50);
            model.setCmdParam(1, commandOf(round % 2 ? chip : otherChip, 0));
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
        // What was replaced has lived on for the workers.
        QVERIFY(FakeDevice::alive > before + 8);
        model.clear();
        QCOMPARE(FakeDevice::alive, before);
    }

private:
    TestDir m_dir{TestDir::Empty};
};

QTEST_GUILESS_MAIN(TestModel)
#include "test_model.moc"
