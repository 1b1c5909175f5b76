#include "ui/main/TMainWindow.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "base/identity.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "ui/TButtonAction.h"
#include "ui/dialogs/TDialogAbout.h"
#include "ui/dialogs/TDialogCmdSelector.h"
#include "ui/dialogs/TDialogManual.h"
#include "ui/dialogs/TDialogSetLanguage.h"
#include "ui/language_files.h"
#include "ui/main/TActionState.h"
#include "ui/panels/TWgtPrj.h"
#include "ui/panels/TWgtPrjList.h"
#include "ui/setup/TDialogSetupSelect.h"
#include "ui/window_helpers.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QMenu>
#include <QSplitter>

TMainWindow::TMainWindow()
    : m_panels(new TMainPanels(m_gate))
    , m_runs([this](int id_cfg) -> IRunView* { return prj()->tabOf(id_cfg); })
    , m_session(*m_panels, m_runs, m_gate)
    , m_prjListActions(*m_panels, m_session)
    , m_prjActions(*m_panels, m_session, m_clipboard)
    , m_cfgActions(*m_panels, m_session, m_clipboard)
    , m_cmdActions(*m_panels, m_session, m_clipboard)
    , m_runActions(*m_panels, m_session, m_runs, m_gate)
    , m_actions(*this, *m_panels, m_gate)
    , m_toolBar(new TMainToolBar(m_actions, *m_panels))
    , m_menus(*this, m_actions)
{
    const TAppData& app = appData();
    setWindowTitle(QLatin1String(identity::shortName));
    placeOnScreen(this, app.WindowMainCenter, app.WindowMainLeft, app.WindowMainTop, app.WindowMainWidth,
                  app.WindowMainHeight);
    m_panels->setToolBar(m_toolBar);
    setCentralWidget(m_panels);
    m_session.openStartList();
    connectSession();
    connectPanels();
    connectRuns();
    m_session.openLastPrj();
    m_panels->applyInterface();
    updateState();
}

TMainWindow::~TMainWindow()
{
    m_session.stopRuns();
    const TAppData& app = appData();
    // What cannot be written now is told by the diagnostic log: the windows are gone.
    if (app.SaveSettingsApp)
        static_cast<void>(app.saveApp());
    if (app.SaveSettingsWindow) {
        takeWindowSettings();
        static_cast<void>(app.saveWindow());
    }
    delete m_cmdSelector;
    m_session.clear();
    disconnect(m_panels, nullptr, this, nullptr);
}

void TMainWindow::connectSession()
{
    connect(&m_session, &TPrjSession::signalOpened, this, [this] { m_clipboard.dropReferences(); });
    connect(&m_session, &TPrjSession::signalShown, this, &TMainWindow::showSession);
    connect(&m_session, &TPrjSession::signalMayClose, this, &TMainWindow::leave);
    // What a run has sent may arrive behind a save: the state of now counts.
    connect(&project(), &TDataPrj::signalChangePrj, this, [this] { slotChangePrj(project().isChanged()); });
}

void TMainWindow::connectPanels()
{
    // Queued: the tree is in the middle of its own change when it tells of a node, and boxes may follow.
    connect(prjList(), &TWgtPrjList::signalProjectSelect, this, &TMainWindow::slotSelectPrj,
            Qt::QueuedConnection);
    connect(prjList(), &TWgtPrjList::signalContextMenuRequested, this,
            &TMainWindow::slotOpenContextMenuPrjList);
    connect(m_panels, &TMainPanels::signalState, this, &TMainWindow::updateState);
    connect(m_panels, &TMainPanels::signalSelectCmd, this, &TMainWindow::slotSelectCmd);
    connect(m_panels, &TMainPanels::signalSetViewParamCmd, this, &TMainWindow::slotSetViewParamCmd);
    connect(m_panels, &TMainPanels::signalSplitterCfgMoved, this, &TMainWindow::slotSplitterCfgMoved);
    connect(m_panels, &TMainPanels::signalContextMenuRequested, this, &TMainWindow::slotOpenContextMenuPrj);
}

void TMainWindow::connectRuns()
{
    connect(&m_runActions, &TRunActions::signalStop, this, &TMainWindow::signalStop);
    connect(&m_runActions, &TRunActions::signalPauseReset, this, &TMainWindow::signalPauseReset);
    connect(this, &TMainWindow::signalStop, &m_runs, &TRunControl::stop);
    connect(this, &TMainWindow::signalPauseReset, &m_runs, &TRunControl::resume);
    connect(&m_runs, &TRunControl::signalStatusChanged, this, &TMainWindow::slotStatusChanged);
    connect(&m_runs, &TRunControl::signalRunEnded, this, &TMainWindow::slotExecFinished);
}

