#pragma once

#include "base/texts.h"
#include "base/types.h"
#include "exec/TLineGate.h"
#include "exec/TRunControl.h"
#include "ui/main/TCfgActions.h"
#include "ui/main/TCmdActions.h"
#include "ui/main/TCmdClipboard.h"
#include "ui/main/TMainActions.h"
#include "ui/main/TMainMenus.h"
#include "ui/main/TMainPanels.h"
#include "ui/main/TMainToolBar.h"
#include "ui/main/TPrjActions.h"
#include "ui/main/TPrjListActions.h"
#include "ui/main/TPrjSession.h"
#include "ui/main/TRunActions.h"

#include <QMainWindow>
#include <QPointer>

class TDialogCmdSelector;
class TDialogManual;

/// The program's one top-level window: puts its parts together, shows what is on as their state changes, and
/// hands each action to the part that does it. Main thread; it never waits for a worker.
class TMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    TMainWindow();
    /// Stops what still runs, then stores what the settings ask for.
    ~TMainWindow() override;

    QAction* action(TMainAction id) const { return m_actions.at(id); }
    TButtonAction* button(TMainButton id) const { return m_toolBar->button(id); }
    QMenu* menu(TMainMenu id) const { return m_menus.at(id); }
    TWgtPrjList* prjList() const { return m_panels->prjList(); }
    TWgtPrj* prj() const { return m_panels->prj(); }
    TWgtStatusBar* statusLine() const { return m_panels->status(); }
    TRunControl* runs() { return &m_runs; }
    /// Null while it is closed.
    TDialogCmdSelector* cmdSelector() const;
    /// Runs have been asked to end, and something waits for that.
    bool isWaitingForRuns() const { return m_session.isWaitingForRuns(); }

signals:
    void signalStop(int id_cfg);
    void signalPauseReset(int id_cfg);

public slots:
    void slotPrjListNew() { m_prjListActions.create(); }
    void slotPrjListLoad() { m_prjListActions.load(); }
    void slotPrjListSelect() { m_prjListActions.select(); }
    void slotPrjListReload() { m_prjListActions.reload(); }
    void slotPrjListSaveAs() { m_prjListActions.saveAs(); }
    void slotPrjListOpenFolder() { m_prjListActions.openFolder(); }
    void slotPrjListDragDrop();

    void slotPrjNew() { m_prjActions.create(); }
    void slotPrjNewSub() { m_prjActions.createSub(); }
    void slotPrjAdd() { m_prjActions.add(); }
    void slotPrjAddSub() { m_prjActions.addSub(); }
    void slotPrjCopy() { m_prjActions.copy(); }
    void slotPrjPasteNew() { m_prjActions.paste(); }
    void slotPrjPasteNewSub() { m_prjActions.pasteSub(); }
    void slotPrjEdit() { m_prjActions.edit(); }
    void slotPrjSave() { m_session.save(); }
    void slotPrjSaveAs() { m_session.saveAs(); }
    void slotPrjDelete() { m_prjActions.remove(); }
    void slotPrjDeleteSubAll() { m_prjActions.removeSubAll(); }
    void slotPrjOpenFolder() { m_prjActions.openFolder(); }

    void slotCfgNew() { m_cfgActions.create(); }
    void slotCfgCopy() { m_cfgActions.copy(); }
    void slotCfgPaste() { m_cfgActions.paste(); }
    void slotCfgEdit() { m_cfgActions.edit(); }
    void slotCfgDelete() { m_cfgActions.remove(); }

    void slotCmdSelector();
    void slotCmdNewSetProgDevice() { m_cmdActions.addSetProgDevice(); }
    void slotCmdNewSetProg() { m_cmdActions.addSetProg(); }
    void slotCmdNewSetDevice() { m_cmdActions.addSetDevice(); }
    void slotCmdCopy() { m_cmdActions.copy(); }
    void slotCmdCopySelected() { m_cmdActions.copySelected(); }
    void slotCmdPaste() { m_cmdActions.paste(); }
    void slotCmdDeleteCur() { m_cmdActions.removeCurrent(); }
    void slotCmdDeleteSelected() { m_cmdActions.removeSelected(); }
    void slotCmdDeleteError() { m_cmdActions.removeFaulty(); }
    void slotCmdDeleteDev() { m_cmdActions.removeOfDevice(); }
    void slotCmdDeleteAll() { m_cmdActions.removeAll(); }
    void slotCmdCheckAll() { m_cmdActions.setAllChecked(true); }
    void slotCmdUcheckAll() { m_cmdActions.setAllChecked(false); }
    void slotCmdMoveUp() { m_cmdActions.move(-1); }
    void slotCmdMoveDown() { m_cmdActions.move(1); }
    void slotCmdUncheckHide();

    void slotExecIDProg() { m_runActions.identify(); }
    void slotExecReset() { m_runActions.reset(); }
    void slotExecCfg() { m_runActions.execute(); }
    void slotExecClearState() { m_runActions.clearCurrent(); }
    void slotExecClearAllState() { m_runActions.clearAll(); }

    void slotQuit() { close(); }
    void slotSettings();
    void slotSetLanguage();
    void slotSaveSettings();
    void slotHelp();
    void slotAbout();
    void slotAboutQt();
    void slotSetViewParamPrj() { m_panels->setPage(TWgtConfig::PageDescription); }
    void slotSetViewParamCmd() { m_panels->setPage(TWgtConfig::PageParam); }
    void slotSetViewParamExec() { m_panels->setPage(TWgtConfig::PageExec); }

    void slotExecFinished(int /*id_cfg*/) { updateState(); }
    void slotExecuteFromCmd(int id_cfg) { m_runActions.start(id_cfg); }
    void slotStatusChanged(int id_cfg, int status) { m_runActions.statusChanged(id_cfg, status); }
    /// Opens the project of the node that is current; nothing when the file is not that node's any more.
    void slotSelectPrj(const QString& project_file) { m_session.selectPrj(project_file); }
    void slotChangePrj(bool change) { m_toolBar->setChanged(change); }
    void slotSplitterCfgMoved(const TSplitterPos& splitter);
    void slotSelectCmd() { m_session.showSelected(); }
    /// Adds a command behind the current one, with the defaults of its family.
    void slotNewCmd(const QString& cmd_code, bool cmd_state) { m_cmdActions.add(cmd_code, cmd_state); }
    void slotOpenContextMenuPrjList(const QPoint& pos);
    void slotOpenContextMenuPrj(const QPoint& pos);
    void slotCmdSelectorClose();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void connectSession();
    void connectPanels();
    void connectRuns();
    void updateState();
    void showSession();
    void leave();
    void applySettings();
    void takeWindowSettings();
    void tellUnsavedSettings();

    // In the order of their needs.
    TLineGate m_gate;
    TMainPanels* const m_panels; ///< the central widget
    TRunControl m_runs;
    TCmdClipboard m_clipboard;
    TPrjSession m_session;
    TPrjListActions m_prjListActions;
    TPrjActions m_prjActions;
    TCfgActions m_cfgActions;
    TCmdActions m_cmdActions;
    TRunActions m_runActions;
    TMainActions m_actions;
    TMainToolBar* const m_toolBar; ///< stands in the panels
    TMainMenus m_menus;
    QPointer<TDialogCmdSelector> m_cmdSelector;
    QPointer<TDialogManual> m_manual;
};
