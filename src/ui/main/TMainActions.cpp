#include "base/TCmdCode.h"
#include "base/TLang.h"
#include "base/TSettings.h"
#include "base/helpers.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "forms/edits/colors.h"
#include "settings/TAppData.h"
#include "ui/TButtonAction.h"
#include "ui/dialogs/TDialogCmdSelector.h"
#include "ui/main/TMainWindow.h"
#include "ui/panels/TWgtCmdList.h"
#include "ui/panels/TWgtPrj.h"

#include <QActionGroup>
#include <QApplication>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

/// What holds at a moment; an action is enabled while all that it needs holds.
enum Condition : quint32 {
    Always = 0,
    L = 1 << 0,         ///< the project list is loaded
    I = 1 << 1,         ///< the tree has a current node
    S = 1 << 2,         ///< the current node has children
    P = 1 << 3,         ///< a project is open
    B = 1 << 4,         ///< a project has been copied
    F = 1 << 5,         ///< a configuration has been copied
    D = 1 << 6,         ///< commands have been copied
    C = 1 << 7,         ///< a command is current
    N = 1 << 8,         ///< the current configuration has commands
    Tabs = 1 << 9,      ///< more than one configuration
    NotFirst = 1 << 10, ///< the current row is not row 0
    NotLast = 1 << 11,  ///< the current row is not the last one
    CanAsk = 1 << 12,   ///< the current command has a programmer, and nothing runs here
    CanReset = 1 << 13, ///< the current command has a chip with a reset line, and nothing runs here
    Free = 1 << 14,     ///< nothing waits for runs to end
    Tab = 1 << 15,      ///< a configuration is shown
};

enum Flag : quint8 {
    Plain = 0,
    Check = 1,    ///< checkable
    Focus = 2,    ///< only while the command table has the keyboard focus
    NoRepeat = 4, ///< a held key does it once
};

} // namespace

struct TMainWindow::ActionRow
{
    TMainAction id;
    int text; ///< number in the language table; a text of its own with 0
    void (TMainWindow::*slot)();
    const char* hotKey; ///< key in the group of hot keys; null for none
    quint32 needs;
    quint8 flags;
};

struct TMainWindow::ButtonRow
{
    TMainButton id;
    TMainAction action;
    const char* icon;
    bool isRight;   ///< in the group that is shown with a project only
    int gap;        ///< in front of it, in pixels
    int width[2];   ///< with icon set 0 and 1, in pixels
    QSize icons[2]; ///< the same
};

