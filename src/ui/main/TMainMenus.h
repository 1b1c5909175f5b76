#pragma once

#include "ui/main/main_actions.h"

#include <QList>

#include <array>

class QMainWindow;
class QMenu;
class TMainActions;

/// The menus of the main window, in its bar and at a place. Main thread.
class TMainMenus
{
public:
    /// Makes the menus, which the window owns.
    TMainMenus(QMainWindow& window, const TMainActions& actions);

    QMenu* at(TMainMenu id) const { return m_menus.at(id); }
    QMenu* contextPrjList() const { return m_contextPrjList; }
    QMenu* contextCfg() const { return m_contextCfg; }
    QMenu* contextCmd() const { return m_contextCmd; }

private:
    QMenu* context(QMainWindow& window, const QList<int>& content);
    void fill(QMenu* menu, const QList<int>& content);

    const TMainActions& m_actions;
    std::array<QMenu*, mmCount> m_menus{};
    QMenu* m_contextPrjList = nullptr;
    QMenu* m_contextCfg = nullptr;
    QMenu* m_contextCmd = nullptr;
};
