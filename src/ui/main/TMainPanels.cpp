#include "ui/main/TMainPanels.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "ui/panels/TWgtPrj.h"
#include "ui/panels/TWgtPrjList.h"
#include "ui/window_helpers.h"

#include <QApplication>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>

TMainPanels::TMainPanels(TLineGate& gate, QWidget* parent)
    : QWidget(parent)
    , m_layout(new QVBoxLayout(this))
{
    m_prjList = new TWgtPrjList;
    m_prjList->setFrameStyle(QFrame::Box | QFrame::Sunken);
    m_prj = new TWgtPrj(gate);
    m_splitter = new QSplitter(Qt::Horizontal);
    m_splitter->addWidget(m_prjList);
    m_splitter->addWidget(m_prj);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes(appData().WindowMainPrjSplitter);
    m_status = new TWgtStatusBar;

    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_splitter, 1);
    m_layout->addWidget(m_status);
    connectPrj();
}

TMainPanels::~TMainPanels() = default;

void TMainPanels::setToolBar(QWidget* bar)
{
    m_layout->insertWidget(0, bar);
}

void TMainPanels::report(const QString& text, TWgtStatusBar::Code code)
{
    QMetaObject::invokeMethod(
        this, [this, text, code] { m_status->showText(text, code); }, Qt::QueuedConnection);
}

void TMainPanels::act(const std::function<void()>& step)
{
    const QScopedValueRollback<bool> guard(m_isActing, true);
    commitEdit();
    step();
}

void TMainPanels::commitEdit()
{
    // The table is no field, and one without a current row would take its first one as the focus returns.
    if (m_prj->current() && !m_prj->tableHasFocus())
        m_prj->current()->commitEdit();
}

void TMainPanels::applyInterface()
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

void TMainPanels::setPage(TWgtConfig::Page page)
{
    if (!project().isOpen())
        return;
    m_prj->setPage(page);
    emit signalPage(page);
}

void TMainPanels::showPlace(int tab, int row)
{
    if (!project().isOpen())
        return;
    if (tab >= 0 && tab < m_prj->count())
        m_prj->setCurrentIndex(tab);
    m_prj->setCurrentRow(row);
    m_prj->focusTable();
}

bool TMainPanels::isOneCfg() const
{
    return m_prj->count() == 1;
}

void TMainPanels::showFolder(const QString& file)
{
    if (!openFolder(file))
        report(langText(Text::FolderNotShown).arg(absDir(file)), TWgtStatusBar::Red);
}

/// Those of tabs behind follow when their tab is shown: making one costs more than all else of a small
/// change.
void TMainPanels::refreshForms()
{
    for (int i = 0; i < m_prj->count(); ++i)
        m_staleForms.insert(m_prj->tabAt(i)->idCfg());
    refreshStaleForm();
}

void TMainPanels::refreshStaleForm()
{
    if (m_staleForms.remove(m_prj->currentCfg()))
        m_prj->current()->refreshForm();
}

void TMainPanels::connectPrj()
{
    connect(m_prj, &TWgtPrj::signalSelectCmd, this, &TMainPanels::signalSelectCmd);
    connect(m_prj, &TWgtPrj::signalSetViewParamCmd, this, &TMainPanels::signalSetViewParamCmd);
    connect(m_prj, &TWgtPrj::signalSplitterCfgMoved, this, &TMainPanels::signalSplitterCfgMoved);
    connect(m_prj, &TWgtPrj::signalContextMenuRequested, this, &TMainPanels::signalContextMenuRequested);
    connect(&project(), &TDataPrj::signalChangeData, m_prj, &TWgtPrj::slotUpdateGUI, Qt::QueuedConnection);
}

void TMainPanels::disconnectPrj()
{
    disconnect(m_prj, nullptr, this, nullptr);
    disconnect(&project(), &TDataPrj::signalChangeData, m_prj, &TWgtPrj::slotUpdateGUI);
    // What is on its way names commands by ids that the next project gives again.
    QCoreApplication::removePostedEvents(m_prj, QEvent::MetaCall);
}

void TMainPanels::deleteTabs()
{
    disconnectPrj();
    m_prj->deleteAll();
    m_staleForms.clear();
}