namespace {

constexpr int buttonHeight[] = {30, 45};
constexpr int barHeight[] = {37, 50};
constexpr int lastLeftGap = 32;

/// Stands between the groups of a menu.
constexpr int separator = -1;
/// Stands for a menu inside a menu.
constexpr int subMenu(TMainMenu id)
{
    return -2 - id;
}

struct MenuRow
{
    TMainMenu id;
    int title; ///< number in the language table; "?" with 0
    bool isInBar;
    QList<int> content;
};

/// Inner menus stand before those that hold them.
const QList<MenuRow>& menuRows()
{
    // clang-format off
    static const QList<MenuRow> rows{
        {mmPrjList, 4, false,
         {maPrjListNew, maPrjListLoad, maPrjListSelect, maPrjListReload, maPrjListSaveAs, separator,
          maPrjListOpenFolder, separator,
          maPrjListDragDrop}},
        {mmPrj, 12, false,
         {maPrjNew, maPrjNewSub, maPrjAdd, maPrjAddSub, separator,
          maPrjCopy, maPrjPasteNew, maPrjPasteNewSub, separator,
          maPrjEdit, maPrjSave, maPrjSaveAs, separator,
          maPrjDelete, maPrjDeleteSubAll, separator,
          maPrjOpenFolder}},
        {mmCfg, 25, false,
         {maCfgNew, separator,
          maCfgCopy, maCfgPaste, separator,
          maCfgEdit, maCfgDelete}},
        {mmCmd, 31, false,
         {maCmdSelector, separator,
          maCmdNewSetProg, maCmdNewSetDevice, maCmdNewSetProgDevice, separator,
          maCmdCopy, maCmdCopySelected, maCmdPaste, separator,
          maCmdDeleteCur, maCmdDeleteSelected, maCmdDeleteDev, maCmdDeleteError, maCmdDeleteAll, separator,
          maCmdCheckAll, maCmdUncheckAll, separator,
          maCmdMoveUp, maCmdMoveDown}},
        {mmRun, 50, false,
         {maExecReset, maExecCfg, separator,
          maExecClearState, maExecClearAllState}},
        {mmTop, 3, true,
         {subMenu(mmPrjList), separator,
          subMenu(mmPrj), subMenu(mmCfg), subMenu(mmCmd), subMenu(mmRun), separator,
          maQuit}},
        {mmView, 57, true,
         {maSetViewParamPrj, maSetViewParamCmd, maSetViewParamExec, separator,
          maCmdUncheckHide}},
        {mmSettings, 63, true,
         {maSettings, maSetLanguage, separator,
          maSaveSettings}},
        {mmHelp, 0, true,
         {maHelp, maAbout}},
    };
    // clang-format on
    return rows;
}

const QList<int> contextPrjList{
    maPrjNew,          maPrjNewSub, maPrjAdd,        maPrjAddSub, separator,        maPrjCopy, maPrjPasteNew,
    maPrjPasteNewSub,  separator,   maPrjEdit,       maPrjSave,   maPrjSaveAs,      separator, maPrjDelete,
    maPrjDeleteSubAll, separator,   maPrjOpenFolder, separator,   maPrjListDragDrop};

const QList<int>& menuContent(TMainMenu id)
{
    const QList<MenuRow>& rows = menuRows();
    return std::find_if(rows.begin(), rows.end(), [id](const MenuRow& row) { return row.id == id; })->content;
}

/// A text that is no language text: names of actions that every user must find, in any language.
QString ownText(TMainAction id)
{
    return id == maSetLanguage ? QStringLiteral("Language") : QStringLiteral("About Qt...");
}

QString insertText(TMainAction id, int text)
{
    const QString prog = cmdCode().name(cmd::set_prog);
    const QString device = cmdCode().name(cmd::set_device);
    if (id == maCmdNewSetProgDevice)
        return langText(text).arg(prog, device);
    return langText(text).arg(id == maCmdNewSetProg ? prog : device);
}

QString actionText(TMainAction id, int text)
{
    switch (id) {
    case maCmdNewSetProgDevice:
    case maCmdNewSetProg:
    case maCmdNewSetDevice:
        return insertText(id, text);
    default:
        return text == 0 ? ownText(id) : langText(text);
    }
}

QList<QKeySequence> hotKeys(const TSettings& file, TMainAction id, const char* name)
{
    QStringList names{QLatin1String(name)};
    if (id == maExecCfg)
        names.append(QStringLiteral("ExecCfg2"));
    QList<QKeySequence> keys;
    for (const QString& key : names) {
        const QKeySequence sequence = file.readKeySequence(QStringLiteral("HotKeyMain/") + key);
        if (!sequence.isEmpty())
            keys.append(sequence);
    }
    return keys;
}

void addIf(quint32& holding, quint32 condition, bool holds)
{
    if (holds)
        holding |= condition;
}

/// Index into what depends on the set of icons.
int iconSet()
{
    return appData().IconsSet == 1 ? 1 : 0;
}

QIcon icon(const char* name)
{
    return iconPath(iconSet(), QLatin1String(name));
}

} // namespace

