#include "ui/main/TPrjSession.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "core/files/TCtrlProject.h"
#include "core/files/TPrjListFile.h"
#include "core/model/TDataPrj.h"
#include "exec/TLineGate.h"
#include "exec/TRunControl.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"
#include "ui/main/TMainPanels.h"
#include "ui/panels/TTreeWidget.h"
#include "ui/panels/TWgtPrj.h"
#include "ui/panels/TWgtPrjList.h"
#include "ui/window_helpers.h"

#include <QApplication>
#include <QDir>
#include <QScopedValueRollback>
#include <QTimer>

#include <utility>

namespace {

constexpr int retryAfter = 50; // ms

/// Numbers of the texts of a question about changes that could not be stored, and the one that keeps them.
constexpr std::array<Text, 3> loseButtons{Text::ButtonSaveAs, Text::ButtonYes, Text::ButtonNo};
constexpr int keepChanges = 2;

/// The user is in a box, a dialog or a menu, which must not lose its window or its project.
bool isBusy()
{
    return QApplication::activeModalWidget() || QApplication::activePopupWidget();
}

} // namespace

TPrjSession::TPrjSession(TMainPanels& panels, TRunControl& runs, TLineGate& gate)
    : m_panels(panels)
    , m_prj(panels.prj())
    , m_prjList(panels.prjList())
    , m_status(panels.status())
    , m_runs(runs)
    , m_gate(gate)
{
    connect(&m_runs, &TRunControl::signalIdle, this, &TPrjSession::goOnAfterRuns, Qt::QueuedConnection);
}

TPrjSession::~TPrjSession() = default;

void TPrjSession::openStartList()
{
    const TAppData& app = appData();
    if (!app.PrjListFile.isEmpty() && !m_prjList->load(app.PrjListName, app.PrjListFile, app.PrjListExpand))
        m_status->showText(listProblem(), TWgtStatusBar::Red);
    m_prjList->dragMode(app.PrjListDragDrop);
}

void TPrjSession::openLastPrj()
{
    const TAppData& app = appData();
    if (!app.OpenLastPrj)
        return;
    m_prjList->selectByIndex(app.LastPrj);
    if (m_prjList->hasNode())
        openCurrentNode();
    m_panels.showPlace(app.LastCfg, app.LastCmd);
}

