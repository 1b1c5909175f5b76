// How opening, binding, saving and running through a project grow with the number of its commands. Opening
// ten times the commands takes at most twelve times as long. The parts alone are for comparison: a thousand
// commands fit into a processor's cache and ten thousand do not, which a short loop feels most. What counts
// is this process's own work, the least of many rounds; a round does ten small projects and one large one, so
// that both take about as long and whatever else the machine does meets both.

#include "base/keys.h"
#include "core/files/TCtrlProject.h"
#include "core/model/TDataPrj.h"
#include "measure.h"
#include "settings/TAppData.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>

namespace {

constexpr int small = 1000;
constexpr int large = 10 * small;
constexpr double mostRatio = 12.0;
constexpr int rounds = 25;

/// What is measured; prepared before each time by what is not.
struct TPart
{
    const char* name;
    std::function<void(const QString& file)> prepare;
    std::function<void(const QString& file)> work;
};

void open(const QString& file)
{
    TCtrlProject ctrl;
    if (ctrl.open(file, project()) != 0)
        qFatal("%s", qPrintable(ctrl.errorText()));
}

void save(const QString& file)
{
    TCtrlProject ctrl;
    if (!ctrl.save(file, project()))
        qFatal("%s", qPrintable(ctrl.errorText()));
}

/// One configuration as a user would write it, made long: chips, files, registers, loops.
QString writeProject(const QTemporaryDir& dir, int count)
{
    TDataPrj& model = project();
    model.reset();
    const int cfg = model.addCfg(QStringLiteral("Config"), QString(), -1);
    const QList<TData> pattern{
        {{key::cmd, QString(cmd::set_prog)}, {key::prog, "Simulator"}},
        {{key::cmd, QString(cmd::set_device)},
         {key::device, "W25Q64"},
         {key::file, "spi-flash/W25Q64FV.dev"}},
        {{key::cmd, QString(cmd::file_write)},
         {key::file, "image.hex"},
         {key::format, "hex"},
         {key::addr_file, 0},
         {key::addr_device, 0},
         {key::count, 90112}},
        {{key::cmd, QString(cmd::status_reg_write)}, {key::data, "000000"}},
        {{key::cmd, QString(cmd::delay)}, {key::value, 100}},
        {{key::cmd, QString(cmd::jamp)}, {key::to_cmd, 0}},
    };
    for (int i = 0; i < count; ++i) {
        // Two commands choose programmer and chip for the whole configuration, the others repeat.
        TData data = pattern.at(i < 2 ? i : 2 + i % (pattern.size() - 2));
        data.insert(key::id_cfg, cfg);
        data.insert(key::status, 1);
        model.addCmd(data, -1);
    }
    QString file = dir.filePath(QStringLiteral("%1.prj").arg(count));
    save(file);
    return file;
}

/// Seconds of the work once.
double seconds(const TPart& part, const QString& file, int times)
{
    double sum = 0;
    for (int i = 0; i < times; ++i) {
        part.prepare(file);
        sum += cpuSecondsOf([&] { part.work(file); });
    }
    return sum / times;
}

double report(const TPart& part, const QString& smallFile, const QString& largeFile)
{
    double ofSmall = std::numeric_limits<double>::max();
    double ofLarge = ofSmall;
    for (int i = 0; i < rounds; ++i) {
        ofSmall = std::min(ofSmall, seconds(part, smallFile, large / small));
        ofLarge = std::min(ofLarge, seconds(part, largeFile, 1));
    }
    std::printf("%-20s %6d commands %8.2f ms %8d commands %8.2f ms   ratio %5.2f\n", part.name, small,
                ofSmall * 1e3, large, ofLarge * 1e3, ofLarge / ofSmall);
    return ofLarge / ofSmall;
}

/// Every command of the running configuration in turn, as a worker asks for them.
void walkThrough()
{
    for (TRunStep step = project().nextStep(0, -1); step.state == TRunStep::State::Found;)
        step = project().nextStep(0, step.data.value(key::id_cmd).toInt());
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    TAppData& app = appData();
    app.PathDevices = QStringLiteral(VM_DATA_DIR "/devices");
    app.PathProgs = QStringLiteral(VM_DATA_DIR "/progs");
    app.progTypes.append(QStringLiteral("Simulator"), QStringLiteral("simulator.cfg"));
    app.progNames.append(QStringLiteral("Simulator"), true, QStringLiteral("sim"),
                         QStringLiteral("Simulator"));

    const QTemporaryDir dir;
    const QString smallFile = writeProject(dir, small);
    const QString largeFile = writeProject(dir, large);
    open(largeFile);
    if (project().hasInvalidDev(0))
        qFatal("the project must bind");
    const auto close = [](const QString&) { project().reset(); };
    const double opening = report({"open (load, bind)", close, open}, smallFile, largeFile);
    report({"close", open, close}, smallFile, largeFile);
    report({"bind", open, [](const QString&) { project().bindAll(); }}, smallFile, largeFile);
    report({"save", open, save}, smallFile, largeFile);
    report({"step through", open, [](const QString&) { walkThrough(); }}, smallFile, largeFile);
    std::printf("opening grows by %.2f, at most %.0f\n", opening, mostRatio);
    return opening <= mostRatio ? 0 : 1;
}