void TMainWindow::createActions()
{
    using W = TMainWindow;
    // clang-format off
    static constexpr ActionRow rows[] = {
        {maPrjListNew, 5, &W::slotPrjListNew, "PrjListNew", Free, Plain},
        {maPrjListLoad, 6, &W::slotPrjListLoad, "PrjListLoad", Free, Plain},
        {maPrjListSelect, 7, &W::slotPrjListSelect, "PrjListSelect", Free, Plain},
        {maPrjListReload, 8, &W::slotPrjListReload, "PrjListReload", L | Free, Plain},
        {maPrjListSaveAs, 9, &W::slotPrjListSaveAs, "PrjListSaveAs", L, Plain},
        {maPrjListOpenFolder, 10, &W::slotPrjListOpenFolder, "PrjListOpenFolder", L, Plain},
        {maPrjListDragDrop, 11, &W::slotPrjListDragDrop, "PrjListDragDrop", L, Check},
        {maPrjNew, 13, &W::slotPrjNew, "PrjNew", L | Free, Plain},
        {maPrjNewSub, 14, &W::slotPrjNewSub, "PrjNewSub", I | Free, Plain},
        {maPrjAdd, 15, &W::slotPrjAdd, "PrjAdd", L | Free, Plain},
        {maPrjAddSub, 16, &W::slotPrjAddSub, "PrjAddSub", I | Free, Plain},
        {maPrjCopy, 17, &W::slotPrjCopy, "PrjCopy", P | Free, Plain},
        {maPrjPasteNew, 18, &W::slotPrjPasteNew, "PrjPasteNew", L | B | Free, Plain},
        {maPrjPasteNewSub, 19, &W::slotPrjPasteNewSub, "PrjPasteNewSub", L | B | Free, Plain},
        {maPrjEdit, 20, &W::slotPrjEdit, "PrjEdit", I | Free, Plain},
        {maPrjSave, 21, &W::slotPrjSave, "PrjSave", I | P | Free, Plain},
        {maPrjSaveAs, 428, &W::slotPrjSaveAs, "PrjSaveAs", P | Free, Plain},
        {maPrjDelete, 22, &W::slotPrjDelete, "PrjDeleteCur", I | Free, Plain},
        {maPrjDeleteSubAll, 23, &W::slotPrjDeleteSubAll, "PrjDeleteSubAll", S | Free, Plain},
        {maPrjOpenFolder, 24, &W::slotPrjOpenFolder, "PrjOpenFolder", I | P, Plain},
        {maCfgNew, 26, &W::slotCfgNew, "CfgNew", P | Free, Focus},
        {maCfgCopy, 27, &W::slotCfgCopy, "CfgCopy", P | Free, Focus},
        {maCfgPaste, 28, &W::slotCfgPaste, "CfgPasteNew", P | F | Free, Focus},
        {maCfgEdit, 29, &W::slotCfgEdit, "CfgEdit", P | Free, Focus},
        {maCfgDelete, 30, &W::slotCfgDelete, "CfgDelete", P | Tabs | Free, Focus},
        {maCmdSelector, 32, &W::slotCmdSelector, "CmdSelector", P | Free, Check},
        {maCmdNewSetProgDevice, 33, &W::slotCmdNewSetProgDevice, "CmdNewSetProgDevice", P | Free, Focus},
        {maCmdNewSetProg, 34, &W::slotCmdNewSetProg, "CmdNewSetProg", P | Free, Focus},
        {maCmdNewSetDevice, 34, &W::slotCmdNewSetDevice, "CmdNewSetDevice", P | Free, Focus},
        {maCmdCopy, 35, &W::slotCmdCopy, "CmdCopyOne", P | C | Free, Focus},
        {maCmdCopySelected, 36, &W::slotCmdCopySelected, "CmdCopySelected", P | N | Free, Focus},
        {maCmdPaste, 37, &W::slotCmdPaste, "CmdPaste", P | D | Free, Focus},
        {maCmdDeleteCur, 38, &W::slotCmdDeleteCur, "CmdDeleteCur", P | C | Free, Focus},
        {maCmdDeleteSelected, 39, &W::slotCmdDeleteSelected, "CmdDeleteSelected", P | N | Free, Focus},
        {maCmdDeleteError, 41, &W::slotCmdDeleteError, "CmdDeleteError", P | N | Free, Focus},
        {maCmdDeleteDev, 40, &W::slotCmdDeleteDev, "CmdDeleteDev", P | N | Free, Focus},
        {maCmdDeleteAll, 43, &W::slotCmdDeleteAll, "CmdDeleteAll", P | N | Free, Focus},
        {maCmdCheckAll, 45, &W::slotCmdCheckAll, "CmdCheckAll", P | N | Free, Plain},
        {maCmdUncheckAll, 46, &W::slotCmdUcheckAll, "CmdUncheckAll", P | N | Free, Plain},
        {maCmdMoveUp, 47, &W::slotCmdMoveUp, "CmdMoveUp", P | N | NotFirst | Free, Focus},
        {maCmdMoveDown, 48, &W::slotCmdMoveDown, "CmdMoveDown", P | NotLast | Free, Focus},
        {maCmdUncheckHide, 49, &W::slotCmdUncheckHide, "CmdUncheckHide", Always, Check},
        {maExecIDProg, 51, &W::slotExecIDProg, "ExecIDProg", P | CanAsk | Free, NoRepeat},
        {maExecReset, 52, &W::slotExecReset, "ExecReset", P | CanReset | Free, NoRepeat},
        {maExecCfg, 53, &W::slotExecCfg, "ExecCfg1", P | Tab | Free, NoRepeat},
        {maExecClearState, 54, &W::slotExecClearState, "ExecClearCfgState", P, Plain},
        {maExecClearAllState, 55, &W::slotExecClearAllState, "ExecClearAllState", P, Plain},
        {maQuit, 56, &W::slotQuit, "Quit", Always, NoRepeat},
        {maSettings, 64, &W::slotSettings, "Setup", Free, Plain},
        {maSetLanguage, 0, &W::slotSetLanguage, "Language", Always, Plain},
        {maSaveSettings, 65, &W::slotSaveSettings, "SaveSettings", Always, Plain},
        {maHelp, 66, &W::slotHelp, "Help", Always, Plain},
        {maAbout, 67, &W::slotAbout, nullptr, Always, Plain},
        {maAboutQt, 0, &W::slotAboutQt, nullptr, Always, Plain},
        {maSetViewParamPrj, 58, &W::slotSetViewParamPrj, "ViewParamPrj", P, Check},
        {maSetViewParamCmd, 59, &W::slotSetViewParamCmd, "ViewParamCmd", P, Check},
        {maSetViewParamExec, 60, &W::slotSetViewParamExec, "ViewParamExec", P, Check},
    };
    // clang-format on
    static_assert(std::size(rows) == maCount, "a row an action");
    for (const ActionRow& row : rows)
        m_actions.at(row.id) = createAction(row);

    auto* pages = new QActionGroup(this);
    for (TMainAction id : {maSetViewParamPrj, maSetViewParamCmd, maSetViewParamExec})
        pages->addAction(action(id));
    action(maSetViewParamPrj)->setChecked(true);
    action(maPrjListDragDrop)->setChecked(appData().PrjListDragDrop);
    action(maCmdUncheckHide)->setChecked(appData().HideUncheckCmd);
}

