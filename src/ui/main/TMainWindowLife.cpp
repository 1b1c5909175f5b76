#include "base/TLang.h"
#include "base/helpers.h"
#include "core/files/TCtrlProject.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "ui/dialogs/TDialogCmdSelector.h"
#include "ui/main/TMainWindow.h"
#include "ui/panels/TTreeWidget.h"
#include "ui/panels/TWgtPrj.h"
#include "ui/window_helpers.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QScopedValueRollback>
#include <QTimer>

namespace {

constexpr int retryAfter = 50; // ms

/// The user is in a box, a dialog or a menu, which must not lose its window or its project.
bool isBusy()
{
    return QApplication::activeModalWidget() || QApplication::activePopupWidget();
}

} // namespace

TMainWindow::~TMainWindow()
{
    while (!m_runs.isIdle()) {
        // Each time: a run may start another one before it sees the stop.
        m_runs.stopAll();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    const TAppData& app = appData();
    if (app.SaveSettingsApp)
        app.saveApp();
    if (app.SaveSettingsWindow) {
        takeWindowSettings();
        app.saveWindow();
    }
    storeWithoutAsking();
    delete m_cmdSelector;
    disconnectPrj();
    m_prj->deleteAll();
    project().clear();
}

void TMainWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    m_gate.betweenLines(this, [this] { askToLeave(); });
    if (m_mayClose)
        event->accept();
}

void TMainWindow::askToLeave()
{
    if (m_mayClose || m_isClosing)
        return;
    const QScopedValueRollback<bool> guard(m_isClosing, true);
    commitEdit();
    if (!appData().ConfirmQuit || msgAsk(langText(89), this))
        stopRunsThen([this] { leave(); });
}

void TMainWindow::leave()
{
    const int tab = m_prj->currentIndex();
    const int row = m_prj->currentRow();
    if (!closePrjAndList())
        return;
    TAppData& app = appData();
    app.LastPrj = m_prjList->indexOfSelected();
    app.LastCfg = tab;
    app.LastCmd = row;
    m_mayClose = true;
    delete m_cmdSelector;
    close();
}

void TMainWindow::commitEdit()
{
    // The table is no field, and one without a current row would take its first one as the focus returns.
    if (m_prj->current() && !m_prj->tableHasFocus())
        m_prj->current()->commitEdit();
}

// The slots that write the log process events, so this may stand on the stack of one, with its worker
// waiting: an event loop in here would never see the end of that run.
void TMainWindow::stopRunsThen(const Step& then, const Step& refused)
{
    if (m_runs.isIdle()) {
        then();
        return;
    }
    if (!isWaitingForRuns() && !msgAsk(langText(421), this)) {
        if (refused)
            refused();
        return;
    }
    m_afterRuns = then;
    m_status->showText(langText(422), TWgtStatusBar::Plain);
    m_runs.stopAll();
    updateState();
    // They may have ended during the question.
    QMetaObject::invokeMethod(this, &TMainWindow::goOnAfterRuns, Qt::QueuedConnection);
}

void TMainWindow::goOnAfterRuns()
{
    if (!isWaitingForRuns() || !m_runs.isIdle())
        return;
    if (isBusy()) {
        QTimer::singleShot(retryAfter, this, &TMainWindow::goOnAfterRuns);
        return;
    }
    const Step then = std::exchange(m_afterRuns, nullptr);
    m_status->showText(project().file(), TWgtStatusBar::Plain);
    then();
    updateState();
    selectPrjLater();
}

void TMainWindow::slotSelectPrj(const QString& project_file)
{
    m_gate.betweenLines(this, [this, project_file] { selectPrj(project_file); });
}

void TMainWindow::selectPrj(const QString& project_file)
{
    if (m_mayClose || isWaitingForRuns() || project_file != m_prjList->nodePath())
        return;
    if (isBusy()) {
        QTimer::singleShot(retryAfter, this, [this] { slotSelectPrj(m_prjList->nodePath()); });
        return;
    }
    if (m_prjList->tree()->currentItem() == m_openNode && project_file == m_openPath)
        return;
    const QScopedValueRollback<bool> guard(m_isActing, true);
    commitEdit();
    stopRunsThen([this] { openCurrentNode(); }, [this] { backToOpenNode(); });
}

/// Another node may have become current in the meantime.
void TMainWindow::selectPrjLater()
{
    QMetaObject::invokeMethod(
        this, [this] { slotSelectPrj(m_prjList->nodePath()); }, Qt::QueuedConnection);
}

