#include "TCatalogue.h"
#include "TImage.h"
#include "TOptions.h"
#include "TProgrammer.h"
#include "TPseudoTerminal.h"
#include "TSimulator.h"
#include "TTrace.h"

#include <array>
#include <climits>
#include <csignal>
#include <cstdio>
#include <string>
#include <unistd.h>

namespace {

constexpr int exitGood = 0;
constexpr int exitFailed = 1;
constexpr int exitUsage = 2;

volatile std::sig_atomic_t stopSignal = 0;

void onSignal(int /*number*/)
{
    stopSignal = 1;
}

/// The signals that end the program arrive only while it sleeps, so that no frame is left half done. The
/// result is the mask for that time.
sigset_t catchSignals()
{
    sigset_t ending;
    sigemptyset(&ending);
    struct sigaction action = {};
    action.sa_handler = onSignal;
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&ending, number);
        sigaction(number, &action, nullptr);
    }
    sigset_t before;
    sigprocmask(SIG_BLOCK, &ending, &before);
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        sigdelset(&before, number);
    std::signal(SIGPIPE, SIG_IGN);
    return before;
}

std::string homeFolder()
{
    std::array<char, PATH_MAX> path{};
    const ssize_t size = readlink("/proc/self/exe", path.data(), path.size());
    const std::string executable(path.data(), size < 0 ? 0 : std::size_t(size));
    const std::size_t slash = executable.rfind('/');
    return slash == std::string::npos ? "." : executable.substr(0, slash);
}

int fail(const std::string& error)
{
    std::fprintf(stderr, "velmarkion-sim: %s\n", error.c_str());
    return exitFailed;
}

int work(const TOptions& options)
{
    TCatalogue catalogue(options.devices);
    TProgrammer programmer(options, catalogue);
    TPseudoTerminal terminal;
    TTrace trace;
    const TImage image(options.image);
    std::string error;
    if (!programmer.insertChip(error))
        return fail(error);
    if (!options.image.empty() && !image.load(*programmer.mainMemory(), error))
        return fail(error);
    if (!options.trace.empty() && !trace.open(options.trace))
        return fail("cannot write the trace " + options.trace);
    // Only now: a file above may be a pipe that waits for its other end, which a signal must still end.
    const sigset_t waiting = catchSignals();
    if (!terminal.open(error) || !terminal.makeLink(options.port, error))
        return fail(error);
    std::printf("ready %s\n", options.port.c_str());
    std::fflush(stdout);

    TSimulator simulator(options, programmer, terminal, trace);
    const bool sound = simulator.run(stopSignal, waiting);
    terminal.close();
    if (!options.image.empty() && !image.save(*programmer.mainMemory(), error))
        return fail(error);
    return sound ? exitGood : fail("the line broke");
}

} // namespace

int main(int argc, char** argv)
{
    TOptions options;
    std::string error;
    if (!options.parse(std::vector<std::string>(argv + 1, argv + argc), homeFolder(), error)) {
        std::fprintf(stderr, "velmarkion-sim: %s\nTry: velmarkion-sim --help\n", error.c_str());
        return exitUsage;
    }
    if (options.help) {
        std::fputs(TOptions::helpText().c_str(), stdout);
        return exitGood;
    }
    return work(options);
}
