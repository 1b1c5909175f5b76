#pragma once

#include "base/types.h"
#include "ui/panels/TWgtConfig.h"

#include <QFrame>

class QTabWidget;

/// The right panel: a tab for each configuration of the open project. Main thread.
class TWgtPrj : public QFrame
{
    Q_OBJECT

public:
    /// The gate is the window's; all tabs write their lines through it.
    explicit TWgtPrj(TLineGate& gate, QWidget* parent = nullptr);
    ~TWgtPrj() override;

    /// Deletes all tabs and makes them again from the project.
    void build();
    void deleteAll();
    /// A tab for a configuration of the project, at an index.
    TWgtConfig* insertTab(int index, int id_cfg);
    void removeTab(int id_cfg);
    void setTabText(int id_cfg, const QString& name);

    int count() const;
    int currentIndex() const;
    void setCurrentIndex(int index);
    /// Null with no tab.
    TWgtConfig* current() const;
    TWgtConfig* tabAt(int index) const;
    /// Null when the configuration has no tab.
    TWgtConfig* tabOf(int id_cfg) const;
    /// -1 with no tab.
    int currentCfg() const;
    /// -1 with no current command.
    int currentCmd() const;
    /// -1 with no current row.
    int currentRow() const;
    void setCurrentRow(int row);
    /// The command table of the current tab has the keyboard focus.
    bool tableHasFocus() const;
    void focusTable();

    void refreshCfg(int id_cfg);
    void refreshAll();
    /// The forms of all tabs show what has changed around them.
    void refreshForms();
    /// Tab text colours by the status of each configuration and how its last run ended.
    void refreshTabColors();
    void setPage(TWgtConfig::Page page);
    void setOrientation(bool horizontal);
    void setSplitterSizes(const TSplitterPos& sizes);
    void hideUnchecked(bool hide);
    void setTabBarAutoHide(bool hide);
    void reloadColors();

signals:
    void signalSelectCmd(int id_cfg, int id_cmd);
    void signalSetViewParamCmd();
    void signalSplitterCfgMoved(TSplitterPos sizes);
    /// Also for what has no menu of its own in the tabs; pos is global.
    void signalContextMenuRequested(QPoint pos);

public slots:
    void slotUpdateGUI(TCodeView code, const TData& param);
    void slotSetViewParamPrj();
    void slotSetViewParamCmd();
    void slotSetViewParamExec();
    void slotSelectCfg();
    void slotMovedCfg(int from, int to);

protected:
    void changeEvent(QEvent* event) override;

private:
    void dropTab(int index);
    template <typename Call> void forEachTab(const Call& call);

    TLineGate& m_gate;
    QTabWidget* m_tabs = nullptr;
    TWgtConfig::Page m_page = TWgtConfig::PageDescription;
    bool m_hideUnchecked = false;
};