void TPrjSession::stopRuns()
{
    while (!m_runs.isIdle()) {
        // Each time: a run may start another one before it sees the stop.
        m_runs.stopAll();
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void TPrjSession::clear()
{
    storeWithoutAsking();
    m_panels.deleteTabs();
    project().clear();
}

void TPrjSession::askToLeave()
{
    m_gate.betweenLines(this, [this] { leaveIfWanted(); });
}

void TPrjSession::leaveIfWanted()
{
    if (m_mayClose || m_isClosing)
        return;
    const QScopedValueRollback<bool> guard(m_isClosing, true);
    m_panels.commitEdit();
    if (!appData().ConfirmQuit || msgAsk(langText(Text::AskQuit), m_panels.window()))
        stopRunsThen([this] { leave(); });
}

void TPrjSession::leave()
{
    const int tab = m_prj->currentIndex();
    const int row = m_prj->currentRow();
    if (!closePrjAndList())
        return;
    TAppData& app = appData();
    // A place in another list would lead to another project when the program starts with its own list.
    const bool isStartList = isSameFile(m_prjList->listFile(), TPrjListFile::path(app.PrjListFile));
    app.LastPrj = isStartList ? m_prjList->indexOfSelected() : -1;
    app.LastCfg = tab;
    app.LastCmd = row;
    m_mayClose = true;
    emit signalMayClose();
}

// The slots that write the log process events, so this may stand on the stack of one, with its worker
// waiting: an event loop in here would never see the end of that run.
void TPrjSession::stopRunsThen(const Step& then, const Step& refused)
{
    if (m_runs.isIdle()) {
        then();
        return;
    }
    if (!isWaitingForRuns() && !msgAsk(langText(Text::AskStopRuns), m_panels.window())) {
        if (refused)
            refused();
        return;
    }
    m_afterRuns = then;
    m_status->showText(langText(Text::WaitingForRuns), TWgtStatusBar::Plain);
    m_runs.stopAll();
    m_panels.updateState();
    // They may have ended during the question.
    QMetaObject::invokeMethod(this, &TPrjSession::goOnAfterRuns, Qt::QueuedConnection);
}

void TPrjSession::goOnAfterRuns()
{
    if (!isWaitingForRuns() || !m_runs.isIdle())
        return;
    if (isBusy()) {
        QTimer::singleShot(retryAfter, this, &TPrjSession::goOnAfterRuns);
        return;
    }
    const Step then = std::exchange(m_afterRuns, nullptr);
    m_status->showText(project().file(), TWgtStatusBar::Plain);
    then();
    m_panels.updateState();
    selectPrjLater();
}

void TPrjSession::selectPrj(const QString& project_file)
{
    m_gate.betweenLines(this, [this, project_file] { goToNode(project_file); });
}

void TPrjSession::goToNode(const QString& project_file)
{
    if (m_mayClose || isWaitingForRuns() || project_file != m_prjList->nodePath())
        return;
    if (isBusy()) {
        QTimer::singleShot(retryAfter, this, [this] { selectPrj(m_prjList->nodePath()); });
        return;
    }
    if (m_prjList->tree()->currentItem() == m_openNode && project_file == m_openPath)
        return;
    m_panels.act([this] { stopRunsThen([this] { openCurrentNode(); }, [this] { backToOpenNode(); }); });
}

/// Another node may have become current in the meantime.
void TPrjSession::selectPrjLater()
{
    QMetaObject::invokeMethod(
        this, [this] { selectPrj(m_prjList->nodePath()); }, Qt::QueuedConnection);
}

void TPrjSession::openCurrentNode()
{
    if (!closePrj()) {
        backToOpenNode();
        return;
    }
    m_openNode = m_prjList->tree()->currentItem();
    m_openPath = m_prjList->nodePath();
    loadPrj(m_openPath);
}

void TPrjSession::backToOpenNode()
{
    if (m_openNode && m_prjList->tree()->nodes().contains(m_openNode))
        m_prjList->restoreCurrent(m_openNode);
    m_panels.updateState();
}

void TPrjSession::loadPrj(const QString& file)
{
    m_panels.disconnectPrj();
    if (!file.isEmpty()) {
        TCtrlProject control;
        const int result = control.open(file, project());
        if (result == 0) {
            emit signalOpened();
            project().setName(m_prjList->nodeName());
            project().clearChanged();
            m_status->showText(file, TWgtStatusBar::Plain);
        } else {
            QString text = QStringLiteral("%1: %2").arg(
                langText(result == 1 ? Text::PrjNotOpened : Text::PrjWrongFormat), file);
            if (appData().Debug == 1) {
                text += QStringLiteral(" [%1]").arg(control.errorText());
                logError(QStringLiteral("debug"),
                         QStringLiteral("TMainWindow::slotSelectPrj: %1").arg(control.errorText()));
            }
            // Behind the report that the project before it has been saved.
            m_panels.report(text, TWgtStatusBar::Red);
        }
    }
    showPrj();
}

void TPrjSession::showPrj()
{
    const TAppData& app = appData();
    m_prj->build();
    m_panels.connectPrj();
    emit signalShown();
    m_prj->setOrientation(app.CfgOrientation != 0);
    m_prj->setSplitterSizes(app.WindowMainCfgSplitter);
    m_prj->setTabBarAutoHide(app.PrjHideTabCfg);
    m_prj->hideUnchecked(app.HideUncheckCmd);
    m_panels.setPage(TWgtConfig::PageDescription);
    m_panels.applyInterface();
    m_panels.updateState();
}

bool TPrjSession::closePrj()
{
    if (project().isOpen() && project().isChanged() && !saveBeforeClosing())
        return false;
    project().clearChanged();
    m_status->showText(QString(), TWgtStatusBar::Plain);
    m_panels.deleteTabs();
    project().clear();
    m_openNode = nullptr;
    m_openPath.clear();
    emit signalShown();
    m_panels.updateState();
    return true;
}

void TPrjSession::showSelected()
{
    m_panels.refreshStaleForm();
    if (project().isOpen() && !isWaitingForRuns())
        m_status->showText(project().file(), TWgtStatusBar::Plain);
    m_panels.updateState();
}

void TPrjSession::openOtherList(const QString& name, const QString& file)
{
    stopRunsThen([this, name, file] {
        if (closePrjAndList())
            loadList(name, file);
    });
}

/// The list as it is on the disk, for changes that the user has given up.
void TPrjSession::reloadList()
{
    stopRunsThen([this, open = m_openPath] {
        if (!closePrj() || !loadList(m_prjList->listName(), m_prjList->listFile()))
            return;
        if (QTreeWidgetItem* node = open.isEmpty() ? nullptr : m_prjList->nodeOf(open))
            m_prjList->tree()->setCurrentItem(node);
    });
}

/// Shows another list, or the same one anew. The project is closed, and changes of the old one are stored.
bool TPrjSession::loadList(const QString& name, const QString& file)
{
    const bool loaded = m_prjList->load(name, file, appData().PrjListExpand);
    if (!loaded) {
        m_panels.report(listProblem(), TWgtStatusBar::Red);
        msgError(langText(Text::PrjListNotLoaded).arg(QDir::toNativeSeparators(file)), m_panels.window());
    }
    m_panels.updateState();
    return loaded;
}

QString TPrjSession::listProblem() const
{
    const QString reason =
        m_prjList->errorText().isEmpty() ? m_prjList->statusText() : m_prjList->errorText();
    return QStringLiteral("%1: %2").arg(m_prjList->listFile(), reason);
}

TPrjSession::Stored TPrjSession::askOutdated(const QString& file)
{
    const QString shown = QDir::toNativeSeparators(file);
    switch (msgChoose(langText(Text::AskOverwrite).arg(shown),
                      {Text::ButtonKeepTheirs, Text::ButtonWriteMine, Text::ButtonCancel}, 2,
                      m_panels.window())) {
    case 0:
        m_panels.report(langText(Text::LeftOnDisk).arg(shown), TWgtStatusBar::Plain);
        return Stored::GivenUp;
    case 1:
        return Stored::Yes;
    default:
        m_panels.report(langText(Text::NotSavedOutdated).arg(shown), TWgtStatusBar::Red);
        return Stored::NotNow;
    }
}

TPrjSession::Stored TPrjSession::storePrj()
{
    const QString file = absFile(m_prjList->listFolder(), project().file());
    const Stored wanted = project().isFileOutdated() ? askOutdated(file) : Stored::Yes;
    if (wanted != Stored::Yes)
        return wanted;
    TCtrlProject control;
    if (!control.save(file, project())) {
        m_panels.report(QStringLiteral("%1 \"%2\": %3")
                            .arg(langText(Text::PrjNotSaved), project().name(), control.errorText()),
                        TWgtStatusBar::Red);
        return Stored::Failed;
    }
    m_panels.report(langText(Text::PrjSaved).arg(project().name()), TWgtStatusBar::Green);
    return Stored::Yes;
}

TPrjSession::Stored TPrjSession::storeList()
{
    const QString file = m_prjList->listFile();
    if (!m_prjList->isChanged())
        return Stored::Yes;
    const Stored wanted = m_prjList->isOutdated() ? askOutdated(file) : Stored::Yes;
    if (wanted != Stored::Yes || m_prjList->save(file))
        return wanted;
    m_panels.report(QStringLiteral("%1: %2").arg(file, m_prjList->errorText()), TWgtStatusBar::Red);
    return Stored::Failed;
}

bool TPrjSession::saveList()
{
    const Stored stored = storeList();
    if (stored == Stored::GivenUp)
        reloadList();
    return stored == Stored::Yes;
}

bool TPrjSession::keepList()
{
    Stored stored = storeList();
    while (stored == Stored::Failed) {
        const QString file = m_prjList->listFile();
        const QString question =
            langText(Text::AskLoseChanges).arg(QDir::toNativeSeparators(file), m_prjList->errorText());
        const int answer = msgChoose(question, loseButtons, keepChanges, m_panels.window());
        if (answer == keepChanges)
            return false;
        if (answer == 1) {
            stored = Stored::GivenUp;
        } else {
            const QString other =
                askNewFile(m_panels.window(), langText(Text::TitlePrjListSaveAs), file, prjListSuffix, true);
            if (!other.isEmpty() && m_prjList->saveCopy(other))
                stored = Stored::Yes;
        }
    }
    return stored != Stored::NotNow;
}

bool TPrjSession::saveBeforeClosing()
{
    if (!appData().AutoSavePrj) {
        const int answer =
            msgChoose(langText(Text::AskSaveChangedPrj).arg(project().name()),
                      {Text::ButtonSave, Text::ButtonDoNotSave, Text::ButtonCancel}, 0, m_panels.window());
        if (answer != 0)
            return answer == 1;
    }
    const Stored stored = storePrj();
    return stored == Stored::Failed ? saveElsewhereBeforeClosing() : stored != Stored::NotNow;
}

bool TPrjSession::saveElsewhereBeforeClosing()
{
    for (;;) {
        const int answer =
            msgChoose(langText(Text::AskCloseUnsaved), loseButtons, keepChanges, m_panels.window());
        if (answer != 0)
            return answer == 1;
        const QString file = askPrjFile();
        if (!file.isEmpty() && copyPrjTo(file))
            return true;
    }
}

bool TPrjSession::closePrjAndList()
{
    if (!keepList())
        return false;
    const QList<TPrjListItem> decided = m_prjList->items();
    if (!closePrj())
        return false;
    // The project may have got another file, and the list a node for it.
    if (m_prjList->items() != decided && !keepList()) {
        selectPrjLater();
        return false;
    }
    m_prjList->dropChanges();
    return true;
}

/// What is still to be stored where no question is possible any more. What somebody else has written
/// stays.
void TPrjSession::storeWithoutAsking()
{
    const auto keep = [](const QString& file, bool isOutdated, const std::function<bool()>& store) {
        if (isOutdated || !store())
            logError(QStringLiteral("Error"), langText(Text::NotSavedOutdated).arg(file));
    };
    if (m_prjList->isChanged()) {
        keep(m_prjList->listFile(), m_prjList->isOutdated(),
             [this] { return m_prjList->save(m_prjList->listFile()); });
    }
    if (appData().AutoSavePrj && project().isOpen() && project().isChanged()) {
        keep(project().file(), project().isFileOutdated(),
             [] { return TCtrlProject().save(project().file(), project()); });
    }
}

void TPrjSession::save()
{
    // A group has no project; nor has a node whose file could not be read.
    if (!project().isOpen())
        return;
    if (appData().ConfirmProjectSave &&
        !msgAsk(langText(Text::AskSavePrj).arg(project().name()), m_panels.window()))
        return;
    if (storePrj() == Stored::GivenUp)
        reopenPrj();
}

void TPrjSession::saveAs()
{
    const QString file = askPrjFile();
    if (file.isEmpty())
        return;
    if (isSameFile(file, project().file())) {
        if (storePrj() == Stored::GivenUp)
            reopenPrj();
        return;
    }
    QTreeWidgetItem* node = copyPrjTo(file);
    if (!node)
        return;
    stopRunsThen([this, node] { reopenNode(node); });
    m_panels.updateState();
}

void TPrjSession::reopenPrj()
{
    stopRunsThen([this] { reopenNode(m_openNode); });
}

/// The project's changes are in the node's file, or the user has given them up.
void TPrjSession::reopenNode(QTreeWidgetItem* node)
{
    if (!m_prjList->tree()->nodes().contains(node))
        return;
    const int tab = m_prj->currentIndex();
    const int row = m_prj->currentRow();
    project().clearChanged();
    m_prjList->restoreCurrent(node);
    openCurrentNode();
    m_panels.showPlace(tab, row);
}

QString TPrjSession::askPrjFile()
{
    return askNewFile(m_panels.window(), langText(Text::ActionPrjSaveAs), project().file(), prjSuffix, true);
}

QTreeWidgetItem* TPrjSession::copyPrjTo(const QString& file)
{
    TCtrlProject control;
    if (!control.saveCopy(file, project())) {
        m_panels.report(
            QStringLiteral("%1 \"%2\": %3").arg(langText(Text::PrjNotSaved), file, control.errorText()),
            TWgtStatusBar::Red);
        return nullptr;
    }
    const bool isInTree = m_prjList->tree()->nodes().contains(m_openNode);
    QTreeWidgetItem* node = m_prjList->nodeFor(file, isInTree ? m_openNode : nullptr);
    // A list that could not be written stays changed, and is asked about when it is left.
    if (storeList() == Stored::Yes)
        m_panels.report(langText(Text::PrjSavedAs).arg(QDir::toNativeSeparators(file)), TWgtStatusBar::Green);
    return node;
}
