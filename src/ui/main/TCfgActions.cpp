#include "ui/main/TCfgActions.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "ui/dialogs/TDialogCfgEdit.h"
#include "ui/main/TCmdClipboard.h"
#include "ui/main/TMainPanels.h"
#include "ui/main/TPrjSession.h"
#include "ui/panels/TWgtPrj.h"
#include "ui/window_helpers.h"

TCfgActions::TCfgActions(TMainPanels& panels, TPrjSession& session, TCmdClipboard& clipboard)
    : m_panels(panels)
    , m_session(session)
    , m_clipboard(clipboard)
    , m_prj(panels.prj())
{
}

void TCfgActions::create()
{
    TDialogCfgEdit dialog(langText(Text::TitleCfgNew), QString(), m_panels.window());
    if (dialog.exec() != QDialog::Accepted)
        return;
    const int id_cfg = project().addCfg(dialog.name(), QString(), m_prj->currentIndex() + 1);
    showNew(id_cfg, -1);
    m_panels.report(langText(Text::CfgCreated).arg(dialog.name()), TWgtStatusBar::Green);
}

/// Makes the tab of a new configuration, behind the current one, the current one.
void TCfgActions::showNew(int id_cfg, int row)
{
    const int index = m_prj->currentIndex() + 1;
    m_prj->insertTab(index, id_cfg);
    m_prj->refreshAll();
    m_prj->setCurrentIndex(index);
    m_prj->setCurrentRow(row);
    m_prj->hideUnchecked(appData().HideUncheckCmd);
    m_prj->focusTable();
    m_panels.refreshForms();
    m_panels.applyInterface();
    m_panels.updateState();
}

void TCfgActions::copy()
{
    m_clipboard.copyCfg(m_prj->currentCfg());
    m_panels.report(langText(Text::CfgCopied).arg(m_clipboard.cfgName()), TWgtStatusBar::Green);
    m_panels.updateState();
}

void TCfgActions::paste()
{
    TDialogCfgEdit dialog(langText(Text::TitleCfgPaste), m_clipboard.cfgName(), m_panels.window());
    if (dialog.exec() != QDialog::Accepted)
        return;
    showNew(m_clipboard.pasteCfg(dialog.name(), m_prj->currentIndex() + 1), 0);
    m_panels.report(langText(Text::CfgPasted), TWgtStatusBar::Green);
}

void TCfgActions::edit()
{
    const int id_cfg = m_prj->currentCfg();
    TDialogCfgEdit dialog(langText(Text::TitleCfgEdit), project().cfgName(id_cfg), m_panels.window());
    if (dialog.exec() != QDialog::Accepted)
        return;
    project().setCfgName(id_cfg, dialog.name());
    m_prj->setTabText(id_cfg, dialog.name());
    m_panels.refreshForms();
    m_prj->refreshAll();
}

void TCfgActions::remove()
{
    const int id_cfg = m_prj->currentCfg();
    const QString question = langText(Text::AskDeleteCfg).arg(project().cfgName(id_cfg));
    if (appData().ConfirmConfigDeleteCur && !msgAsk(question, m_panels.window()))
        return;
    m_session.stopRunsThen([this, id_cfg] { removeCfg(id_cfg); });
}

void TCfgActions::removeCfg(int id_cfg)
{
    // Something else may have happened while runs came to their end.
    if (project().indexCfg(id_cfg) < 0 || m_panels.isOneCfg())
        return;
    const QString name = project().cfgName(id_cfg);
    project().removeCfg(id_cfg);
    project().bindAll();
    m_prj->removeTab(id_cfg);
    m_prj->refreshAll();
    m_prj->focusTable();
    m_panels.report(langText(Text::CfgDeleted).arg(name), TWgtStatusBar::Green);
    m_panels.refreshForms();
    m_panels.updateState();
}
