#pragma once

#include "base/types.h"
#include "exec/TLineGate.h"
#include "exec/TRunControl.h"
#include "ui/main/TWgtStatusBar.h"
#include "ui/main/main_actions.h"
#include "ui/panels/TWgtConfig.h"
#include "ui/panels/TWgtPrjList.h"

#include <QMainWindow>
#include <QPointer>
#include <QSet>

#include <array>
#include <functional>

class QAction;
class QMenu;
class QSplitter;
class QTreeWidgetItem;
class TButtonAction;
class TDataCmd;
class TDialogCmdSelector;
class TDialogManual;
class TProgTask;
class TWgtPrj;

/// The program's one top-level window: owns all menus, tool buttons and actions, turns the state of the
/// list, the project and the selected command into what is enabled, and does what the actions ask for on
/// the model, the panels and the files. Main thread; it never waits for a worker.
class TMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    TMainWindow();
    /// Stops what still runs, then stores what the settings ask for.
    ~TMainWindow() override;

    QAction* action(TMainAction id) const { return m_actions.at(id); }
    TButtonAction* button(TMainButton id) const { return m_buttons.at(id); }
    QMenu* menu(TMainMenu id) const { return m_menus.at(id); }
    TWgtPrjList* prjList() const { return m_prjList; }
    TWgtPrj* prj() const { return m_prj; }
    TWgtStatusBar* statusLine() const { return m_status; }
    TRunControl* runs() { return &m_runs; }
    /// Null while it is closed.
    TDialogCmdSelector* cmdSelector() const;
    /// Runs have been asked to end, and something waits for that.
    bool isWaitingForRuns() const { return static_cast<bool>(m_afterRuns); }

signals:
    void signalStop(int id_cfg);
    void signalPauseReset(int id_cfg);

