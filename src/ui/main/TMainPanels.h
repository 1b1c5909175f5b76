#pragma once

#include "base/types.h"
#include "ui/main/TWgtStatusBar.h"
#include "ui/panels/TWgtConfig.h"

#include <QSet>
#include <QWidget>

#include <functional>

class QSplitter;
class QVBoxLayout;
class TLineGate;
class TWgtPrj;
class TWgtPrjList;

/// What the main window shows below its menus: the list of projects, the open project, the status line; and
/// what the operations do to them alike. Main thread.
class TMainPanels : public QWidget
{
    Q_OBJECT

public:
    /// The gate is that of the window's runs, and outlives the panels.
    explicit TMainPanels(TLineGate& gate, QWidget* parent = nullptr);
    ~TMainPanels() override;

    TWgtPrjList* prjList() const { return m_prjList; }
    TWgtPrj* prj() const { return m_prj; }
    TWgtStatusBar* status() const { return m_status; }
    QSplitter* splitter() const { return m_splitter; }
    /// Takes it over and shows it above the panels.
    void setToolBar(QWidget* bar);

    /// Shows a message behind what the panels have posted: the current command's line would come last
    /// otherwise.
    void report(const QString& text, TWgtStatusBar::Code code);
    /// Has signalState emitted.
    void updateState() { emit signalState(); }
    /// Does what the user has asked for; what is being typed is stored first.
    void act(const std::function<void()>& step);
    /// Within act(): the operation may show a box, and nothing else begins underneath.
    bool isActing() const { return m_isActing; }
    /// Stores what is being typed in a field, as leaving the field would.
    void commitEdit();

    /// Names, filter, tabs and colours as the settings have them.
    void applyInterface();
    /// Of all tabs; nothing without a project.
    void setPage(TWgtConfig::Page page);
    /// In the open project, if there is one; the table gets the focus.
    void showPlace(int tab, int row);
    /// The open project has one configuration only, whose name need not be told.
    [[nodiscard]] bool isOneCfg() const;
    void showFolder(const QString& file);

    /// What stands around the commands has changed, and forms show some of it.
    void refreshForms();
    /// The form of the tab that is shown, if it was left out by refreshForms().
    void refreshStaleForm();
    /// Passes on what the tabs and the project tell; not before all tabs of a project are there.
    void connectPrj();
    void disconnectPrj();
    /// Without tabs; the project may be cleared.
    void deleteTabs();

signals:
    /// What actions need may have changed.
    void signalState();
    void signalPage(int page);
    // As TWgtPrj tells them.
    void signalSelectCmd();
    void signalSetViewParamCmd();
    void signalSplitterCfgMoved(const TSplitterPos& splitter);
    void signalContextMenuRequested(const QPoint& pos);

private:
    QVBoxLayout* m_layout = nullptr;
    QSplitter* m_splitter = nullptr;
    TWgtPrj* m_prj = nullptr;
    TWgtPrjList* m_prjList = nullptr;
    TWgtStatusBar* m_status = nullptr;
    /// Configurations whose open form has to be made anew before it is shown.
    QSet<int> m_staleForms;
    bool m_isActing = false;
};
