#include "console/TInterrupt.h"

#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr time_t sameWishSeconds = 2;

int pipeEnds[2] = {-1, -1};
/// Set by whichever thread the system gives the signal to; such an atomic is allowed in a handler.
std::atomic<time_t> firstTime{0};
static_assert(std::atomic<time_t>::is_always_lock_free);

// Only calls that are allowed inside a handler of signals.
void handle(int)
{
    const int savedErrno = errno;
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    time_t first = 0;
    if (firstTime.compare_exchange_strong(first, now.tv_sec)) {
        const char byte = 1;
        // Full is impossible: there is one byte in the life of the process.
        [[maybe_unused]] const ssize_t written = write(pipeEnds[1], &byte, 1);
    } else if (now.tv_sec - first > sameWishSeconds) {
        _exit(TInterrupt::exitCode);
    }
    errno = savedErrno;
}

void install(int number)
{
    struct sigaction action
    {
    };
    action.sa_handler = handle;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
}

bool isIgnored(int number)
{
    struct sigaction action
    {
    };
    sigaction(number, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

} // namespace

TInterrupt::TInterrupt()
{
    if (pipeEnds[0] < 0 && pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TInterrupt::slotReadable);
    install(SIGINT);
    install(SIGTERM);
    // A run that was started to outlive its terminal stays so.
    if (!isIgnored(SIGHUP))
        install(SIGHUP);
}

TInterrupt::~TInterrupt() = default;

void TInterrupt::slotReadable()
{
    char byte = 0;
    if (read(pipeEnds[0], &byte, 1) == 1)
        emit signalInterrupted();
}
