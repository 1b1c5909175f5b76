#include "ui/main/TCmdActions.h"

#include "base/TCmdCode.h"
#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "ui/main/TCmdClipboard.h"
#include "ui/main/TMainPanels.h"
#include "ui/main/TPrjSession.h"
#include "ui/panels/TWgtCmdList.h"
#include "ui/panels/TWgtPrj.h"
#include "ui/window_helpers.h"

TCmdActions::TCmdActions(TMainPanels& panels, TPrjSession& session, TCmdClipboard& clipboard)
    : m_panels(panels)
    , m_session(session)
    , m_clipboard(clipboard)
    , m_prj(panels.prj())
{
}

QString TCmdActions::titleOf(int id_cmd) const
{
    const TDataCmd* command = project().cmdById(id_cmd);
    return command ? cmdCode().name(command->cmd()) : QString();
}

void TCmdActions::add(const QString& cmd_code, bool cmd_state)
{
    TWgtConfig* tab = m_prj->current();
    // The selector stays usable while the window waits.
    if (!tab || m_session.isWaitingForRuns())
        return;
    const int id_cfg = tab->idCfg();
    const int current = m_prj->currentCmd();
    const int index = current < 0 ? project().cmdCount() : project().indexCmd(current) + 1;
    IDevice* device = nullptr;
    if (TCmdCode::isTools(cmd_code))
        device = project().deviceFor(dev_class::tools, QString());
    else if (TCmdCode::isProg(cmd_code))
        device = project().deviceFor(dev_class::prog, QString());
    else
        device = project().binding(current).family;
    if (!device)
        return;
    TData fresh{
        {key::id_cfg, id_cfg}, {key::id_cmd, current}, {key::status, cmd_state}, {key::cmd, cmd_code}};
    device->setDefaultParams(fresh);
    const int id_cmd = project().addCmd(fresh, index);
    project().bindAll();
    const int row = project().rowInCfg(id_cfg, id_cmd);
    tab->cmdList()->insertRow(row, id_cmd);
    m_prj->refreshCfg(id_cfg);
    m_panels.refreshForms();
    m_prj->setCurrentRow(row);
    m_panels.updateState();
}

void TCmdActions::insertAfterQuestion(bool isAsked, const QString& question, const QStringList& words)
{
    if (isAsked && !msgAsk(question, m_panels.window()))
        return;
    for (const QString& word : words)
        add(word, appData().CmdAddState);
}

void TCmdActions::addSetProgDevice()
{
    const QString question =
        langText(Text::AskInsertTwoCmds).arg(cmdCode().name(cmd::set_prog), cmdCode().name(cmd::set_device));
    insertAfterQuestion(appData().ConfirmCmdInsertProgDevice, question, {cmd::set_prog, cmd::set_device});
}

void TCmdActions::addSetProg()
{
    insertAfterQuestion(appData().ConfirmCmdInsertProg,
                        langText(Text::AskInsertCmd).arg(cmdCode().name(cmd::set_prog)), {cmd::set_prog});
}

void TCmdActions::addSetDevice()
{
    insertAfterQuestion(appData().ConfirmCmdInsertDevice,
                        langText(Text::AskInsertCmd).arg(cmdCode().name(cmd::set_device)), {cmd::set_device});
}

void TCmdActions::copy()
{
    if (!m_clipboard.copyCmd(m_prj->currentCmd()))
        return;
    m_panels.report(langText(Text::CmdCopied).arg(m_clipboard.cmdTitle()), TWgtStatusBar::Green);
    m_panels.updateState();
}

void TCmdActions::copySelected()
{
    if (!project().hasEnabled(m_prj->currentCfg())) {
        msgInfo(langText(Text::NoCheckedCmds), m_panels.window());
        return;
    }
    m_clipboard.copyChecked(m_prj->currentCfg());
    m_panels.report(langText(Text::CheckedCmdsCopied), TWgtStatusBar::Green);
    m_panels.updateState();
}

void TCmdActions::paste()
{
    const bool isOne = m_clipboard.isOneCmd();
    const QString title = m_clipboard.cmdTitle();
    if (appData().ConfirmCmdPaste &&
        !msgAsk(isOne ? langText(Text::AskPasteCmd).arg(title) : langText(Text::AskPasteCmds),
                m_panels.window()))
        return;
    const int row = m_prj->currentRow();
    m_clipboard.pasteCmds(m_prj->currentCfg(), m_prj->currentCmd());
    rebuildTab(row + 1, true);
    m_panels.report(isOne ? langText(Text::CmdPasted).arg(title) : langText(Text::CmdsPasted),
                    TWgtStatusBar::Green);
}

/// Fills the current tab anew and makes a row current, the last one if there is none of that number. A new
/// row is shown in any case; otherwise the nearest one that is shown is taken.
void TCmdActions::rebuildTab(int row, bool isNew)
{
    TWgtConfig* tab = m_prj->current();
    tab->fill();
    const int present = qMin(row, tab->cmdList()->rowCount() - 1);
    m_prj->setCurrentRow(isNew ? present : tab->cmdList()->firstShownRow(present));
    m_prj->refreshAll();
    m_panels.refreshForms();
    showAfterDelete();
}

/// Without a current command nobody has told that the form is gone.
void TCmdActions::showAfterDelete()
{
    if (m_prj->currentCmd() < 0)
        emit m_prj->signalSelectCmd(m_prj->currentCfg(), -1);
    m_panels.updateState();
}

