#pragma once

#include "base/types.h"
#include "exec/IRunView.h"

#include <QPointer>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QScrollArea;
class QSplitter;
class QTabWidget;
class QTextEdit;
class TDataCmd;
class TLineGate;
class TWgtCmdList;
class TWgtLogExec;

/// One tab: the command table, and beside or below it one of three pages: description, parameter form, log.
class TWgtConfig : public QWidget, public IRunView
{
    Q_OBJECT

public:
    /// The pages, in the order of the view menu.
    enum Page { PageDescription, PageParam, PageExec };

    /// The gate is the window's, for all its tabs.
    TWgtConfig(int id_cfg, const QString& description, TLineGate& gate, QWidget* parent = nullptr);
    ~TWgtConfig() override;

    int idCfg() const;
    TWgtCmdList* cmdList() const { return m_cmdList; }
    TWgtLogExec* logExec() const { return m_log; }
    /// The form of the current command; null with none.
    QWidget* form() const { return m_form; }
    void setPage(Page page);
    Page page() const;
    /// Horizontal: commands and page side by side.
    void setOrientation(bool horizontal);
    void setSplitterSizes(const TSplitterPos& sizes);
    void fill();
    void refreshAll();
    /// Row and, if it is this command's, open form show the command as the project has it.
    void refreshRow(int id_cmd);
    /// Builds the form of the current command anew, after something that it shows has changed.
    void refreshForm();
    /// Stores what stands in a field that has the focus, as leaving it would.
    void commitEdit();
    void reloadColors();
    /// The last run ended because the user had stopped it.
    bool isStopped() const { return m_isStopped; }

    // IRunView
    QObject* receiver() override;
    void runBegins() override;
    void runStopped() override;
    void runEnded() override;

signals:
    void signalSetViewParamCmd();
    void signalSplitterMoved(TSplitterPos sizes);
    void signalSelectCmd(int id_cfg, int id_cmd);
    /// pos is global.
    void signalContextMenuRequested(QPoint pos);

public slots:
    void slotExecEventText(TCodeExec code, const QString& text1, const QString& text2);
    void slotExecEventText(TCodeExec code, const QString& text1);
    void slotExecEventProc(int procent);
    void slotSplitterMoved();
    void slotSelectCmd(int id_cmd);
    void slotSelectCmdClick();
    void slotEnabledCmd(int id_cmd, bool status);
    void slotChangedCmdParam(const TData& param);
    void slotPrjDescChanged();

private:
    void makePages(const QString& description);
    QWidget* makePageHolder();
    QWidget* pageWidget(Page page) const;
    void makeForm(int id_cmd);
    void dropForm();
    void bringFormUpToDate(const TDataCmd& command);
    void highlightTarget(int id_cmd);
    void deleteUnfit(int id_cmd);
    void removeStrayRows();

    const int m_idCfg;
    TLineGate& m_gate;
    TWgtCmdList* m_cmdList = nullptr;
    QSplitter* m_splitter = nullptr;
    QLabel* m_title = nullptr;
    QScrollArea* m_area = nullptr;
    QTabWidget* m_descPage = nullptr;
    QWidget* m_paramPage = nullptr;
    QHBoxLayout* m_paramLayout = nullptr;
    QPointer<QWidget> m_form;
    TWgtLogExec* m_log = nullptr;
    QTextEdit* m_description = nullptr;
    Page m_page = PageDescription;
    bool m_isStopped = false;
    int m_idForm = -1;           ///< command of the open form
    TData m_formParams;          ///< parameters of the command that the open form knows
    QHash<int, QVariant> m_kept; ///< by command: what its last form knew beyond the parameters
};
