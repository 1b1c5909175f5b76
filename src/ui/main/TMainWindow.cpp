#include "ui/main/TMainWindow.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "base/identity.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "ui/TButtonAction.h"
#include "ui/dialogs/TDialogAbout.h"
#include "ui/dialogs/TDialogManual.h"
#include "ui/dialogs/TDialogSetLanguage.h"
#include "ui/language_files.h"
#include "ui/panels/TTreeWidget.h"
#include "ui/panels/TWgtPrj.h"
#include "ui/setup/TDialogSetupSelect.h"
#include "ui/window_helpers.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>

TMainWindow::TMainWindow()
    : m_runs([this](int id_cfg) -> IRunView* { return m_prj->tabOf(id_cfg); })
{
    const TAppData& app = appData();
    setWindowTitle(QLatin1String(identity::shortName));
    placeOnScreen(this, app.WindowMainCenter, app.WindowMainLeft, app.WindowMainTop, app.WindowMainWidth,
                  app.WindowMainHeight);
    createActions();
    createLayout();
    createMenus();
    openStartList();
    connectPanels();
    openLastPrj();
    applyInterface();
    updateState();
}

void TMainWindow::createLayout()
{
    m_prjList = new TWgtPrjList;
    m_prjList->setFrameStyle(QFrame::Box | QFrame::Sunken);
    m_prj = new TWgtPrj(m_gate);
    m_splitter = new QSplitter(Qt::Horizontal);
    m_splitter->addWidget(m_prjList);
    m_splitter->addWidget(m_prj);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes(appData().WindowMainPrjSplitter);
    m_status = new TWgtStatusBar;

    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(createToolBar());
    layout->addWidget(m_splitter, 1);
    layout->addWidget(m_status);
    setCentralWidget(central);
}

void TMainWindow::openStartList()
{
    const TAppData& app = appData();
    if (!app.PrjListFile.isEmpty() && !m_prjList->load(app.PrjListName, app.PrjListFile, app.PrjListExpand))
        m_status->showText(listProblem(), TWgtStatusBar::Red);
    m_prjList->dragMode(app.PrjListDragDrop);
}

void TMainWindow::connectPanels()
{
    // Queued: the tree is in the middle of its own change when it tells of a node, and boxes may follow.
    connect(m_prjList, &TWgtPrjList::signalProjectSelect, this, &TMainWindow::slotSelectPrj,
            Qt::QueuedConnection);
    connect(m_prjList, &TWgtPrjList::signalContextMenuRequested, this,
            &TMainWindow::slotOpenContextMenuPrjList);
    // What a run has sent may arrive behind a save: the state of now counts.
    connect(&project(), &TDataPrj::signalChangePrj, this, [this] { slotChangePrj(project().isChanged()); });

    connect(this, &TMainWindow::signalStop, &m_runs, &TRunControl::stop);
    connect(this, &TMainWindow::signalPauseReset, &m_runs, &TRunControl::resume);
    connect(&m_runs, &TRunControl::signalStatusChanged, this, &TMainWindow::slotStatusChanged);
    connect(&m_runs, &TRunControl::signalRunEnded, this, &TMainWindow::slotExecFinished);
    connect(&m_runs, &TRunControl::signalIdle, this, &TMainWindow::goOnAfterRuns, Qt::QueuedConnection);
    connectPrj();
}

void TMainWindow::openLastPrj()
{
    const TAppData& app = appData();
    if (!app.OpenLastPrj)
        return;
    m_prjList->selectByIndex(app.LastPrj);
    if (m_prjList->hasNode())
        openCurrentNode();
    showPlace(app.LastCfg, app.LastCmd);
}

void TMainWindow::showPlace(int tab, int row)
{
    if (!project().isOpen())
        return;
    if (tab >= 0 && tab < m_prj->count())
        m_prj->setCurrentIndex(tab);
    m_prj->setCurrentRow(row);
    m_prj->focusTable();
}

