// How opening, binding, saving and running through a project grow with the number of its commands. Opening
// ten times the commands takes at most twelve times as long. The parts alone are for comparison: a thousand
// commands fit into a processor's cache and ten thousand do not, which a short loop feels most.

#include "core/TAppData.h"
#include "core/TCtrlProject.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>

namespace {

constexpr int small = 1000;
constexpr int large = 10 * small;
constexpr double mostRatio = 12.0;
constexpr int rounds = 7;

struct Sizes
{
    double small;
    double large;
};

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
    const QString file = dir.filePath(QStringLiteral("%1.prj").arg(count));
    TCtrlProject ctrl;
    if (!ctrl.save(file, model))
        qFatal("%s", qPrintable(ctrl.errorText()));
    return file;
}

double secondsOf(const std::function<void()>& work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

/// Opens the file first, so that work finds its commands in the model.
double best(const QString& file, const std::function<void()>& work)
{
    TCtrlProject ctrl;
    if (ctrl.open(file, project()) != 0)
        qFatal("%s", qPrintable(ctrl.errorText()));
    double seconds = std::numeric_limits<double>::max();
    for (int i = 0; i < rounds; ++i)
        seconds = std::min(seconds, secondsOf(work));
    return seconds;
}

double report(const char* name, const Sizes& seconds)
{
    const double ratio = seconds.large / seconds.small;
    std::printf("%-20s %6d commands %8.2f ms %8d commands %8.2f ms   ratio %5.2f\n", name, small,
                seconds.small * 1e3, large, seconds.large * 1e3, ratio);
    return ratio;
}

/// Every command of the running configuration in turn, as a worker asks for them.
void walkThrough()
{
    for (TRunStep step = project().nextStep(0, -1); step.found;)
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
    const QString files[] = {writeProject(dir, small), writeProject(dir, large)};
    TCtrlProject ctrl;
    const auto measure = [&](const std::function<void(const QString&)>& work) {
        return Sizes{best(files[0], [&] { work(files[0]); }), best(files[1], [&] { work(files[1]); })};
    };
    const double opening = report("open (load, bind)", measure([&](const QString& file) {
                                      if (ctrl.open(file, project()) != 0)
                                          qFatal("%s", qPrintable(ctrl.errorText()));
                                  }));
    if (project().hasInvalidDev(0))
        qFatal("the project must bind");
    report("bind", measure([](const QString&) { project().bindAll(); }));
    report("save", measure([&](const QString& file) {
               if (!ctrl.save(file, project()))
                   qFatal("%s", qPrintable(ctrl.errorText()));
           }));
    report("step through", measure([](const QString&) { walkThrough(); }));
    std::printf("opening grows by %.2f, at most %.0f\n", opening, mostRatio);
    return opening <= mostRatio ? 0 : 1;
}
