#include "TSimulator.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace {

/// A request that stops half way is given up after so many waits without a byte, 500 ms, so that the next one
/// is understood. They are counted, not timed: while this process is held up the rest may have come.
constexpr unsigned mostSilentWaits = 10;
constexpr long silentWait = 50000000; ///< ns
/// When a host that has left an answer unread for longer than this makes room on the line, it is either back
/// or has thrown the rest away and asks anew; the question follows within the other time.
constexpr auto longBlock = std::chrono::milliseconds(100);
constexpr timespec questionTime = {0, 20000000};
constexpr std::uint8_t errorReply = 0xFF;
constexpr std::uint8_t instructionOpcode = 7;
constexpr std::uint8_t lastChipOpcode = 7;
constexpr std::uint8_t flippedBit = 0x20; ///< read by every routine that masks the answer
/// No sync among them.
constexpr std::uint8_t noiseBytes[] = {0x00, 0x55, 0xFF, 0x3F, 0x80};

void spoil(TAnswer& answer, std::uint8_t opcode, const TFrameFaults& faults)
{
    Bytes& payload = answer.payload;
    if (faults.echo && opcode == instructionOpcode && payload.size() > 1)
        payload[1] = std::uint8_t(~payload[1]);
    if (faults.flip && opcode <= lastChipOpcode && !payload.empty())
        payload.back() ^= flippedBit;
    if (faults.shortened && !payload.empty())
        payload.pop_back();
}

void spoil(Bytes& reply, const TFrameFaults& faults)
{
    if (faults.checksum)
        reply.back() = std::uint8_t(reply.back() + 1);
    if (faults.cut)
        reply.resize(reply.size() / 2);
    if (faults.noise)
        reply.insert(reply.begin(), std::begin(noiseBytes), std::end(noiseBytes));
}

Bytes replyOf(std::uint8_t opcode, const TAnswer& answer)
{
    if (answer.refused())
        return makeFrame(errorReply, {std::uint8_t(answer.error), std::uint8_t(answer.error >> 8)});
    return makeFrame(opcode, answer.payload);
}

timespec until(Clock::time_point when)
{
    const auto left = std::chrono::duration_cast<std::chrono::nanoseconds>(when - Clock::now()).count();
    const auto nanoseconds = std::max<std::chrono::nanoseconds::rep>(left, 0);
    return {time_t(nanoseconds / 1000000000), long(nanoseconds % 1000000000)};
}

} // namespace

TSimulator::TSimulator(const TOptions& given, TProgrammer& firmware, TPseudoTerminal& line,
                       TTrace& frameTrace)
    : options(given)
    , programmer(firmware)
    , terminal(line)
    , trace(frameTrace)
    , sender(given.baud)
{
}

bool TSimulator::run(const volatile std::sig_atomic_t& stop, const sigset_t& waiting)
{
    while (stop == 0 && !hungUp) {
        const Clock::time_point now = Clock::now();
        if (!sender.isIdle() && !sender.send(terminal.descriptor(), now))
            return false;
        TFrame frame;
        if (sender.isIdle() && receiver.take(frame)) {
            handle(frame);
            continue;
        }
        if (!sender.isIdle() || !readable) {
            sleep(waiting);
            continue;
        }
        receive(now);
    }
    return true;
}

void TSimulator::sleep(const sigset_t& waiting)
{
    const bool idle = sender.isIdle();
    pollfd line{terminal.descriptor(), 0, 0};
    if (idle)
        line.events = POLLIN;
    else if (sender.isBlocked())
        line.events = POLLIN | POLLOUT;
    const bool limited = idle ? receiver.isMidFrame() : !sender.isBlocked();
    const timespec limit = idle ? timespec{0, silentWait} : until(sender.nextDue());
    int woken = ppoll(&line, 1, limited ? &limit : nullptr, &waiting);
    if (woken > 0 && line.revents == POLLOUT && Clock::now() - sender.lastTaken() > longBlock) {
        line.events = POLLIN;
        woken = ppoll(&line, 1, &questionTime, &waiting);
    }
    readable = woken > 0 && (line.revents & POLLIN) != 0;
    if (readable && !idle) {
        // A host that sends again without taking the answer has given it up, and what it had begun.
        sender.drop();
        receiver.reset();
    }
    if (woken == 0 && idle && ++silentWaits >= mostSilentWaits)
        receiver.reset();
}

void TSimulator::receive(Clock::time_point now)
{
    static std::array<std::uint8_t, 65536> buffer;
    readable = false;
    const ssize_t got = read(terminal.descriptor(), buffer.data(), buffer.size());
    if (got <= 0)
        return;
    if (sender.wasDropped())
        terminal.dropUnread();
    silentWaits = 0;
    lineFree = std::max(lineFree, now) + sender.timeOf(std::size_t(got));
    receiver.feed(buffer.data(), std::size_t(got));
}

TAnswer TSimulator::answerTo(const TFrame& frame, const TFrameFaults& faults)
{
    if (faults.error >= 0)
        return {{}, faults.error, 0};
    if (!frame.sound)
        return TAnswer::refuse(ErrorCode::badChecksum);
    const Bytes payload = frame.payload();
    if (payload.size() > options.maxData)
        return TAnswer::refuse(ErrorCode::wrongLength);
    return programmer.answer(frame.command(), payload);
}

void TSimulator::handle(const TFrame& frame)
{
    frames++;
    trace.request(frame.raw);
    const TFrameFaults faults = options.faults.at(frames);
    if (faults.hangup) {
        hungUp = true;
        return;
    }
    TAnswer answer = answerTo(frame, faults);
    if (faults.silent)
        return;
    spoil(answer, frame.command(), faults);
    Bytes reply = replyOf(frame.command(), answer);
    spoil(reply, faults);
    trace.reply(reply);
    const auto busy =
        options.baud == 0 ? std::chrono::milliseconds(0) : std::chrono::milliseconds(answer.waitMs);
    sender.queue(std::move(reply), std::max(lineFree, Clock::now()) + busy);
}