void TMainWindow::openCurrentNode()
{
    if (!closePrj()) {
        backToOpenNode();
        return;
    }
    m_openNode = m_prjList->tree()->currentItem();
    m_openPath = m_prjList->nodePath();
    loadPrj(m_openPath);
}

void TMainWindow::backToOpenNode()
{
    if (m_openNode && m_prjList->tree()->nodes().contains(m_openNode))
        m_prjList->restoreCurrent(m_openNode);
    updateState();
}

void TMainWindow::loadPrj(const QString& file)
{
    disconnectPrj();
    if (!file.isEmpty()) {
        TCtrlProject control;
        const int result = control.open(file, project());
        if (result == 0) {
            ++m_opening;
            project().setName(m_prjList->nodeName());
            project().clearChanged();
            m_status->showText(file, TWgtStatusBar::Plain);
        } else {
            QString text = QStringLiteral("%1: %2").arg(langText(result == 1 ? 87 : 88), file);
            if (appData().Debug == 1) {
                text += QStringLiteral(" [%1]").arg(control.errorText());
                logError(QStringLiteral("debug"),
                         QStringLiteral("TMainWindow::slotSelectPrj: %1").arg(control.errorText()));
            }
            // Behind the report that the project before it has been saved.
            report(text, TWgtStatusBar::Red);
        }
    }
    showPrj();
}

void TMainWindow::showPrj()
{
    const TAppData& app = appData();
    m_prj->build();
    connectPrj();
    if (m_cmdSelector)
        m_cmdSelector->slotSelectCmd(m_prj->currentCfg(), m_prj->currentCmd());
    m_prj->setOrientation(app.CfgOrientation != 0);
    m_prj->setSplitterSizes(app.WindowMainCfgSplitter);
    m_prj->setTabBarAutoHide(app.PrjHideTabCfg);
    action(maCmdUncheckHide)->setChecked(app.HideUncheckCmd);
    m_prj->hideUnchecked(app.HideUncheckCmd);
    slotSetViewParamPrj();
    applyInterface();
    updateState();
}

void TMainWindow::connectPrj()
{
    connect(m_prj, &TWgtPrj::signalSelectCmd, this, &TMainWindow::slotSelectCmd);
    connect(m_prj, &TWgtPrj::signalSetViewParamCmd, this, &TMainWindow::slotSetViewParamCmd);
    connect(m_prj, &TWgtPrj::signalSplitterCfgMoved, this, &TMainWindow::slotSplitterCfgMoved);
    connect(m_prj, &TWgtPrj::signalContextMenuRequested, this, &TMainWindow::slotOpenContextMenuPrj);
    connect(&project(), &TDataPrj::signalChangeData, m_prj, &TWgtPrj::slotUpdateGUI, Qt::QueuedConnection);
}

void TMainWindow::disconnectPrj()
{
    disconnect(m_prj, nullptr, this, nullptr);
    disconnect(&project(), &TDataPrj::signalChangeData, m_prj, &TWgtPrj::slotUpdateGUI);
    // What is on its way names commands by ids that the next project gives again.
    QCoreApplication::removePostedEvents(m_prj, QEvent::MetaCall);
}

bool TMainWindow::closePrj()
{
    if (project().isOpen() && project().isChanged() && !saveBeforeClosing())
        return false;
    project().clearChanged();
    m_status->showText(QString(), TWgtStatusBar::Plain);
    disconnectPrj();
    m_prj->deleteAll();
    project().clear();
    m_staleForms.clear();
    m_openNode = nullptr;
    m_openPath.clear();
    if (m_cmdSelector)
        m_cmdSelector->slotSelectCmd(-1, -1);
    updateState();
    return true;
}

// Behind what the panels have posted: the current command's line would come last otherwise.
void TMainWindow::report(const QString& text, TWgtStatusBar::Code code)
{
    QMetaObject::invokeMethod(
        this, [this, text, code] { m_status->showText(text, code); }, Qt::QueuedConnection);
}

void TMainWindow::slotSelectCmd()
{
    if (m_staleForms.remove(m_prj->currentCfg()))
        m_prj->current()->refreshForm();
    if (project().isOpen() && !isWaitingForRuns())
        m_status->showText(project().file(), TWgtStatusBar::Plain);
    updateState();
}

/// What stands around the commands has changed, and forms show some of it. Those of tabs behind follow
/// when their tab is shown: making one costs more than all else of a small change.
void TMainWindow::refreshForms()
{
    for (int i = 0; i < m_prj->count(); ++i)
        m_staleForms.insert(m_prj->tabAt(i)->idCfg());
    if (m_staleForms.remove(m_prj->currentCfg()))
        m_prj->current()->refreshForm();
}
