#include "exec/TProgTask.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "devices/prog/prog_link.h"
#include "devices/tools/TDevToolsExec.h"
#include "link/lists/TProg.h"
#include "link/wire/TSerialPort.h"

#include <QCoreApplication>

namespace {

// A programmer that does not answer takes the whole time-out. A run that tells a line waits for this thread.
void letOthersGoOn()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

} // namespace

TProgTask::TProgTask(int id_cmd)
    : m_idCmd(id_cmd)
{
}

bool TProgTask::identify()
{
    emit signalEventText(ceCmdBegin, QStringLiteral("ID Prog"));
    TSerialPort port;
    bool done = openLink(port);
    if (done && !progSetStatus(&port, progIdentify)) {
        m_errorText = port.errorString();
        done = false;
    }
    port.close();
    return finish(done);
}

bool TProgTask::reset()
{
    const TBinding bound = project().binding(m_idCmd);
    if (!bound.family || !bound.prog)
        return finish(false);
    const int time = qAbs(bound.prog->resetDefault());
    const int duration = bound.family->deviceValue(key::reset_pol).toBool() ? time : -time;
    emit signalEventText(ceCmdBegin, QStringLiteral("Reset"), QStringLiteral("%1 ms").arg(duration));

    TSerialPort port;
    const bool done = openLink(port) && pulse(port, duration);
    port.close();
    return finish(done);
}

bool TProgTask::pulse(TSerialPort& port, int duration)
{
    if (progSetStatus(&port, progBusy) && progResetPulse(&port, duration) && progSetStatus(&port, progIdle))
        return true;
    m_errorText = port.errorString();
    if (!port.isLinkFailed())
        (void)progSetStatus(&port, progFailure);
    return false;
}

bool TProgTask::openLink(TSerialPort& port)
{
    const TDataCmd* setProg = project().cmdById(project().cmdIdAt(project().indexProgBefore(m_idCmd)));
    if (!setProg)
        return false;
    port.setUser(project().cfgName(setProg->cfgId()));
    port.setWhileWaiting(letOthersGoOn);
    TDevToolsExec exec(setProg->toData());
    connect(&exec, &TDevToolsExec::signalEventText, this, &TProgTask::signalEventText);
    bool exit = false;
    int cfg = setProg->cfgId();
    int cmd = setProg->id();
    if (exec.execute(&port, exit, cfg, cmd))
        return true;
    // The executor's text names the port too, and tells what the port cannot know.
    m_errorText = exec.errorText().isEmpty() ? port.errorString() : exec.errorText();
    return false;
}

bool TProgTask::finish(bool done)
{
    if (done)
        emit signalEventText(ceSuccess, langText(Text::Done));
    else
        emit signalEventText(ceFailed, m_errorText);
    return done;
}
