#include "app/startup.h"
#include "base/helpers.h"
#include "core/model/IFormFactory.h"
#include "core/model/TDataPrj.h"
#include "forms/TFormFactory.h"
#include "settings/TAppData.h"
#include "ui/main/TMainWindow.h"
#include "ui/panels/TTreeWidget.h"
#include "ui/panels/TWgtCmdList.h"
#include "ui/panels/TWgtLogExec.h"
#include "ui/panels/TWgtPrj.h"

#include <QAction>
#include <QApplication>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTextEdit>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>

namespace {

constexpr int configs = 20;
constexpr int commandsPerConfig = 500;
constexpr int nodes = 2000;
constexpr int linesOfLog = 20000;
constexpr int linesMeasured = 2000;
constexpr double mostMs = 100;     ///< for what a user does again and again
constexpr double mostLogRatio = 3; ///< for a part in which old lines go, once in 20,000

void settle()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

/// CPU time of the whole process, in ms.
double cpu()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return now.tv_sec * 1e3 + now.tv_nsec / 1e6;
}

/// CPU time of the work once, in ms.
template <typename Work> double measure(const char* name, int rounds, const Work& work)
{
    const double begin = cpu();
    for (int i = 0; i < rounds; ++i) {
        work(i);
        settle();
    }
    const double once = (cpu() - begin) / rounds;
    printf("%-40s %9.1f ms\n", name, once);
    return once;
}

void write(const QString& file, const QByteArray& bytes)
{
    QString error;
    if (!writeFileSafely(file, bytes, error))
        qFatal("%s", qPrintable(error));
}

QByteArray projectBytes()
{
    QByteArray text = "{\"version\": 1, \"configurations\": [";
    for (int cfg = 0; cfg < configs; ++cfg) {
        text += (cfg ? ",\n{" : "{");
        text += "\"name\": \"C" + QByteArray::number(cfg) + "\", \"description\": \"\", \"commands\": [\n";
        text += "{\"status\": \"1\", \"cmd\": \"set_prog\", \"prog\": \"Simulator\"},\n"
                "{\"status\": \"1\", \"cmd\": \"set_device\", \"clk\": \"4000000\", \"device\": \"W25Q64\", "
                "\"file\": \"spi-flash/W25Q64FV.dev\"}";
        for (int i = 2; i < commandsPerConfig; ++i) {
            text +=
                (i % 2)
                    ? ",\n{\"status\": \"1\", \"cmd\": \"delay\", \"value\": \"5\"}"
                    : ",\n{\"status\": \"1\", \"cmd\": \"erase_blocks\", \"begin\": \"0\", \"count\": \"1\", "
                      "\"size\": \"4096\"}";
        }
        text += "]}";
    }
    // An endless run that writes nothing but its log.
    text += ",\n{\"name\": \"Loop\", \"description\": \"\", \"commands\": [\n"
            "{\"status\": \"1\", \"cmd\": \"delay\", \"value\": \"0\"},\n"
            "{\"status\": \"1\", \"cmd\": \"jamp\", \"to_cmd\": \"" +
            QByteArray::number(configs * commandsPerConfig) + "\"}]}";
    return text + "]}\n";
}

QByteArray listBytes()
{
    QByteArray text = "{\"version\": 1, \"list\": [{\"parent\": 0, \"expand\": 1, \"name\": \"Large\", "
                      "\"file\": \"large.prj\"}";
    for (int i = 1; i < nodes; ++i) {
        text += ",\n{\"parent\": " + QByteArray::number(i % 10 ? i - i % 10 + (i < 10 ? 1 : 0) : 0) +
                ", \"expand\": 1, \"name\": \"Node " + QByteArray::number(i) + "\", \"file\": \"\"}";
    }
    return text + "]}\n";
}