void TMainWindow::applyInterface()
{
    const TAppData& app = appData();
    // Setting the style that is in force already would polish every widget again.
    if (QApplication::style()->objectName().compare(app.Style, Qt::CaseInsensitive) != 0)
        ::setStyle(app.Style);
    m_prjList->setTitleVisible(app.PrjListShowName);
    m_prjList->setFilterVisible(app.PrjListShowFilter);
    m_prj->reloadColors();
    m_prj->setTabBarAutoHide(app.PrjHideTabCfg);
}

void TMainWindow::slotSettings()
{
    TDialogSetupSelect dialog(this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    applySettings();
    // At once: what was set up must not be lost with a crash of the machine.
    if (appData().SaveSettingsApp && !appData().saveApp())
        tellUnsavedSettings();
}

void TMainWindow::tellUnsavedSettings()
{
    msgError(langText(171).arg(QDir::toNativeSeparators(fileInAppDir(QStringLiteral("ini")))), this);
}

void TMainWindow::applySettings()
{
    project().clearCaches();
    project().bindAll();
    project().validateAll();
    m_prj->refreshAll();
    refreshForms();
    m_prj->setOrientation(appData().CfgOrientation != 0);
    action(maPrjListDragDrop)->setChecked(appData().PrjListDragDrop);
    m_prjList->dragMode(appData().PrjListDragDrop);
    action(maCmdUncheckHide)->setChecked(appData().HideUncheckCmd);
    m_prj->hideUnchecked(appData().HideUncheckCmd);
    applyInterface();
    updateState();
}

void TMainWindow::slotSaveSettings()
{
    if (!msgAsk(langText(83), this))
        return;
    takeWindowSettings();
    const bool saved = appData().saveWindow() && appData().saveApp();
    // Asked for, so it is not left to the log file alone.
    if (!saved)
        tellUnsavedSettings();
}

void TMainWindow::takeWindowSettings()
{
    TAppData& app = appData();
    const QRect place = isMaximized() || isFullScreen() ? normalGeometry() : geometry();
    app.WindowMainLeft = place.left();
    app.WindowMainTop = place.top();
    app.WindowMainWidth = place.width();
    app.WindowMainHeight = place.height();
    app.WindowMainPrjSplitter = m_splitter->sizes();
}

void TMainWindow::slotSetLanguage()
{
    const QMap<QString, QString> fileOfEntry = languageFiles(appData().PathLanguage);
    TDialogSetLanguage dialog(fileOfEntry.keys(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString file = fileOfEntry.value(dialog.selected());
    if (file.isEmpty() || file == appData().Language)
        return;
    appData().Language = file;
    msgInfo(langText(2), this);
}

void TMainWindow::slotHelp()
{
    const QString manual =
        QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("manual.html"));
    if (!m_manual) {
        auto* dialog = new TDialogManual(this);
        if (!dialog->load(manual)) {
            delete dialog;
            msgError(langText(482).arg(QDir::toNativeSeparators(manual)), this);
            return;
        }
        m_manual = dialog;
    }
    m_manual->show();
    m_manual->raise();
    m_manual->activateWindow();
}

void TMainWindow::slotAbout()
{
    TDialogAbout(this).exec();
}

void TMainWindow::slotAboutQt()
{
    QApplication::aboutQt();
}

void TMainWindow::slotQuit()
{
    close();
}

void TMainWindow::setPage(TWgtConfig::Page page)
{
    static constexpr TMainAction actions[] = {maSetViewParamPrj, maSetViewParamCmd, maSetViewParamExec};
    if (!project().isOpen())
        return;
    m_prj->setPage(page);
    action(actions[page])->setChecked(true);
}

void TMainWindow::slotSetViewParamPrj()
{
    setPage(TWgtConfig::PageDescription);
}

void TMainWindow::slotSetViewParamCmd()
{
    setPage(TWgtConfig::PageParam);
}

void TMainWindow::slotSetViewParamExec()
{
    setPage(TWgtConfig::PageExec);
}

void TMainWindow::slotSplitterCfgMoved(const TSplitterPos& splitter)
{
    appData().WindowMainCfgSplitter = splitter;
    m_prj->setSplitterSizes(splitter);
}
