#include "devices/tools/run_process.h"

#include "base/qt_versions.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#ifdef Q_OS_UNIX
#include <csignal>
#include <unistd.h>
#endif

namespace {

using Kind = TProcessEnd::Kind;

constexpr int stopPoll = 50;    // ms
constexpr int politeEnd = 2000; // ms
constexpr int forcedEnd = 1000; // ms

/// A program in a process group of its own: an interrupt typed on the terminal goes to us alone, and it is
/// the stop that ends the program.
class Program : public TPreparedProcess
{
public:
    explicit Program(QObject* parent)
        : TPreparedProcess(&ownGroup, parent)
    {
    }

    /// Both reach what the program has started too, as the commands of a shell.
    void askToEnd()
    {
        if (!signalGroup(false))
            terminate();
    }
    void forceToEnd()
    {
        if (!signalGroup(true))
            kill();
    }

private:
    static void ownGroup()
    {
#ifdef Q_OS_UNIX
        ::setpgid(0, 0);
#endif
    }

    bool signalGroup(bool force) const
    {
#ifdef Q_OS_UNIX
        // A number below 2 would mean other groups than that of the program.
        const qint64 id = processId();
        return id > 1 && ::kill(static_cast<pid_t>(-id), force ? SIGKILL : SIGTERM) == 0;
#else
        Q_UNUSED(force)
        return false;
#endif
    }
};

bool isOver(const QProcess& process)
{
    return process.state() == QProcess::NotRunning;
}

/// False when the program still runs. wasStopped tells whether it was ended by the stop.
bool waitForEnd(Program& process, int ms, const TProcessStop& stop, bool& wasStopped)
{
    if (!stop)
        return process.waitForFinished(ms) || isOver(process);
    QElapsedTimer clock;
    clock.start();
    while (!process.waitForFinished(stopPoll) && !isOver(process) && clock.elapsed() < ms) {
        wasStopped = stop() && !isOver(process);
        if (!wasStopped)
            continue;
        process.askToEnd();
        if (!process.waitForFinished(politeEnd) && !isOver(process)) {
            process.forceToEnd();
            process.waitForFinished(forcedEnd);
        }
        break;
    }
    return isOver(process);
}

TProcessEnd endOf(const QProcess& process)
{
    if (process.error() == QProcess::FailedToStart)
        return {Kind::NotStarted, 0, process.errorString()};
    if (process.exitStatus() != QProcess::NormalExit)
        return {Kind::Crashed, 0, {}};
    return {process.exitCode() == 0 ? Kind::Good : Kind::Code, process.exitCode(), {}};
}

} // namespace

TProcessEnd runCommandLine(const QString& line, int ms, const TProcessStop& stop, QObject* owner)
{
    QStringList arguments = QProcess::splitCommand(line);
    if (arguments.isEmpty())
        return {Kind::NotStarted, 0, QStringLiteral("-")};
    auto* process = new Program(owner);
    process->setWorkingDirectory(QCoreApplication::applicationDirPath());
    // A talkative program would block on a full pipe, or mix its text into ours.
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    const QString program = arguments.takeFirst();
    process->start(program, arguments, QIODevice::ReadWrite);
    bool wasStopped = false;
    if (waitForEnd(*process, ms, stop, wasStopped)) {
        TProcessEnd end = wasStopped ? TProcessEnd{Kind::Stopped, 0, {}} : endOf(*process);
        delete process;
        return end;
    }
    // A QProcess kills its program when it is destroyed, so it must outlive the command.
    process->setParent(nullptr);
    QObject::connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), process,
                     &QObject::deleteLater);
    process->moveToThread(QCoreApplication::instance()->thread());
    return {wasStopped ? Kind::Stopped : Kind::GivenUp, 0, {}};
}
