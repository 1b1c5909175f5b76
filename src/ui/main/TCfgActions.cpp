#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "ui/dialogs/TDialogCfgEdit.h"
#include "ui/main/TMainWindow.h"
#include "ui/panels/TWgtPrj.h"
#include "ui/window_helpers.h"

bool TMainWindow::isOneCfg() const
{
    return m_prj->count() == 1;
}

void TMainWindow::slotCfgNew()
{
    TDialogCfgEdit dialog(langText(117), QString(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const int id_cfg = project().addCfg(dialog.name(), QString(), m_prj->currentIndex() + 1);
    showNewCfg(id_cfg, -1);
    report(langText(118).arg(dialog.name()), TWgtStatusBar::Green);
}

/// Makes the tab of a new configuration, behind the current one, the current one.
void TMainWindow::showNewCfg(int id_cfg, int row)
{
    const int index = m_prj->currentIndex() + 1;
    m_prj->insertTab(index, id_cfg);
    m_prj->refreshAll();
    m_prj->setCurrentIndex(index);
    m_prj->setCurrentRow(row);
    m_prj->hideUnchecked(appData().HideUncheckCmd);
    m_prj->focusTable();
    refreshForms();
    applyInterface();
    updateState();
}

void TMainWindow::slotCfgCopy()
{
    const int id_cfg = m_prj->currentCfg();
    m_cfgClip = {{}, project().cfgName(id_cfg), project().cfgDescription(id_cfg), m_opening};
    for (const TDataCmd* command : project().cmdsOfCfg(id_cfg))
        m_cfgClip.commands.append(command->toData());
    setPasteText(maCfgPaste, 28, m_cfgClip.name);
    report(langText(121).arg(m_cfgClip.name), TWgtStatusBar::Green);
    updateState();
}

void TMainWindow::slotCfgPaste()
{
    TDialogCfgEdit dialog(langText(122), m_cfgClip.name, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const int id_cfg = project().addCfg(dialog.name(), m_cfgClip.description, m_prj->currentIndex() + 1);
    for (const TData& command : qAsConst(m_cfgClip.commands))
        project().addCmd(pasted(command, id_cfg, m_cfgClip.opening), -1);
    project().bindAll();
    showNewCfg(id_cfg, 0);
    report(langText(123), TWgtStatusBar::Green);
}

void TMainWindow::slotCfgEdit()
{
    const int id_cfg = m_prj->currentCfg();
    TDialogCfgEdit dialog(langText(119), project().cfgName(id_cfg), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    project().setCfgName(id_cfg, dialog.name());
    m_prj->setTabText(id_cfg, dialog.name());
    refreshForms();
    m_prj->refreshAll();
}

void TMainWindow::slotCfgDelete()
{
    const int id_cfg = m_prj->currentCfg();
    const QString question = langText(124).arg(project().cfgName(id_cfg));
    if (appData().ConfirmConfigDeleteCur && !msgAsk(question, this))
        return;
    stopRunsThen([this, id_cfg] { removeCfg(id_cfg); });
}

void TMainWindow::removeCfg(int id_cfg)
{
    // Something else may have happened while runs came to their end.
    if (project().indexCfg(id_cfg) < 0 || isOneCfg())
        return;
    const QString name = project().cfgName(id_cfg);
    project().removeCfg(id_cfg);
    project().bindAll();
    m_prj->removeTab(id_cfg);
    m_prj->refreshAll();
    m_prj->focusTable();
    report(langText(125).arg(name), TWgtStatusBar::Green);
    refreshForms();
    updateState();
}
