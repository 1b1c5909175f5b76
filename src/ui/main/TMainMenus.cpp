#include "ui/main/TMainMenus.h"

#include "base/TLang.h"
#include "ui/main/TMainActions.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>

namespace {

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
    Text title; ///< "?" with None
    bool isInBar;
    QList<int> content;
};

/// Inner menus stand before those that hold them.
const QList<MenuRow>& menuRows()
{
    // clang-format off
    static const QList<MenuRow> rows{
        {mmPrjList, Text::MenuPrjList, false,
         {maPrjListNew, maPrjListLoad, maPrjListSelect, maPrjListReload, maPrjListSaveAs, separator,
          maPrjListOpenFolder, separator,
          maPrjListDragDrop}},
        {mmPrj, Text::MenuPrj, false,
         {maPrjNew, maPrjNewSub, maPrjAdd, maPrjAddSub, separator,
          maPrjCopy, maPrjPasteNew, maPrjPasteNewSub, separator,
          maPrjEdit, maPrjSave, maPrjSaveAs, separator,
          maPrjDelete, maPrjDeleteSubAll, separator,
          maPrjOpenFolder}},
        {mmCfg, Text::MenuCfg, false,
         {maCfgNew, separator,
          maCfgCopy, maCfgPaste, separator,
          maCfgEdit, maCfgDelete}},
        {mmCmd, Text::MenuCmd, false,
         {maCmdSelector, separator,
          maCmdNewSetProg, maCmdNewSetDevice, maCmdNewSetProgDevice, separator,
          maCmdCopy, maCmdCopySelected, maCmdPaste, separator,
          maCmdDeleteCur, maCmdDeleteSelected, maCmdDeleteDev, maCmdDeleteError, maCmdDeleteAll, separator,
          maCmdCheckAll, maCmdUncheckAll, separator,
          maCmdMoveUp, maCmdMoveDown}},
        {mmRun, Text::MenuRun, false,
         {maExecReset, maExecCfg, separator,
          maExecClearState, maExecClearAllState}},
        {mmTop, Text::MenuFile, true,
         {subMenu(mmPrjList), separator,
          subMenu(mmPrj), subMenu(mmCfg), subMenu(mmCmd), subMenu(mmRun), separator,
          maQuit}},
        {mmView, Text::MenuView, true,
         {maSetViewParamPrj, maSetViewParamCmd, maSetViewParamExec, separator,
          maCmdUncheckHide}},
        {mmSettings, Text::MenuSettings, true,
         {maSettings, maSetLanguage, separator,
          maSaveSettings}},
        {mmHelp, Text::None, true,
         {maHelp, maAbout}},
    };
    // clang-format on
    return rows;
}

const QList<int> contextPrjListContent{
    maPrjNew,          maPrjNewSub, maPrjAdd,        maPrjAddSub, separator,        maPrjCopy, maPrjPasteNew,
    maPrjPasteNewSub,  separator,   maPrjEdit,       maPrjSave,   maPrjSaveAs,      separator, maPrjDelete,
    maPrjDeleteSubAll, separator,   maPrjOpenFolder, separator,   maPrjListDragDrop};

const QList<int>& menuContent(TMainMenu id)
{
    const QList<MenuRow>& rows = menuRows();
    return std::find_if(rows.begin(), rows.end(), [id](const MenuRow& row) { return row.id == id; })->content;
}

} // namespace

TMainMenus::TMainMenus(QMainWindow& window, const TMainActions& actions)
    : m_actions(actions)
{
    for (const MenuRow& row : menuRows()) {
        auto* menu = new QMenu(row.title == Text::None ? QStringLiteral("?") : langText(row.title), &window);
        m_menus.at(row.id) = menu;
        fill(menu, row.content);
        if (row.isInBar)
            window.menuBar()->addMenu(menu);
    }
    m_contextPrjList = context(window, contextPrjListContent);
    m_contextCfg = context(window, menuContent(mmCfg));
    m_contextCmd = context(window, menuContent(mmCmd));
}

QMenu* TMainMenus::context(QMainWindow& window, const QList<int>& content)
{
    auto* menu = new QMenu(&window);
    fill(menu, content);
    return menu;
}

void TMainMenus::fill(QMenu* menu, const QList<int>& content)
{
    for (int entry : content) {
        if (entry == separator)
            menu->addSeparator();
        else if (entry < separator)
            menu->addMenu(m_menus.at(-2 - entry));
        else
            menu->addAction(m_actions.at(static_cast<TMainAction>(entry)));
    }
}
