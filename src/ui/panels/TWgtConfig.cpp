#include "ui/panels/TWgtConfig.h"

#include "base/TCmdCode.h"
#include "base/TLang.h"
#include "base/helpers.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/IFormFactory.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "core/model/references.h"
#include "exec/TLineGate.h"
#include "forms/TFormCommand.h"
#include "forms/edits/line_height.h"
#include "settings/TAppData.h"
#include "ui/panels/TWgtCmdList.h"
#include "ui/panels/TWgtLogExec.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTabWidget>
#include <QTextEdit>

namespace {

constexpr int titleHeight = 19;
constexpr int formMargin = 10;
/// By TWgtConfig::Page.
constexpr Text titleTexts[] = {Text::PageDescription, Text::PageParameters, Text::PageExecution};

QLabel* newTitle(QWidget* parent)
{
    auto* title = new QLabel(parent);
    title->setFixedHeight(lineHeight(title, titleHeight, 2));
    title->setFrameShape(QFrame::NoFrame);
    title->setAutoFillBackground(true);
    QPalette palette = title->palette();
    palette.setColor(QPalette::WindowText, Qt::white);
    palette.setColor(QPalette::Window, QColor(100, 100, 100));
    title->setPalette(palette);
    return title;
}

TData paramsOf(const TDataCmd& command)
{
    TData data = command.toData();
    TDataCmd::removeReserved(data);
    return data;
}

} // namespace

TWgtConfig::TWgtConfig(int id_cfg, const QString& description, TLineGate& gate, QWidget* parent)
    : QWidget(parent)
    , m_idCfg(id_cfg)
    , m_gate(gate)
    , m_cmdList(new TWgtCmdList(this))
    , m_splitter(new QSplitter(this))
{
    makePages(description);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_splitter);
    m_splitter->addWidget(m_cmdList);
    m_splitter->addWidget(makePageHolder());
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 0);
    setPage(PageDescription);

    connect(m_splitter, &QSplitter::splitterMoved, this, &TWgtConfig::slotSplitterMoved);
    connect(m_cmdList, &TWgtCmdList::signalSelectCmd, this, &TWgtConfig::slotSelectCmd);
    connect(m_cmdList, &TWgtCmdList::signalClikedCmd, this, &TWgtConfig::slotSelectCmdClick);
    connect(m_cmdList, &TWgtCmdList::signalEnabledCmd, this, &TWgtConfig::slotEnabledCmd);
    connect(m_cmdList, &TWgtCmdList::signalContextMenuRequested, this,
            &TWgtConfig::signalContextMenuRequested);
    connect(m_description, &QTextEdit::textChanged, this, &TWgtConfig::slotPrjDescChanged);
}

TWgtConfig::~TWgtConfig()
{
    dropForm();
}

void TWgtConfig::makePages(const QString& description)
{
    m_description = new QTextEdit;
    m_description->setAcceptRichText(false);
    m_description->setPlainText(decodeText(description));
    m_descPage = new QTabWidget(this);
    m_descPage->setTabBarAutoHide(true);
    m_descPage->addTab(m_description, QString());
    m_paramPage = new QWidget(this);
    m_paramLayout = new QHBoxLayout(m_paramPage);
    m_paramLayout->setContentsMargins(formMargin, formMargin, formMargin, formMargin);
    m_log = new TWgtLogExec(this);
    for (QWidget* page : {static_cast<QWidget*>(m_descPage), m_paramPage, static_cast<QWidget*>(m_log)})
        page->hide();
}

QWidget* TWgtConfig::makePageHolder()
{
    auto* holder = new QWidget(m_splitter);
    m_title = newTitle(holder);
    m_area = new QScrollArea(holder);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->setWidgetResizable(true);
    auto* layout = new QVBoxLayout(holder);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_title);
    layout->addWidget(m_area);
    return holder;
}

int TWgtConfig::idCfg() const
{
    return m_idCfg;
}

QWidget* TWgtConfig::pageWidget(Page page) const
{
    switch (page) {
    case PageParam:
        return m_paramPage;
    case PageExec:
        return m_log;
    case PageDescription:
        break;
    }
    return m_descPage;
}