QAction* TMainWindow::createAction(const ActionRow& row)
{
    auto* action = new QAction(actionText(row.id, row.text), this);
    action->setCheckable(row.flags & Check);
    action->setAutoRepeat(!(row.flags & NoRepeat));
    action->setData(row.needs);
    if (row.hotKey)
        action->setShortcuts(hotKeys(TSettings(fileInAppDir(QStringLiteral("hk"))), row.id, row.hotKey));
    connect(action, &QAction::triggered, this, [this, row] { trigger(row); });
    // Some actions stand in no menu, and their hot keys work all the same.
    addAction(action);
    return action;
}

void TMainWindow::trigger(const ActionRow& row)
{
    m_gate.betweenLines(this, [this, row] { act(row); });
}

void TMainWindow::act(const ActionRow& row)
{
    // Some operations show boxes: none of them may begin again, or another one, underneath.
    if (m_isActing || !action(row.id)->isEnabled() || ((row.flags & Focus) && !m_prj->tableHasFocus()))
        return;
    const QScopedValueRollback<bool> guard(m_isActing, true);
    // Neither a tool button nor a hot key takes the focus from a field whose value is not stored yet.
    commitEdit();
    (this->*row.slot)();
}

void TMainWindow::createMenus()
{
    for (const MenuRow& row : menuRows()) {
        auto* menu = new QMenu(row.title == 0 ? QStringLiteral("?") : langText(row.title), this);
        m_menus.at(row.id) = menu;
        fillMenu(menu, row.content);
        if (row.isInBar)
            menuBar()->addMenu(menu);
    }
    m_contextPrjList = new QMenu(this);
    fillMenu(m_contextPrjList, contextPrjList);
    m_contextCfg = new QMenu(this);
    fillMenu(m_contextCfg, menuContent(mmCfg));
    m_contextCmd = new QMenu(this);
    fillMenu(m_contextCmd, menuContent(mmCmd));
}

