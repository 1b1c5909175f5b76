#include "ui/panels/TWgtPrj.h"

#include "base/keys.h"
#include "core/model/TDataCfg.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "forms/edits/colors.h"
#include "settings/TAppData.h"
#include "ui/panels/TWgtCmdList.h"
#include "ui/setting_colors.h"

#include <QEvent>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {

/// Of a tab that has a state of its own; null for the default colour.
QColor TAppData::*tabColor(const TWgtConfig& tab)
{
    switch (project().cfgStatus(tab.idCfg())) {
    case csRun:
        return &TAppData::ExecTabColorExecute;
    case csPause:
        return &TAppData::ExecTabColorPause;
    case csDone:
        return tab.isStopped() ? &TAppData::ExecTabColorStopped : &TAppData::ExecTabColorSuccess;
    case csFailed:
        return &TAppData::ExecTabColorFailed;
    default:
        return nullptr;
    }
}

} // namespace

TWgtPrj::TWgtPrj(TLineGate& gate, QWidget* parent)
    : QFrame(parent)
    , m_gate(gate)
    , m_tabs(new QTabWidget(this))
{
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    setContextMenuPolicy(Qt::CustomContextMenu);
    m_tabs->setMovable(true);
    m_tabs->hide();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tabs);
    connect(m_tabs, &QTabWidget::currentChanged, this, &TWgtPrj::slotSelectCfg);
    connect(m_tabs->tabBar(), &QTabBar::tabMoved, this, &TWgtPrj::slotMovedCfg);
    connect(this, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& pos) { emit signalContextMenuRequested(mapToGlobal(pos)); });
}

TWgtPrj::~TWgtPrj() = default;

void TWgtPrj::build()
{
    deleteAll();
    const QSignalBlocker blocker(m_tabs);
    const QList<TDataCfg*> configurations = project().cfgList();
    for (const TDataCfg* configuration : configurations)
        insertTab(count(), configuration->id());
    setCurrentIndex(0);
    refreshTabColors();
}

void TWgtPrj::deleteAll()
{
    const QSignalBlocker blocker(m_tabs);
    while (count() > 0)
        dropTab(0);
    m_tabs->hide();
}

/// The tab may stand in a call of its own signal, so it outlives this.
void TWgtPrj::dropTab(int index)
{
    TWgtConfig* tab = tabAt(index);
    tab->blockSignals(true);
    m_tabs->removeTab(index);
    tab->hide();
    tab->setParent(this);
    tab->deleteLater();
}

TWgtConfig* TWgtPrj::insertTab(int index, int id_cfg)
{
    auto* tab = new TWgtConfig(id_cfg, project().cfgDescription(id_cfg), m_gate, m_tabs);
    m_tabs->insertTab(index, tab, literalLabel(project().cfgName(id_cfg)));
    m_tabs->show();
    tab->setOrientation(appData().CfgOrientation != 0);
    tab->setSplitterSizes(appData().WindowMainCfgSplitter);
    tab->setPage(m_page);
    tab->cmdList()->hideUnchecked(m_hideUnchecked);
    tab->fill();
    connect(tab, &TWgtConfig::signalSelectCmd, this, &TWgtPrj::signalSelectCmd);
    connect(tab, &TWgtConfig::signalSetViewParamCmd, this, &TWgtPrj::signalSetViewParamCmd);
    connect(tab, &TWgtConfig::signalSplitterMoved, this, &TWgtPrj::signalSplitterCfgMoved);
    connect(tab, &TWgtConfig::signalContextMenuRequested, this, &TWgtPrj::signalContextMenuRequested);
    return tab;
}

void TWgtPrj::removeTab(int id_cfg)
{
    const int index = m_tabs->indexOf(tabOf(id_cfg));
    if (index < 0)
        return;
    {
        const QSignalBlocker blocker(m_tabs);
        dropTab(index);
        m_tabs->setVisible(count() > 0);
    }
    slotSelectCfg();
}

void TWgtPrj::setTabText(int id_cfg, const QString& name)
{
    const int index = m_tabs->indexOf(tabOf(id_cfg));
    if (index >= 0)
        m_tabs->setTabText(index, literalLabel(name));
}

int TWgtPrj::count() const
{
    return m_tabs->count();
}

int TWgtPrj::currentIndex() const
{
    return m_tabs->currentIndex();
}

void TWgtPrj::setCurrentIndex(int index)
{
    m_tabs->setCurrentIndex(index);
}

TWgtConfig* TWgtPrj::current() const
{
    return tabAt(currentIndex());
}

TWgtConfig* TWgtPrj::tabAt(int index) const
{
    return qobject_cast<TWgtConfig*>(m_tabs->widget(index));
}