void TCmdActions::removeCurrent()
{
    const int id_cmd = m_prj->currentCmd();
    const int row = m_prj->currentRow();
    const QString title = titleOf(id_cmd);
    if (appData().ConfirmCmdDeleteCur && !msgAsk(langText(Text::AskDeleteCmd).arg(title), m_panels.window()))
        return;
    project().removeCmd(id_cmd);
    project().bindAll();
    m_prj->current()->cmdList()->removeRow(row);
    m_prj->refreshAll();
    m_panels.refreshForms();
    showAfterDelete();
    m_panels.report(langText(Text::CmdDeleted).arg(title), TWgtStatusBar::Green);
}

void TCmdActions::removeSelected()
{
    const int id_cfg = m_prj->currentCfg();
    if (!project().hasEnabled(id_cfg)) {
        msgInfo(langText(Text::NoCheckedCmds), m_panels.window());
        return;
    }
    if (appData().ConfirmCmdDeleteSelected &&
        !msgAsk(langText(Text::AskDeleteCheckedCmds), m_panels.window()))
        return;
    removeIf([](const TDataCmd& command) { return command.status(); });
    m_panels.report(langText(Text::CheckedCmdsDeleted), TWgtStatusBar::Green);
}

/// Deletes commands of the current configuration and shows the rest; the current row moves to what is left.
void TCmdActions::removeIf(const std::function<bool(const TDataCmd&)>& leaves)
{
    const QList<TDataCmd*> commands = project().cmdsOfCfg(m_prj->currentCfg());
    int row = m_prj->currentRow();
    for (int i = commands.size() - 1; i >= 0; --i) {
        if (!leaves(*commands.at(i)))
            continue;
        project().removeCmd(commands.at(i)->id());
        if (i < row)
            --row;
    }
    project().bindAll();
    rebuildTab(qMax(0, row));
}

void TCmdActions::removeFaulty()
{
    const int id_cfg = m_prj->currentCfg();
    const QString name = project().cfgName(id_cfg);
    const auto text = [&](Text one, Text ofCfg) {
        return m_panels.isOneCfg() ? langText(one) : langText(ofCfg).arg(name);
    };
    if (!project().hasInvalidDev(id_cfg)) {
        msgInfo(text(Text::NoInvalidCmds, Text::NoInvalidCmdsOfCfg), m_panels.window());
        return;
    }
    if (appData().ConfirmCmdDeleteError &&
        !msgAsk(text(Text::AskDeleteInvalidCmds, Text::AskDeleteInvalidCmdsOfCfg), m_panels.window()))
        return;
    removeIf([](const TDataCmd& command) { return !command.validDev(); });
    m_panels.report(text(Text::InvalidCmdsDeleted, Text::InvalidCmdsOfCfgDeleted), TWgtStatusBar::Green);
}

void TCmdActions::removeOfDevice()
{
    const int index = project().indexProgDeviceBefore(m_prj->currentCmd());
    const TDataCmd* setDevice = project().cmdById(project().cmdIdAt(index));
    if (!setDevice) {
        msgInfo(langText(Text::NoCmdAbove).arg(cmdCode().name(cmd::set_device)), m_panels.window());
        return;
    }
    const QString device = setDevice->param(key::device).toString();
    if (!project().dependsOnDevice(index)) {
        msgInfo(langText(Text::NoCmdsOfDevice).arg(device), m_panels.window());
        return;
    }
    if (appData().ConfirmCmdDeleteDev &&
        !msgAsk(langText(Text::AskDeleteCmdsOfDevice).arg(device), m_panels.window()))
        return;
    const int id_cmd = setDevice->id();
    project().removeDeviceCmds(id_cmd);
    project().bindAll();
    rebuildTab(project().rowInCfg(m_prj->currentCfg(), id_cmd));
    m_panels.report(langText(Text::CmdsOfDeviceDeleted).arg(device), TWgtStatusBar::Green);
}

void TCmdActions::removeAll()
{
    const int id_cfg = m_prj->currentCfg();
    const QString name = project().cfgName(id_cfg);
    const auto text = [&](Text one, Text ofCfg) {
        return m_panels.isOneCfg() ? langText(one) : langText(ofCfg).arg(name);
    };
    if (appData().ConfirmCmdDeleteAll &&
        !msgAsk(text(Text::AskDeleteAllCmds, Text::AskDeleteAllCmdsOfCfg), m_panels.window()))
        return;
    project().removeCmdsOfCfg(id_cfg);
    project().bindAll();
    rebuildTab(0);
    m_panels.report(text(Text::AllCmdsDeleted, Text::AllCmdsOfCfgDeleted), TWgtStatusBar::Green);
}

void TCmdActions::setAllChecked(bool on)
{
    TWgtConfig* tab = m_prj->current();
    if (!tab)
        return;
    project().setCfgCmdStatus(tab->idCfg(), on);
    tab->cmdList()->setChecked(on);
}

void TCmdActions::move(int delta)
{
    TWgtConfig* tab = m_prj->current();
    const int id_cmd = m_prj->currentCmd();
    const int row = m_prj->currentRow();
    if (!tab || row + delta < 0 || row + delta >= tab->cmdList()->rowCount())
        return;
    project().moveCmd(id_cmd, delta);
    if (project().rowInCfg(tab->idCfg(), id_cmd) == row)
        return;
    tab->cmdList()->moveRow(row, delta);
    m_panels.refreshForms();
    m_prj->refreshCfg(tab->idCfg());
    m_panels.updateState();
}

void TCmdActions::hideUnchecked(bool hide)
{
    appData().HideUncheckCmd = hide;
    m_prj->hideUnchecked(hide);
}