public slots:
    void slotPrjListNew();
    void slotPrjListLoad();
    void slotPrjListSelect();
    void slotPrjListReload();
    void slotPrjListSaveAs();
    void slotPrjListOpenFolder();
    void slotPrjListDragDrop();

    void slotPrjNew();
    void slotPrjNewSub();
    void slotPrjAdd();
    void slotPrjAddSub();
    void slotPrjCopy();
    void slotPrjPasteNew();
    void slotPrjPasteNewSub();
    void slotPrjEdit();
    void slotPrjSave();
    void slotPrjSaveAs();
    void slotPrjDelete();
    void slotPrjDeleteSubAll();
    void slotPrjOpenFolder();

    void slotCfgNew();
    void slotCfgCopy();
    void slotCfgPaste();
    void slotCfgEdit();
    void slotCfgDelete();

    void slotCmdSelector();
    void slotCmdNewSetProgDevice();
    void slotCmdNewSetProg();
    void slotCmdNewSetDevice();
    void slotCmdCopy();
    void slotCmdCopySelected();
    void slotCmdPaste();
    void slotCmdDeleteCur();
    void slotCmdDeleteSelected();
    void slotCmdDeleteError();
    void slotCmdDeleteDev();
    void slotCmdDeleteAll();
    void slotCmdCheckAll();
    void slotCmdUcheckAll();
    void slotCmdMoveUp();
    void slotCmdMoveDown();
    void slotCmdUncheckHide();

    void slotExecIDProg();
    void slotExecReset();
    void slotExecCfg();
    void slotExecClearState();
    void slotExecClearAllState();

    void slotQuit();
    void slotSettings();
    void slotSetLanguage();
    void slotSaveSettings();
    void slotHelp();
    void slotAbout();
    void slotAboutQt();
    void slotSetViewParamPrj();
    void slotSetViewParamCmd();
    void slotSetViewParamExec();

    void slotExecFinished(int id_cfg);
    void slotExecuteFromCmd(int id_cfg);
    void slotStatusChanged(int id_cfg, int status);
    /// Opens the project of the node that is current; nothing when the file is not that node's any more.
    void slotSelectPrj(const QString& project_file);
    void slotChangePrj(bool change);
    void slotSplitterCfgMoved(const TSplitterPos& splitter);
    void slotSelectCmd();
    /// Adds a command behind the current one, with the defaults of its family.
    void slotNewCmd(const QString& cmd_code, bool cmd_state);
    void slotOpenContextMenuPrjList(const QPoint& pos);
    void slotOpenContextMenuPrj(const QPoint& pos);
    void slotCmdSelectorClose();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct ActionRow;
    struct ButtonRow;
    using Step = std::function<void()>;
    /// What became of changes that were to be stored.
    enum class Stored {
        Yes,     ///< they are in the file, or there were none
        GivenUp, ///< the user wants what somebody else has written there meanwhile
        NotNow,  ///< the user wants neither
        Failed   ///< the file could not be written; the status line tells why
    };

    // Construction.
    void createActions();
    QAction* createAction(const ActionRow& row);
    void createMenus();
    void fillMenu(QMenu* menu, const QList<int>& content);
    void createLayout();
    QWidget* createToolBar();
    TButtonAction* createButton(const ButtonRow& row, QWidget* parent);
    void connectPanels();
    void openStartList();
    void openLastPrj();
    /// In the open project, if there is one; the table gets the focus.
    void showPlace(int tab, int row);
    void applyInterface();
    void applySettings();
    void takeWindowSettings();
    void tellUnsavedSettings();

    // State.
    void trigger(const ActionRow& row);
    void act(const ActionRow& row);
    quint32 conditions() const;
    quint32 cmdConditions() const;
    quint32 runConditions() const;
    void updateState();
    void updateDeleteTexts();
    void updateExecute();
    /// The action's own text with the name of what would be pasted.
    void setPasteText(TMainAction id, int text, const QString& name);
    void report(const QString& text, TWgtStatusBar::Code code);
    void showFolder(const QString& file);
    /// Stores what is being typed in a field, as leaving the field would.
    void commitEdit();

    // Opening and closing.
    /// Goes on with then when no run is left: at once, or after the user has agreed to stop the runs and
    /// the last one has ended. Otherwise refused is done. A later call takes the place of one that waits.
    void stopRunsThen(const Step& then, const Step& refused = {});
    void goOnAfterRuns();
    void selectPrj(const QString& project_file);
    void selectPrjLater();
    void openCurrentNode();
    void loadPrj(const QString& file);
    void connectPrj();
    void disconnectPrj();
    void showPrj();
    void backToOpenNode();
    /// Asks for unsaved changes. False when the project stays open.
    [[nodiscard]] bool closePrj();
    [[nodiscard]] bool saveBeforeClosing();
    [[nodiscard]] bool saveElsewhereBeforeClosing();
    /// Closes the project and stores the list, asking where it takes that. False when one of them stays.
    [[nodiscard]] bool closePrjAndList();
    void askToLeave();
    void leave();
    void storeWithoutAsking();

    // Saving. A file that somebody else has written meanwhile is not written over without a question.
    [[nodiscard]] Stored askOutdated(const QString& file);
    [[nodiscard]] Stored storePrj();
    [[nodiscard]] Stored storeList();
    /// Before the list is left: false when it stays. Otherwise its changes are stored or given up.
    [[nodiscard]] bool keepList();
    bool saveList();
    /// Opens the project anew, from its file.
    void reopenPrj();
    void reopenNode(QTreeWidgetItem* node);
    QString askPrjFile();
    /// Writes the open project there; the node of that file, new if need be. Null when it is not written.
    QTreeWidgetItem* copyPrjTo(const QString& file);
    QString askNewFile(int title, const QString& start, const QString& suffix, bool confirmOverwrite);

    // Project list and projects.
    bool loadList(const QString& name, const QString& file);
    void reloadList();
    void openOtherList(const QString& name, const QString& file);
    QString listProblem() const;
    void insertNode(int title, TPrjFileMode mode, TWgtPrjList::Place place);
    void changeNode(const QString& name, const QString& file);
    void removeNode(const QTreeWidgetItem* node, const QString& name);

    // Configurations and commands.
    void refreshForms();
    void showNewCfg(int id_cfg, int row);
    void removeCfg(int id_cfg);
    [[nodiscard]] bool isOneCfg() const;
    void insertAfterQuestion(bool isAsked, const QString& question, const QStringList& words);
    TData pasted(TData command, int id_cfg, int opening) const;
    void removeCmdsIf(const std::function<bool(const TDataCmd&)>& leaves);
    void rebuildTab(int row, bool isNew = false);
    void showAfterDelete();
    void setAllChecked(bool on);
    void moveCmd(int delta);
    QString cmdTitle(int id_cmd) const;

    // Runs.
    void pressActive(TWgtConfig* tab, int id_cfg);
    void clearState(int id_cfg);
    void doTask(bool showsPage, bool (TProgTask::*work)());
    void setPage(TWgtConfig::Page page);

    std::array<QMenu*, mmCount> m_menus{};
    std::array<QAction*, maCount> m_actions{};
    std::array<TButtonAction*, mbCount> m_buttons{};
    QMenu* m_contextPrjList = nullptr;
    QMenu* m_contextCfg = nullptr;
    QMenu* m_contextCmd = nullptr;
    QWidget* m_toolBar = nullptr;
    QWidget* m_toolsRight = nullptr;
    QSplitter* m_splitter = nullptr;
    TWgtPrj* m_prj = nullptr;
    TWgtPrjList* m_prjList = nullptr;
    TWgtStatusBar* m_status = nullptr;

    struct
    {
        QString name;
        QString file;
        QByteArray content;
    } m_prjClip;
    /// Copied commands, and the opening of a project in which their references mean something.
    QList<TData> m_cmdClip;
    int m_cmdClipOpening = -1;
    struct
    {
        QList<TData> commands;
        QString name;
        QString description;
        int opening = -1;
    } m_cfgClip;

    /// Configurations whose open form has to be made anew before it is shown.
    QSet<int> m_staleForms;
    QPointer<TDialogCmdSelector> m_cmdSelector;
    QPointer<TDialogManual> m_manual;
    TLineGate m_gate;
    TRunControl m_runs;

    /// Counts the openings: ids of commands and configurations mean something within one only.
    int m_opening = 0;
    /// The node whose project is shown, to be looked up before use, and its file.
    QTreeWidgetItem* m_openNode = nullptr;
    QString m_openPath;
    Step m_afterRuns;
    bool m_showsChange = false; ///< the save button has the icon of a changed project
    bool m_isActing = false;
    bool m_isClosing = false;
    bool m_mayClose = false;
};