TWgtConfig* TWgtPrj::tabOf(int id_cfg) const
{
    for (int i = 0; i < count(); ++i) {
        if (tabAt(i)->idCfg() == id_cfg)
            return tabAt(i);
    }
    return nullptr;
}

int TWgtPrj::currentCfg() const
{
    return current() ? current()->idCfg() : -1;
}

int TWgtPrj::currentCmd() const
{
    return current() ? current()->cmdList()->currentCmd() : -1;
}

int TWgtPrj::currentRow() const
{
    return current() ? current()->cmdList()->currentRow() : -1;
}

void TWgtPrj::setCurrentRow(int row)
{
    if (current())
        current()->cmdList()->setCurrentRow(row);
}

bool TWgtPrj::tableHasFocus() const
{
    return current() && current()->cmdList()->table()->hasFocus();
}

void TWgtPrj::focusTable()
{
    if (current())
        current()->cmdList()->table()->setFocus();
}

template <typename Call> void TWgtPrj::forEachTab(const Call& call)
{
    for (int i = 0; i < count(); ++i)
        call(*tabAt(i));
}

void TWgtPrj::refreshCfg(int id_cfg)
{
    if (TWgtConfig* tab = tabOf(id_cfg))
        tab->refreshAll();
}

void TWgtPrj::refreshAll()
{
    forEachTab([](TWgtConfig& tab) { tab.refreshAll(); });
}

void TWgtPrj::refreshForms()
{
    forEachTab([](TWgtConfig& tab) { tab.refreshForm(); });
}

void TWgtPrj::refreshTabColors()
{
    const QColor back = palette().color(QPalette::Window);
    for (int i = 0; i < count(); ++i) {
        const auto setting = tabColor(*tabAt(i));
        m_tabs->tabBar()->setTabTextColor(i, setting ? shownColor(setting, back) : QColor());
    }
}

void TWgtPrj::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        refreshTabColors();
}

void TWgtPrj::setPage(TWgtConfig::Page page)
{
    m_page = page;
    forEachTab([page](TWgtConfig& tab) { tab.setPage(page); });
}

void TWgtPrj::setOrientation(bool horizontal)
{
    forEachTab([horizontal](TWgtConfig& tab) { tab.setOrientation(horizontal); });
}

void TWgtPrj::setSplitterSizes(const TSplitterPos& sizes)
{
    forEachTab([&sizes](TWgtConfig& tab) { tab.setSplitterSizes(sizes); });
}

void TWgtPrj::hideUnchecked(bool hide)
{
    m_hideUnchecked = hide;
    forEachTab([hide](TWgtConfig& tab) { tab.cmdList()->hideUnchecked(hide); });
}

void TWgtPrj::setTabBarAutoHide(bool hide)
{
    m_tabs->setTabBarAutoHide(hide);
}

void TWgtPrj::reloadColors()
{
    forEachTab([](TWgtConfig& tab) { tab.reloadColors(); });
}

void TWgtPrj::slotUpdateGUI(TCodeView code, const TData& param)
{
    if (code != cvCmdChanged)
        return;
    // Posted: the command may be gone since, and its number may belong to another project.
    const int id_cfg = param.value(key::id_cfg, -1).toInt();
    const int id_cmd = param.value(key::id_cmd, -1).toInt();
    TWgtConfig* tab = tabOf(id_cfg);
    const TDataCmd* command = project().cmdById(id_cmd);
    if (!tab || !command || command->cfgId() != id_cfg)
        return;
    tab->refreshRow(id_cmd);
    if (command->cmd() != cmd::set_prog && command->cmd() != cmd::set_device)
        return;
    // Commands that went with their chip may have been the target of others anywhere.
    if (appData().CmdDelCmdDev)
        refreshAll();
    else
        tab->refreshAll();
    emit signalSelectCmd(currentCfg(), currentCmd());
}

void TWgtPrj::slotSetViewParamPrj()
{
    setPage(TWgtConfig::PageDescription);
}

void TWgtPrj::slotSetViewParamCmd()
{
    setPage(TWgtConfig::PageParam);
}

void TWgtPrj::slotSetViewParamExec()
{
    setPage(TWgtConfig::PageExec);
}

void TWgtPrj::slotSelectCfg()
{
    emit signalSelectCmd(currentCfg(), currentCmd());
}

void TWgtPrj::slotMovedCfg(int from, int to)
{
    // A tab can be dragged while a value is being typed; the new forms know only what is stored.
    if (current())
        current()->commitEdit();
    project().moveCfg(from, to);
    refreshForms();
}
