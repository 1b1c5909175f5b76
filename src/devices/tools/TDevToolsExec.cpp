#include "devices/tools/TDevToolsExec.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "core/model/references.h"
#include "devices/tools/CalcCrc.h"
#include "devices/tools/run_process.h"
#include "link/lists/TProg.h"
#include "link/wire/TSerialPort.h"
#include "link/wire/bytes.h"
#include "link/wire/opcodes.h"
#include "misc/TNormCmdParam.h"
#include "misc/TParamReader.h"
#include "settings/TAppData.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <limits>

namespace {

constexpr int longestProcess = 30000;  // ms
constexpr int shortestStoppable = 500; // ms
constexpr int pausePoll = 100;         // ms

constexpr TParamReader param("devices/TDevToolsExec");

void processEvents()
{
    QCoreApplication::processEvents();
}

/// What the log says of a program that did not do its job.
QString processText(const QString& line, const TProcessEnd& end)
{
    switch (end.kind) {
    case TProcessEnd::Kind::NotStarted:
        return langText(Text::ProcessNotStarted).arg(line, end.reason);
    case TProcessEnd::Kind::Code:
        return langText(Text::ProcessCode).arg(line, QString::number(end.code));
    case TProcessEnd::Kind::Crashed:
        return langText(Text::ProcessCrashed).arg(line);
    case TProcessEnd::Kind::GivenUp:
        return langText(Text::ProcessGivenUp).arg(line, QString::number(longestProcess / 1000));
    case TProcessEnd::Kind::Stopped:
        return langText(Text::ProcessStopped).arg(line);
    case TProcessEnd::Kind::Good:
        break;
    }
    return {};
}

/// Milliseconds left, 0 when the time is over. Sleeps a little, since the loops around it would
/// otherwise keep a core busy.
qint64 timeLeft(const QTimer& timer)
{
    const qint64 left = qMax(0, timer.remainingTime());
    if (left > 0)
        QThread::msleep(static_cast<unsigned long>(qMin<qint64>(left, 10)));
    return left;
}

void startOnce(QTimer& timer, qint64 ms)
{
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    timer.start(static_cast<int>(std::clamp<qint64>(ms, 0, std::numeric_limits<int>::max())));
}

} // namespace

TDevToolsExec::TDevToolsExec(const TData& data)
    : IDeviceExec(data)
{
}

struct TDevToolsExec::Routine
{
    QLatin1String word;
    bool (TDevToolsExec::*run)(Run&);
};

bool TDevToolsExec::execute(TSerialPort* port, bool& exit, int& cur_cfg, int& cur_cmd)
{
    static constexpr Routine routines[] = {
#define VM_TOOL(word, Name, title, reference) {cmd::word, &TDevToolsExec::run##Name},
#include "base/tools.def"
    };
    Run run{port, exit, cur_cfg, cur_cmd};
    const QString word = param(m_cmdData, key::cmd).toString();
    for (const Routine& routine : routines) {
        if (word == routine.word)
            return (this->*routine.run)(run);
    }
    return false;
}

void TDevToolsExec::slotPauseReset()
{
    m_pause = false;
}

bool TDevToolsExec::runProcess(Run&)
{
    const QString line = param(m_cmdData, key::file).toString();
    const bool mustSucceed = isFlagSet(m_cmdData.value(key::must_succeed));
    // What may fail without harm is left to its own end, also by a stop.
    TProcessStop stop;
    if (mustSucceed) {
        stop = [this] {
            processEvents();
            return m_stopRequested;
        };
    }
    const TProcessEnd end = runCommandLine(line, longestProcess, stop, this);
    if (end.kind == TProcessEnd::Kind::Good)
        return true;
    const QString told = processText(line, end);
    if (mustSucceed && end.kind != TProcessEnd::Kind::Stopped)
        return fail(told);
    emit signalEventText(ceWork, told);
    return true;
}

bool TDevToolsExec::runJamp(Run& run)
{
    const int oldCfg = run.cur_cfg;
    bool found = false;
    project().locked([&] {
        const TDataCmd* command = project().cmdById(run.cur_cmd);
        if (!command)
            return;
        run.cur_cmd = referenceId(command->param(key::to_cmd));
        const TDataCmd* target = project().cmdById(run.cur_cmd);
        if (!target)
            return;
        found = true;
        run.cur_cfg = target->cfgId();
        // The run goes on behind cur_cmd, so the command in front of the target is wanted.
        const int before = project().indexCmd(run.cur_cmd) - 1;
        const TDataCmd* previous = before < 0 ? nullptr : project().cmdAt(before);
        run.cur_cmd = previous && previous->cfgId() == run.cur_cfg ? previous->id() : -1;
    });
    if (found && run.cur_cfg != oldCfg)
        emit signalEventText(
            ceWork,
            QStringLiteral("\n--> %1 \"%2\"").arg(langText(Text::JumpToCfg), project().cfgName(run.cur_cfg)));
    return found;
}

TDevToolsExec::Count TDevToolsExec::countRound(qint64& value, qint64 limit, qint32 delta)
{
    constexpr qint64 greatest = std::numeric_limits<qint32>::max();
    const bool down = delta < 0;
    if (down ? value < 1 : value >= greatest)
        return Count::OutOfRange;
    if (!down && limit == 0)
        limit = greatest;
    const bool arrived = down ? value <= limit : value >= limit;
    if (arrived)
        return value < 0 ? Count::OutOfRange : Count::Arrived;
    const qint64 next = value + delta;
    if (next < 0 || next > greatest)
        return Count::OutOfRange;
    value = next;
    return (down ? next > limit : next < limit) ? Count::GoesOn : Count::Arrived;
}