void TWgtConfig::setPage(Page page)
{
    m_title->setText(QStringLiteral(" %1").arg(langText(titleTexts[page])));
    m_page = page;
    QWidget* widget = pageWidget(page);
    if (m_area->widget() == widget)
        return;
    // Taken first, for the area would delete it.
    if (QWidget* before = m_area->takeWidget()) {
        before->setParent(this);
        before->hide();
    }
    m_area->setWidget(widget);
    widget->show();
}

TWgtConfig::Page TWgtConfig::page() const
{
    return m_page;
}

void TWgtConfig::setOrientation(bool horizontal)
{
    m_splitter->setOrientation(horizontal ? Qt::Horizontal : Qt::Vertical);
}

void TWgtConfig::setSplitterSizes(const TSplitterPos& sizes)
{
    const QSignalBlocker blocker(m_splitter);
    m_splitter->setSizes(sizes);
}

void TWgtConfig::fill()
{
    dropForm();
    m_cmdList->fill(m_idCfg);
}

void TWgtConfig::refreshAll()
{
    m_cmdList->refreshAll(m_form, m_idForm);
}

void TWgtConfig::refreshRow(int id_cmd)
{
    const TDataCmd* command = project().cmdById(id_cmd);
    if (!command || command->cfgId() != m_idCfg)
        return;
    if (id_cmd == m_idForm)
        bringFormUpToDate(*command);
    m_cmdList->refreshRow(m_cmdList->rowOf(id_cmd), m_form, m_idForm);
}

/// A form that has told the change itself shows it already; one that is handed its own text again
/// would lose the cursor of the one who types.
void TWgtConfig::bringFormUpToDate(const TDataCmd& command)
{
    const TData params = paramsOf(command);
    if (!m_form || params == m_formParams)
        return;
    IFormFactory* factory = formFactory();
    if (factory && factory->updateForm(m_form, command.toData())) {
        m_formParams = params;
        return;
    }
    // A new form would take away what is being typed into this one.
    const QWidget* focus = QApplication::focusWidget();
    if (!focus || !m_form->isAncestorOf(focus))
        refreshForm();
}

void TWgtConfig::refreshForm()
{
    dropForm();
    makeForm(m_cmdList->currentCmd());
    highlightTarget(m_cmdList->currentCmd()); // the setting may have changed
}

void TWgtConfig::makeForm(int id_cmd)
{
    const TBinding bound = project().binding(id_cmd);
    if (!bound.device)
        return;
    m_form = bound.device->createForm(bound.command->toData());
    if (!m_form)
        return;
    m_idForm = id_cmd;
    m_formParams = paramsOf(*bound.command);
    if (auto* form = qobject_cast<TFormCommand*>(m_form))
        form->takeKept(m_kept.value(id_cmd));
    m_paramLayout->addWidget(m_form);
    connect(m_form, SIGNAL(signalChangedCmdParam(TData)), this, SLOT(slotChangedCmdParam(TData)));
}

/// The form may stand in a call of its own signal, so it outlives this; hiding takes the focus from its
/// edits, which must not store anything any more.
void TWgtConfig::dropForm()
{
    if (QWidget* form = m_form) {
        if (const auto* own = qobject_cast<TFormCommand*>(form))
            m_kept.insert(m_idForm, own->kept());
        m_form.clear();
        form->disconnect(this);
        form->blockSignals(true);
        m_paramLayout->removeWidget(form);
        form->hide();
        form->deleteLater();
    }
    m_idForm = -1;
    m_formParams.clear();
}

void TWgtConfig::highlightTarget(int id_cmd)
{
    const TDataCmd* command = project().cmdById(id_cmd);
    const bool isJump = command && command->cmd() == cmd::jamp && appData().CmdEnableHLJamp;
    m_cmdList->highlight(isJump ? referenceId(command->param(key::to_cmd)) : -1);
}

void TWgtConfig::commitEdit()
{
    const QPointer<QWidget> focus = QApplication::focusWidget();
    if (!focus || !isAncestorOf(focus))
        return;
    // Leaving a field stores what stands in it; afterwards the user may type on.
    focus->clearFocus();
    if (focus && focus->isVisible())
        focus->setFocus(Qt::OtherFocusReason);
}

void TWgtConfig::reloadColors()
{
    m_cmdList->reloadColors();
    m_log->reloadColors();
}

