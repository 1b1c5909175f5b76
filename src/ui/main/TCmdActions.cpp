#include "base/TCmdCode.h"
#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "ui/TButtonAction.h"
#include "ui/dialogs/TDialogCmdSelector.h"
#include "ui/main/TMainWindow.h"
#include "ui/panels/TWgtCmdList.h"
#include "ui/panels/TWgtPrj.h"
#include "ui/window_helpers.h"

#include <QAction>

QString TMainWindow::cmdTitle(int id_cmd) const
{
    const TDataCmd* command = project().cmdById(id_cmd);
    return command ? cmdCode().name(command->cmd()) : QString();
}

TDialogCmdSelector* TMainWindow::cmdSelector() const
{
    return m_cmdSelector;
}

void TMainWindow::slotCmdSelector()
{
    if (m_cmdSelector) {
        delete m_cmdSelector;
    } else {
        m_cmdSelector = new TDialogCmdSelector(m_prj->currentCfg(), m_prj->currentCmd(), button(mbExecute));
        m_cmdSelector->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_cmdSelector, &QObject::destroyed, this, &TMainWindow::slotCmdSelectorClose);
        connect(m_cmdSelector, &TDialogCmdSelector::signalAddCmd, this, &TMainWindow::slotNewCmd);
        connect(m_prj, &TWgtPrj::signalSelectCmd, m_cmdSelector, &TDialogCmdSelector::slotSelectCmd);
        m_cmdSelector->showNormal();
    }
    action(maCmdSelector)->setChecked(!m_cmdSelector.isNull());
    button(mbCmdSelector)->setChecked(!m_cmdSelector.isNull());
}

void TMainWindow::slotCmdSelectorClose()
{
    m_cmdSelector.clear();
    action(maCmdSelector)->setChecked(false);
    button(mbCmdSelector)->setChecked(false);
}

void TMainWindow::slotNewCmd(const QString& cmd_code, bool cmd_state)
{
    TWgtConfig* tab = m_prj->current();
    // The selector stays usable while the window waits.
    if (!tab || isWaitingForRuns())
        return;
    const int id_cfg = tab->idCfg();
    const int current = m_prj->currentCmd();
    const int index = current < 0 ? project().cmdCount() : project().indexCmd(current) + 1;
    const TDataCmd* command = project().cmdById(current);
    IDevice* device = nullptr;
    if (TCmdCode::isTools(cmd_code))
        device = project().deviceFor(dev_class::tools, QString());
    else if (TCmdCode::isProg(cmd_code))
        device = project().deviceFor(dev_class::prog, QString());
    else if (command)
        device = command->family();
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
    refreshForms();
    m_prj->setCurrentRow(row);
    updateState();
}

void TMainWindow::insertAfterQuestion(bool isAsked, const QString& question, const QStringList& words)
{
    if (isAsked && !msgAsk(question, this))
        return;
    for (const QString& word : words)
        slotNewCmd(word, appData().CmdAddState);
}

void TMainWindow::slotCmdNewSetProgDevice()
{
    const QString question =
        langText(126).arg(cmdCode().name(cmd::set_prog), cmdCode().name(cmd::set_device));
    insertAfterQuestion(appData().ConfirmCmdInsertProgDevice, question, {cmd::set_prog, cmd::set_device});
}

void TMainWindow::slotCmdNewSetProg()
{
    insertAfterQuestion(appData().ConfirmCmdInsertProg, langText(127).arg(cmdCode().name(cmd::set_prog)),
                        {cmd::set_prog});
}

void TMainWindow::slotCmdNewSetDevice()
{
    insertAfterQuestion(appData().ConfirmCmdInsertDevice, langText(127).arg(cmdCode().name(cmd::set_device)),
                        {cmd::set_device});
}

void TMainWindow::slotCmdCopy()
{
    const TDataCmd* command = project().cmdById(m_prj->currentCmd());
    if (!command)
        return;
    m_cmdClip = {command->toData()};
    m_cmdClipOpening = m_opening;
    const QString title = cmdTitle(command->id());
    setPasteText(maCmdPaste, 37, title);
    report(langText(128).arg(title), TWgtStatusBar::Green);
    updateState();
}

void TMainWindow::slotCmdCopySelected()
{
    m_cmdClip.clear();
    m_cmdClipOpening = m_opening;
    for (const TDataCmd* command : project().cmdsOfCfg(m_prj->currentCfg())) {
        if (command->status())
            m_cmdClip.append(command->toData());
    }
    setPasteText(maCmdPaste, 37,
                 m_cmdClip.size() == 1 ? cmdCode().name(m_cmdClip.first().value(key::cmd).toString())
                                       : langText(468));
    report(langText(129), TWgtStatusBar::Green);
    updateState();
}

/// A copied command for a configuration. Ids of commands and configurations mean something only as long
/// as the project that it was copied from stays open.
TData TMainWindow::pasted(TData command, int id_cfg, int opening) const
{
    command.insert(key::id_cfg, id_cfg);
    if (opening == m_opening)
        return command;
    for (const QString& reference : {QString(key::to_cmd), QString(key::cfg)}) {
        if (command.contains(reference))
            command.insert(reference, -1);
    }
    if (command.contains(key::route))
        command.insert(key::route, QString());
    return command;
}

