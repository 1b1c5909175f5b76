#include "exec/TExec.h"

#include "base/TCmdCode.h"
#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/TDataPrj.h"
#include "devices/prog/prog_link.h"
#include "devices/shared/IDeviceExec.h"
#include "link/wire/TSerialPort.h"

#include <QCoreApplication>

#include <memory>

/// What one run holds from its first to its last step. The port is closed until a set_prog opens it.
struct TExec::Run
{
    TSerialPort port;
    bool exit = false;
    int curCfg = -1;
    int curCmd = -1;
    bool leave = false;
    std::unique_ptr<IDeviceExec> exec;
    QString errorText;
};

TExec::TExec(int id_cfg)
    : m_idCfg(id_cfg)
{
}

TExec::~TExec()
{
    emit signalDestroy(m_idCfg);
}

void TExec::slotStart()
{
    {
        Run run;
        run.curCfg = m_idCfg;
        run.port.setUser(project().cfgName(m_idCfg));
        finish(run, runCommands(run));
    }
    emit signalFinished();
}

void TExec::slotStop(int id_cfg)
{
    if (id_cfg != m_idCfg)
        return;
    m_stop = true;
    emit signalStop();
}

void TExec::slotPauseReset(int id_cfg)
{
    if (id_cfg == m_idCfg)
        emit signalPauseReset();
}

bool TExec::runCommands(Run& run)
{
    while (!run.exit && !m_stop) {
        const TRunStep step = project().nextStep(run.curCfg, run.curCmd);
        if (step.state == TRunStep::State::End)
            return true;
        if (step.state == TRunStep::State::Gone) {
            run.errorText = langText(Text::RunningCmdDeleted);
            return false;
        }
        if (!runCommand(run, step))
            return false;
    }
    return true;
}

bool TExec::runCommand(Run& run, const TRunStep& step)
{
    const int id = step.data.value(key::id_cmd).toInt();
    run.curCmd = id;
    const QString word = step.data.value(key::cmd).toString();
    if (word == cmd::set_prog && run.port.isOpen() && !leaveProgrammer(run))
        return false;

    run.exec.reset();
    // A command without a chip before it has no class: it still shows its line before it fails.
    QString title = cmdCode().name(word);
    QString params;
    if (step.device) {
        run.exec.reset(step.device->createExec(step.data));
        title = step.device->commandTitle(step.data);
        params = step.device->beginText(step.data);
    }
    QCoreApplication::processEvents();
    emit signalEventText(ceCmdBegin, title, params);
    QCoreApplication::processEvents();

    if (reportInvalid(run, step, title))
        return false;
    if (!run.exec)
        return false;
    connectExec(run.exec.get(), word);
    // The log handles the user's clicks while it shows the line, so this is where a stop often arrives.
    if (m_stop)
        run.exec->slotStop();
    run.leave = word == cmd::leave;

    QCoreApplication::processEvents();
    bool ok = run.exec->execute(&run.port, run.exit, run.curCfg, run.curCmd);
    QCoreApplication::processEvents();
    if (ok && word == cmd::set_prog && run.port.isOpen() && !progSetStatus(&run.port, progBusy)) {
        run.errorText = run.port.errorString();
        ok = false;
    }
    // An executor that does not find its command has no reason to give.
    if (!ok && run.exec->errorText().isEmpty() && run.errorText.isEmpty() && project().indexCmd(id) < 0)
        run.errorText = langText(Text::RunningCmdDeleted);
    emit signalEventProc(0);
    QCoreApplication::processEvents();
    return ok;
}

bool TExec::leaveProgrammer(Run& run)
{
    if (!closeLink(run))
        return false;
    if (!progSetStatus(&run.port, progIdle)) {
        run.errorText = run.port.errorString();
        return false;
    }
    run.port.close();
    return true;
}

bool TExec::reportInvalid(Run& run, const TRunStep& step, const QString& title)
{
    if (!step.validDev)
        run.errorText = langText(Text::CmdUnfit).arg(title);
    else if (!step.validParam)
        run.errorText = langText(Text::CmdWrongParams).arg(title);
    else
        return false;
    return true;
}

bool TExec::closeLink(Run& run)
{
    if (progCloseLink(&run.port))
        return true;
    if (run.errorText.isEmpty())
        run.errorText = langText(Text::EndNotConfirmed).arg(run.port.errorString());
    return false;
}

void TExec::connectExec(IDeviceExec* exec, const QString& word)
{
    connect(exec, &IDeviceExec::signalEventText, this, &TExec::signalEventText);
    connect(exec, &IDeviceExec::signalEventProc, this, &TExec::signalEventProc);
    connect(this, &TExec::signalStop, exec, &IDeviceExec::slotStop);
    // These two are signals of the executors that have such commands, not of their base class.
    if (word == cmd::execute || word == cmd::auto_detect)
        connect(exec, SIGNAL(signalExecuteFromCmd(int)), this, SIGNAL(signalExecuteFromCmd(int)));
    if (word == cmd::pause) {
        // After a jump the command stands in another configuration than the one that was started, and
        // only the started one has a run to resume.
        connect(exec, SIGNAL(signalPauseFromCmd(int)), this, SLOT(slotPauseBegun()));
        connect(this, SIGNAL(signalPauseReset()), exec, SLOT(slotPauseReset()));
    }
}

void TExec::slotPauseBegun()
{
    emit signalPauseFromCmd(m_idCfg);
}

void TExec::finish(Run& run, bool result)
{
    if (!result && run.errorText.isEmpty() && run.exec)
        run.errorText = run.exec->errorText();

    bool closing = result;
    if (!run.leave && run.exec && run.port.isOpen() && !run.port.isLinkFailed())
        closing = closeLink(run) && result;

    if (!closing) {
        if (run.port.isOpen() && !run.port.isLinkFailed())
            (void)progSetStatus(&run.port, progFailure);
        emit signalEventText(ceFailed, run.errorText, QString());
    } else {
        if (run.port.isOpen())
            (void)progSetStatus(&run.port, progIdle);
        if (m_stop)
            emit signalStopped();
        emit signalEventText(ceSuccess, langText(m_stop ? Text::StoppedByUser : Text::Done), QString());
    }

    if (run.port.isOpen())
        run.port.close();
    run.exec.reset();
    emit signalStatusFromCmd(m_idCfg, result);
}