QObject* TWgtConfig::receiver()
{
    return this;
}

void TWgtConfig::runBegins()
{
    m_log->lock(true);
    if (appData().ExecClearWindow)
        m_log->clear();
    m_isStopped = false;
    m_log->setStopped(false);
}

void TWgtConfig::runStopped()
{
    m_isStopped = true;
    m_log->setStopped(true);
}

void TWgtConfig::runEnded()
{
    m_log->lock(false);
}

void TWgtConfig::slotExecEventText(TCodeExec code, const QString& text1, const QString& text2)
{
    const QPointer<TWgtConfig> self(this);
    m_gate.letEventsIn();
    if (!self)
        return;
    m_log->addEvent(code, text1, text2);
    m_gate.letEventsIn();
}

void TWgtConfig::slotExecEventText(TCodeExec code, const QString& text1)
{
    slotExecEventText(code, text1, QString());
}

void TWgtConfig::slotExecEventProc(int procent)
{
    const QPointer<TWgtConfig> self(this);
    m_gate.letEventsIn();
    if (!self)
        return;
    m_log->setPercent(procent);
    m_gate.letEventsIn();
}

void TWgtConfig::slotSplitterMoved()
{
    emit signalSplitterMoved(m_splitter->sizes());
}

void TWgtConfig::slotSelectCmd(int id_cmd)
{
    dropForm();
    makeForm(id_cmd);
    highlightTarget(id_cmd);
    const QPointer<TWgtConfig> self(this);
    if (id_cmd >= 0)
        emit signalSetViewParamCmd();
    if (self)
        emit signalSelectCmd(m_idCfg, id_cmd);
}

void TWgtConfig::slotSelectCmdClick()
{
    emit signalSetViewParamCmd();
}

void TWgtConfig::slotEnabledCmd(int id_cmd, bool status)
{
    const TDataCmd* command = project().cmdById(id_cmd);
    if (!command || command->status() == status)
        return;
    project().setCmdStatus(id_cmd, status);
    m_cmdList->refreshValidity();
}

void TWgtConfig::slotChangedCmdParam(const TData& param)
{
    const int id_cmd = param.value(key::id_cmd, -1).toInt();
    const TDataCmd* command = project().cmdById(id_cmd);
    if (!command || command->cfgId() != m_idCfg)
        return;
    const IDevice* device = command->device();
    const TData stored = device ? device->normalizeParams(param) : param;
    const QString chip = command->param(key::device).toString();
    project().setCmdParam(id_cmd, stored);
    if (id_cmd == m_idForm)
        m_formParams = paramsOf(*command);
    if (command->cmd() == cmd::jamp)
        highlightTarget(id_cmd);
    const bool isOtherChip =
        command->cmd() == cmd::set_device && chip != command->param(key::device).toString();
    if (isOtherChip && appData().CmdDelCmdDev)
        deleteUnfit(id_cmd);
}

/// The commands behind a set_device, up to the next chip or programmer, that its chip does not know.
void TWgtConfig::deleteUnfit(int id_cmd)
{
    const QList<TDataCmd*> commands = project().cmdsOfCfg(m_idCfg);
    QList<int> unfit;
    for (int row = project().rowInCfg(m_idCfg, id_cmd) + 1; row < commands.size(); ++row) {
        const TDataCmd* command = commands.at(row);
        const QString word = command->cmd();
        if (word == cmd::set_prog || word == cmd::set_device)
            break;
        if (!command->validDev() && !TCmdCode::isTools(word) && !TCmdCode::isProg(word))
            unfit.append(command->id());
    }
    if (unfit.isEmpty())
        return;
    for (const int id : qAsConst(unfit))
        project().removeCmd(id);
    project().bindAll();
    removeStrayRows();
    refreshAll();
}

void TWgtConfig::removeStrayRows()
{
    for (int row = m_cmdList->rowCount() - 1; row >= 0; --row) {
        if (!project().cmdById(m_cmdList->cmdAt(row)))
            m_cmdList->removeRow(row);
    }
}

void TWgtConfig::slotPrjDescChanged()
{
    const QString text = encodeText(m_description->toPlainText());
    if (text != project().cfgDescription(m_idCfg))
        project().setCfgDescription(m_idCfg, text);
}