void TMainWindow::fillMenu(QMenu* menu, const QList<int>& content)
{
    for (int entry : content) {
        if (entry == separator)
            menu->addSeparator();
        else if (entry < separator)
            menu->addMenu(m_menus.at(-2 - entry));
        else
            menu->addAction(m_actions.at(entry));
    }
}

QWidget* TMainWindow::createToolBar()
{
    static const QSize small[] = {{16, 16}, {32, 32}};
    static const QSize wide[] = {{28, 16}, {46, 32}};
    // clang-format off
    const ButtonRow rows[] = {
        {mbSelectList, maPrjListSelect, "prj_list", false, 0, {30, 45}, {small[0], small[1]}},
        {mbOpen, maPrjListLoad, "open", false, 0, {30, 45}, {small[0], small[1]}},
        {mbSave, maPrjSave, "save", false, 0, {30, 45}, {small[0], small[1]}},
        {mbSettings, maSettings, "settings", false, 16, {30, 45}, {small[0], small[1]}},
        {mbCmdSelector, maCmdSelector, "cmd_select", true, 0, {30, 45}, {small[0], small[1]}},
        {mbHide, maCmdUncheckHide, "hide", true, 16, {30, 45}, {small[0], small[1]}},
        {mbPageDescription, maSetViewParamPrj, "page_desc", true, 16, {30, 45}, {small[0], small[1]}},
        {mbPageParam, maSetViewParamCmd, "page_param", true, 0, {30, 45}, {small[0], small[1]}},
        {mbPageExec, maSetViewParamExec, "page_exec", true, 0, {30, 45}, {small[0], small[1]}},
        {mbIdProg, maExecIDProg, "id_prog", true, 16, {45, 45}, {small[0], small[1]}},
        {mbReset, maExecReset, "reset", true, 0, {45, 45}, {small[0], small[1]}},
        {mbExecute, maExecCfg, "exec_start", true, 0, {60, 60}, {wide[0], wide[1]}},
    };
    // clang-format on
    static_assert(std::size(rows) == mbCount, "a row a button");

    auto* bar = new QFrame;
    bar->setFrameStyle(QFrame::Box | QFrame::Sunken);
    bar->setFixedHeight(barHeight[iconSet()]);
    m_toolsRight = new QWidget;
    auto* left = new QHBoxLayout;
    auto* right = new QHBoxLayout(m_toolsRight);
    for (QHBoxLayout* group : {left, right}) {
        group->setContentsMargins(0, 0, 0, 0);
        group->setSpacing(0);
    }
    for (const ButtonRow& row : rows) {
        QHBoxLayout* group = row.isRight ? right : left;
        group->addSpacing(row.gap);
        group->addWidget(createButton(row, bar), 0, Qt::AlignTop);
    }
    left->addSpacing(lastLeftGap);

    auto* pages = new QButtonGroup(bar);
    for (TMainButton id : {mbPageDescription, mbPageParam, mbPageExec})
        pages->addButton(button(id));

    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(5, 0, 5, 0);
    layout->setSpacing(0);
    layout->addLayout(left);
    layout->addStretch(1);
    layout->addWidget(m_toolsRight);
    return bar;
}

TButtonAction* TMainWindow::createButton(const ButtonRow& row, QWidget* parent)
{
    auto* button = new TButtonAction(parent);
    m_buttons.at(row.id) = button;
    button->setFixedSize(row.width[iconSet()], buttonHeight[iconSet()]);
    button->setIconSize(row.icons[iconSet()]);
    button->setIcon(icon(row.icon));
    button->setCheckable(action(row.action)->isCheckable());
    button->setAction(action(row.action));
    return button;
}