bool TDevToolsExec::runCounter(Run& run)
{
    const int id = param(m_cmdData, key::id_cmd).toInt();
    bool found = false;
    Count count = Count::OutOfRange;
    // In one step: a value typed between the reading and the storing would be lost.
    project().locked([&] {
        const TDataCmd* command = project().cmdById(id);
        if (!command)
            return;
        found = true;
        // The value of the model, not of this command's copy: it changes from round to round.
        qint64 value = command->param(key::value).toLongLong();
        count =
            countRound(value, command->param(key::limit).toLongLong(), command->param(key::delta).toInt());
        if (count != Count::OutOfRange)
            project().setCmdParam(id, {{key::id_cmd, id}, {key::value, static_cast<int>(value)}});
    });
    if (!found)
        return false;
    if (count == Count::OutOfRange)
        return fail(langText(Text::CounterOutOfRange));
    if (count == Count::Arrived)
        run.exit = true;
    return true;
}

bool TDevToolsExec::runDelay(Run&)
{
    const qint64 ms = param(m_cmdData, key::value).toLongLong();
    if (ms < shortestStoppable)
        waitShort(ms);
    else
        waitLong(ms);
    processEvents();
    emit signalEventProc(0);
    return true;
}

void TDevToolsExec::waitShort(qint64 ms)
{
    QTimer timer;
    startOnce(timer, ms);
    processEvents();
    while (ms >= 1 && timeLeft(timer) >= 1)
        processEvents();
}

void TDevToolsExec::waitLong(qint64 ms)
{
    QTimer timer;
    startOnce(timer, ms);
    qint64 sent = 0;
    for (;;) {
        processEvents();
        const qint64 left = timeLeft(timer);
        processEvents();
        if (m_stopRequested)
            return;
        const qint64 percent = (ms - left) * 100 / ms;
        if (percent >= 1 && percent != sent) {
            sent = percent;
            processEvents();
            emit signalEventProc(static_cast<int>(percent));
            processEvents();
        }
        if (left < 1)
            return;
    }
}

bool TDevToolsExec::runPause(Run&)
{
    // Set before anybody hears of the pause: whoever resumes it at once would otherwise be lost.
    m_pause = true;
    emit signalPauseFromCmd(param(m_cmdData, key::id_cfg).toInt());
    processEvents();
    emit signalEventText(ceWork, langText(Text::Pausing));
    while (m_pause && !m_stopRequested) {
        QThread::msleep(pausePoll);
        processEvents();
    }
    return true;
}

bool TDevToolsExec::runStop(Run& run)
{
    run.exit = true;
    return true;
}

bool TDevToolsExec::runExecute(Run&)
{
    const int cfg = referenceId(param(m_cmdData, key::cfg));
    if (!project().cfgById(cfg))
        return fail(langText(Text::CfgMissing));
    emit signalExecuteFromCmd(cfg);
    return true;
}

bool TDevToolsExec::runSetProg(Run& run)
{
    if (run.port->isOpen())
        run.port->close();
    const TBinding bound = project().binding(param(m_cmdData, key::id_cmd).toInt());
    if (!bound)
        return false;
    const TProg* prog = bound.prog;
    if (!prog)
        return fail(langText(Text::ProgDescriptionMissing));
    int interfaceId = 0;
    if (!openPort(run.port, *prog) || !identify(run.port, interfaceId))
        return false;
    const int wanted = prog->interfaceId() & 0xFFFF;
    return wanted == 0 || wanted == interfaceId || fail(langText(Text::ProgMismatch));
}

bool TDevToolsExec::openPort(TSerialPort* port, const TProg& prog)
{
    const QString alias = param(m_cmdData, key::prog).toString();
    QString name = param(m_cmdData, key::alt_port).toString();
    if (!param(m_cmdData, key::alt_enabled).toBool())
        project().locked([&] { name = appData().progNames.record(alias).port; });
    if (!port->open(name, QIODevice::ReadWrite))
        return fail(QStringLiteral("Port %1: %2").arg(name, port->errorString()));
    int baudRate = 0;
    int dataBits = 0;
    int stopBits = 0;
    int timeout = 0;
    QString parity;
    QString flowControl;
    quint16 maxData = 0;
    prog.portParams(baudRate, dataBits, parity, stopBits, flowControl, timeout);
    prog.maxData(maxData);
    // What a port refuses stays as it is: a pseudo-terminal, for instance, knows no parity.
    port->setBaudRate(baudRate);
    port->setDataBits(dataBits);
    port->setParity(parity);
    port->setStopBits(stopBits);
    port->setFlowControl(flowControl);
    port->setTimeout(static_cast<quint32>(qMax(0, timeout)));
    port->setMaxData(maxData);
    return true;
}

bool TDevToolsExec::identify(TSerialPort* port, int& interfaceId)
{
    QByteArray reply;
    if (!sendChecked(port, opcode::readInterface, reply))
        return false;
    interfaceId = wordAt(reply, 0);
    reply.clear();
    if (!sendChecked(port, opcode::readName, reply))
        return false;
    emit signalEventText(ceResult, QString::fromUtf8(reply));
    return true;
}

bool TDevToolsExec::runCalcCRC(Run&)
{
    CalcCrc calc(m_cmdData);
    if (!calc.open())
        return fail(calc.errorText());
    TProgress progress;
    const bool good = calc.run([&](qint64 pos, qint64 last) { return reportProgress(progress, pos, last); });
    emit signalEventText(ceResult, calc.resultText());
    if (!good)
        return fail(calc.errorText());
    for (const QString& remark : calc.remarks())
        emit signalEventText(ceWork, remark);
    return calc.close();
}