void TMainWindow::slotCmdPaste()
{
    const bool isOne = m_cmdClip.size() == 1;
    const QString title = cmdCode().name(m_cmdClip.value(0).value(key::cmd).toString());
    if (appData().ConfirmCmdPaste && !msgAsk(isOne ? langText(130).arg(title) : langText(131), this))
        return;
    const int id_cfg = m_prj->currentCfg();
    const int current = m_prj->currentCmd();
    const int row = m_prj->currentRow();
    int index = current < 0 ? 0 : project().indexCmd(current) + 1;
    for (const TData& command : qAsConst(m_cmdClip))
        index = project().indexCmd(project().addCmd(pasted(command, id_cfg, m_cmdClipOpening), index)) + 1;
    project().bindAll();
    rebuildTab(row + 1, true);
    report(isOne ? langText(132).arg(title) : langText(133), TWgtStatusBar::Green);
}

/// Fills the current tab anew and makes a row current, the last one if there is none of that number. A new
/// row is shown in any case; otherwise the nearest one that is shown is taken.
void TMainWindow::rebuildTab(int row, bool isNew)
{
    TWgtConfig* tab = m_prj->current();
    tab->fill();
    const int present = qMin(row, tab->cmdList()->rowCount() - 1);
    m_prj->setCurrentRow(isNew ? present : tab->cmdList()->firstShownRow(present));
    m_prj->refreshAll();
    refreshForms();
    showAfterDelete();
}

/// Without a current command nobody has told that the form is gone.
void TMainWindow::showAfterDelete()
{
    if (m_prj->currentCmd() < 0)
        emit m_prj->signalSelectCmd(m_prj->currentCfg(), -1);
    updateState();
}

void TMainWindow::slotCmdDeleteCur()
{
    const int id_cmd = m_prj->currentCmd();
    const int row = m_prj->currentRow();
    const QString title = cmdTitle(id_cmd);
    if (appData().ConfirmCmdDeleteCur && !msgAsk(langText(134).arg(title), this))
        return;
    project().removeCmd(id_cmd);
    project().bindAll();
    m_prj->current()->cmdList()->removeRow(row);
    m_prj->refreshAll();
    refreshForms();
    showAfterDelete();
    report(langText(135).arg(title), TWgtStatusBar::Green);
}

void TMainWindow::slotCmdDeleteSelected()
{
    const int id_cfg = m_prj->currentCfg();
    if (!project().hasEnabled(id_cfg)) {
        msgInfo(langText(136), this);
        return;
    }
    if (appData().ConfirmCmdDeleteSelected && !msgAsk(langText(137), this))
        return;
    removeCmdsIf([](const TDataCmd& command) { return command.status(); });
    report(langText(138), TWgtStatusBar::Green);
}

/// Deletes commands of the current configuration and shows the rest; the current row moves to what is left.
void TMainWindow::removeCmdsIf(const std::function<bool(const TDataCmd&)>& leaves)
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

void TMainWindow::slotCmdDeleteError()
{
    const int id_cfg = m_prj->currentCfg();
    const QString name = project().cfgName(id_cfg);
    const auto text = [&](int one) { return isOneCfg() ? langText(one) : langText(one + 1).arg(name); };
    if (!project().hasInvalidDev(id_cfg)) {
        msgInfo(text(139), this);
        return;
    }
    if (appData().ConfirmCmdDeleteError && !msgAsk(text(141), this))
        return;
    removeCmdsIf([](const TDataCmd& command) { return !command.validDev(); });
    report(text(143), TWgtStatusBar::Green);
}

void TMainWindow::slotCmdDeleteDev()
{
    const int index = project().indexProgDeviceBefore(m_prj->currentCmd());
    const TDataCmd* setDevice = project().cmdById(project().cmdIdAt(index));
    if (!setDevice) {
        msgInfo(langText(145).arg(cmdCode().name(cmd::set_device)), this);
        return;
    }
    const QString device = setDevice->param(key::device).toString();
    if (!project().dependsOnDevice(index)) {
        msgInfo(langText(146).arg(device), this);
        return;
    }
    if (appData().ConfirmCmdDeleteDev && !msgAsk(langText(147).arg(device), this))
        return;
    const int id_cmd = setDevice->id();
    project().removeDeviceCmds(id_cmd);
    project().bindAll();
    rebuildTab(project().rowInCfg(m_prj->currentCfg(), id_cmd));
    report(langText(148).arg(device), TWgtStatusBar::Green);
}

void TMainWindow::slotCmdDeleteAll()
{
    const int id_cfg = m_prj->currentCfg();
    const QString name = project().cfgName(id_cfg);
    const auto text = [&](int one) { return isOneCfg() ? langText(one) : langText(one + 1).arg(name); };
    if (appData().ConfirmCmdDeleteAll && !msgAsk(text(149), this))
        return;
    project().removeCmdsOfCfg(id_cfg);
    project().bindAll();
    rebuildTab(0);
    report(text(151), TWgtStatusBar::Green);
}

void TMainWindow::slotCmdCheckAll()
{
    setAllChecked(true);
}

void TMainWindow::slotCmdUcheckAll()
{
    setAllChecked(false);
}

void TMainWindow::setAllChecked(bool on)
{
    TWgtConfig* tab = m_prj->current();
    if (!tab)
        return;
    project().setCfgCmdStatus(tab->idCfg(), on);
    tab->cmdList()->setChecked(on);
}

void TMainWindow::slotCmdMoveUp()
{
    moveCmd(-1);
}

void TMainWindow::slotCmdMoveDown()
{
    moveCmd(1);
}

void TMainWindow::moveCmd(int delta)
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
    refreshForms();
    m_prj->refreshCfg(tab->idCfg());
    updateState();
}

void TMainWindow::slotCmdUncheckHide()
{
    appData().HideUncheckCmd = action(maCmdUncheckHide)->isChecked();
    m_prj->hideUnchecked(appData().HideUncheckCmd);
}