quint32 TMainWindow::conditions() const
{
    quint32 holding = 0;
    addIf(holding, L, m_prjList->isLoaded());
    addIf(holding, I, m_prjList->hasNode());
    addIf(holding, S, m_prjList->nodeHasChildren());
    addIf(holding, P, project().isOpen());
    addIf(holding, B, !m_prjClip.name.isEmpty());
    addIf(holding, F, !m_cfgClip.name.isEmpty());
    addIf(holding, D, !m_cmdClip.isEmpty());
    addIf(holding, Tabs, m_prj->count() > 1);
    addIf(holding, Free, !isWaitingForRuns());
    return holding | cmdConditions() | runConditions();
}

quint32 TMainWindow::cmdConditions() const
{
    const TWgtConfig* tab = m_prj->current();
    if (!tab)
        return 0;
    const int row = m_prj->currentRow();
    const int count = tab->cmdList()->rowCount();
    quint32 holding = Tab;
    addIf(holding, C, m_prj->currentCmd() >= 0);
    addIf(holding, N, count > 0);
    addIf(holding, NotFirst, row != 0);
    addIf(holding, NotLast, row < count - 1);
    return holding;
}

quint32 TMainWindow::runConditions() const
{
    const TDataCmd* command = project().cmdById(m_prj->currentCmd());
    if (!command)
        return 0;
    quint32 holding = 0;
    const IDevice* family = command->family();
    addIf(holding, CanAsk, command->prog() && !isActive(project().cfgStatus(m_prj->currentCfg())));
    addIf(holding, CanReset,
          family && family->hasReset() && !isActive(project().cfgStatus(command->cfgId())));
    return holding;
}

void TMainWindow::updateState()
{
    const quint32 holding = conditions();
    for (QAction* action : m_actions) {
        const quint32 needs = action->data().toUInt();
        action->setEnabled((holding & needs) == needs);
    }
    m_toolsRight->setVisible(holding & P);
    if (m_cmdSelector)
        m_cmdSelector->setAdding((holding & Tab) && (holding & Free));
    if (!(holding & P))
        return;
    updateDeleteTexts();
    updateExecute();
    m_prj->refreshTabColors();
}

void TMainWindow::updateDeleteTexts()
{
    const int more = m_prj->count() == 1 ? 0 : 1;
    action(maCmdDeleteError)->setText(langText(41 + more));
    action(maCmdDeleteAll)->setText(langText(43 + more));
}

void TMainWindow::updateExecute()
{
    TButtonAction* execute = button(mbExecute);
    const int status = project().cfgStatus(m_prj->currentCfg());
    const bool runs = status == csRun;
    const bool pauses = status == csPause;
    execute->setIcon(icon(runs ? "exec_stop" : pauses ? "exec_pause" : "exec_start"));
    action(maExecCfg)->setToolTip(langText(runs ? 70 : pauses ? 69 : 68));
    QPalette palette;
    if (runs)
        palette.setColor(QPalette::Button, appData().ExecBtnColorExecute);
    else if (pauses)
        palette.setColor(QPalette::Button, appData().ExecBtnColorPause);
    execute->setPalette(palette);
}

void TMainWindow::slotChangePrj(bool change)
{
    // Told for every command of a load; an icon is read from its files each time.
    if (m_showsChange == change)
        return;
    m_showsChange = change;
    button(mbSave)->setIcon(icon(change ? "save_change" : "save"));
}

void TMainWindow::setPasteText(TMainAction id, int text, const QString& name)
{
    const QString own = langText(text).section(QLatin1Char('['), 0, 0).trimmed();
    action(id)->setText(QStringLiteral("%1 [%2]").arg(own, literalLabel(name)));
}

void TMainWindow::slotOpenContextMenuPrjList(const QPoint& pos)
{
    updateState();
    m_contextPrjList->popup(pos);
}

void TMainWindow::slotOpenContextMenuPrj(const QPoint& pos)
{
    updateState();
    const bool isCtrl = QApplication::keyboardModifiers() == Qt::ControlModifier;
    (isCtrl ? m_contextCfg : m_contextCmd)->popup(pos);
}