void setUp(const QTemporaryDir& dir)
{
    registerMetaTypes();
    TAppData& app = appData();
    app.PathDevices = QStringLiteral(VM_DATA_DIR "/devices");
    app.PathProgs = QStringLiteral(VM_DATA_DIR "/progs");
    app.PathLanguage = QStringLiteral(VM_DATA_DIR "/language");
    app.PathProjects = dir.path();
    app.SaveSettingsApp = false;
    app.SaveSettingsWindow = false;
    app.ConfirmQuit = false;
    app.PrjListFile = QStringLiteral("large.lst");
    app.progTypes.append(QStringLiteral("Simulator"), QStringLiteral("simulator.cfg"));
    app.progNames.append(QStringLiteral("Simulator"), true, QStringLiteral("/nowhere"),
                         QStringLiteral("Simulator"));
    loadLanguage();
    write(dir.filePath(QStringLiteral("large.prj")), projectBytes());
    write(dir.filePath(QStringLiteral("large.lst")), listBytes());
}

/// CPU time in ms until the run has written so many lines more.
double linesOfRun(const TWgtLogExec& log, int count)
{
    const double begin = cpu();
    int written = 0;
    const auto counting = QObject::connect(log.edit(), &QTextEdit::textChanged, [&written] { ++written; });
    while (written < count)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QObject::disconnect(counting);
    return cpu() - begin;
}

/// How many times longer the lines of a long log take the run that writes it than the first ones.
double measureLog(TMainWindow& window)
{
    TWgtPrj& prj = *window.prj();
    prj.setCurrentIndex(configs);
    prj.setPage(TWgtConfig::PageExec);
    settle();
    TWgtLogExec& log = *prj.current()->logExec();
    window.runs()->start(prj.currentCfg());
    const double first = linesOfRun(log, linesMeasured);
    linesOfRun(log, linesOfLog - 2 * linesMeasured);
    const double last = linesOfRun(log, linesMeasured);
    while (log.edit()->document()->blockCount() < TWgtLogExec::maxLines - linesMeasured / 2)
        log.addEvent(ceText, QStringLiteral("line"), QString());
    const double full = linesOfRun(log, linesMeasured);
    printf("%d log lines of a run %26.1f ms, of %d the last %.1f ms, where old ones go %.1f ms\n",
           linesMeasured, first, linesOfLog, last, full);
    window.runs()->stopAll();
    while (!window.runs()->isIdle())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return std::max(last, full) / first;
}

} // namespace

/// What the window costs with 2000 nodes and 10,000 commands in 20 configurations: CPU time of one of each.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    TFormFactory forms;
    setFormFactory(&forms);
    const QTemporaryDir dir;
    setUp(dir);

    std::unique_ptr<TMainWindow> window;
    measure("open the list", 1, [&](int) {
        window = std::make_unique<TMainWindow>();
        window->show();
    });
    measure("open the project", 1, [&](int) { window->prjList()->selectByIndex(0); });
    TWgtPrj& prj = *window->prj();
    if (project().cmdCount() != configs * commandsPerConfig + 2 || prj.count() != configs + 1)
        qFatal("the project is not open");
    double longest = measure("filter the list", 20, [&](int i) {
        window->prjList()->slotFilterString(i % 2 ? QString() : QStringLiteral("99"));
    });
    const auto often = [&longest](const char* name, int rounds, const auto& work) {
        longest = std::max(longest, measure(name, rounds, work));
    };
    prj.focusTable();
    QTableWidget* table = prj.current()->cmdList()->table();
    often("select a row", 100, [&](int i) { prj.setCurrentRow(10 + i); });
    often("select a tab", configs, [&](int i) { prj.setCurrentIndex((i + 1) % configs); });
    often("check a box", 100, [&](int i) {
        QTableWidgetItem* box = table->item(100 + i, 0);
        box->setCheckState(box->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
    });
    prj.setCurrentRow(200);
    QApplication::setActiveWindow(window.get());
    prj.focusTable();
    settle();
    const int row = prj.currentRow();
    often("move a row", 20, [&](int) { window->action(maCmdMoveDown)->trigger(); });
    if (prj.currentRow() != row + 20)
        qFatal("the row has not moved");
    const double logRatio = measureLog(*window);
    project().clearChanged();
    printf("longest %.1f ms, at most %.0f; a long log %.2f times as long, at most %.0f\n", longest, mostMs,
           logRatio, mostLogRatio);
    return longest <= mostMs && logRatio <= mostLogRatio ? 0 : 1;
}