void TMainWindow::updateState()
{
    const TActionState state(*m_panels, m_clipboard, !isWaitingForRuns());
    m_actions.refresh(state, m_clipboard);
    m_toolBar->refresh(state);
    if (m_cmdSelector)
        m_cmdSelector->setAdding(state.holds(TMainActionRow::HasCfg | TMainActionRow::Free));
    if (state.holds(TMainActionRow::PrjOpen))
        prj()->refreshTabColors();
}

void TMainWindow::showSession()
{
    m_actions.takeSettings();
    if (m_cmdSelector)
        m_cmdSelector->slotSelectCmd(prj()->currentCfg(), prj()->currentCmd());
}

void TMainWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    m_session.askToLeave();
    if (m_session.mayClose())
        event->accept();
}

void TMainWindow::leave()
{
    delete m_cmdSelector;
    delete m_manual; // before the settings are stored, so that its place is among them
    close();
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
    msgError(
        langText(Text::FileNotWritten).arg(QDir::toNativeSeparators(fileInAppDir(QStringLiteral("ini")))),
        this);
}

void TMainWindow::applySettings()
{
    project().clearCaches();
    project().bindAll();
    project().validateAll();
    prj()->refreshAll();
    m_panels->refreshForms();
    prj()->setOrientation(appData().CfgOrientation != 0);
    m_actions.takeSettings();
    prjList()->dragMode(appData().PrjListDragDrop);
    prj()->hideUnchecked(appData().HideUncheckCmd);
    m_panels->applyInterface();
    updateState();
}

void TMainWindow::slotSaveSettings()
{
    if (!msgAsk(langText(Text::AskSaveSettings), this))
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
    app.WindowMainPrjSplitter = m_panels->splitter()->sizes();
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
    // At once, whatever becomes of the other settings: a choice that is not there at the next start is none.
    if (appData().saveLanguage())
        msgInfo(langText(Text::LanguageChanged), this);
    else
        tellUnsavedSettings();
}

void TMainWindow::slotHelp()
{
    const QString manual =
        QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("manual.html"));
    if (!m_manual) {
        auto* dialog = new TDialogManual(this);
        if (!dialog->load(manual)) {
            delete dialog;
            msgError(langText(Text::ManualNotOpened).arg(QDir::toNativeSeparators(manual)), this);
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

TDialogCmdSelector* TMainWindow::cmdSelector() const
{
    return m_cmdSelector;
}

void TMainWindow::slotCmdSelector()
{
    if (m_cmdSelector) {
        delete m_cmdSelector;
    } else {
        m_cmdSelector = new TDialogCmdSelector(prj()->currentCfg(), prj()->currentCmd(), button(mbExecute));
        m_cmdSelector->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_cmdSelector, &QObject::destroyed, this, &TMainWindow::slotCmdSelectorClose);
        connect(m_cmdSelector, &TDialogCmdSelector::signalAddCmd, this, &TMainWindow::slotNewCmd);
        connect(prj(), &TWgtPrj::signalSelectCmd, m_cmdSelector, &TDialogCmdSelector::slotSelectCmd);
        m_cmdSelector->showNormal();
    }
    action(maCmdSelector)->setChecked(!m_cmdSelector.isNull());
    button(mbCmdSelector)->setChecked(!m_cmdSelector.isNull());
}

void TMainWindow::slotCmdSelectorClose()
{
    m_cmdSelector.clear();
    action(maCmdSelector)->setChecked(false);
    button(mbCmdSelector)->setChecked(false);
}

void TMainWindow::slotPrjListDragDrop()
{
    m_prjListActions.setDragDrop(action(maPrjListDragDrop)->isChecked());
}

void TMainWindow::slotCmdUncheckHide()
{
    m_cmdActions.hideUnchecked(action(maCmdUncheckHide)->isChecked());
}

void TMainWindow::slotSplitterCfgMoved(const TSplitterPos& splitter)
{
    appData().WindowMainCfgSplitter = splitter;
    prj()->setSplitterSizes(splitter);
}

void TMainWindow::slotOpenContextMenuPrjList(const QPoint& pos)
{
    updateState();
    m_menus.contextPrjList()->popup(pos);
}

void TMainWindow::slotOpenContextMenuPrj(const QPoint& pos)
{
    updateState();
    const bool isCtrl = QApplication::keyboardModifiers() == Qt::ControlModifier;
    (isCtrl ? m_menus.contextCfg() : m_menus.contextCmd())->popup(pos);
}
