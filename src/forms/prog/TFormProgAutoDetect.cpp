#include "forms/prog/TFormProgAutoDetect.h"

#include "base/TCmdCode.h"
#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/TDataPrj.h"
#include "core/model/shared_settings.h"
#include "forms/edits/TComboBox.h"
#include "forms/edits/TWgtDeviceView.h"
#include "forms/edits/align_labels.h"
#include "forms/edits/colors.h"
#include "forms/edits/line_height.h"
#include "forms/edits/name_line.h"
#include "link/lists/AutoList.h"
#include "settings/TAppData.h"

#include <QAction>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int ruleLength = 23;
constexpr int tableHeight = 118;
constexpr int rowHeight = 19;
constexpr int buttonSize = 22;
enum Column { ColumnChip, ColumnCfg, ColumnCount };

/// A place of a route: what is stored, and the name under which the user knows it.
void setCell(QTableWidget* table, int row, int column, const QString& stored, const QString& name)
{
    // What has no name is told by what is stored.
    auto* item = new QTableWidgetItem(name.isEmpty() ? QStringLiteral("? (%1)").arg(stored) : name);
    item->setData(Qt::UserRole, stored);
    item->setToolTip(stored);
    if (name.isEmpty())
        item->setForeground(faultText(table->palette().color(QPalette::Base)));
    table->setItem(row, column, item);
}

QString storedIn(const QTableWidget* table, int row, int column)
{
    const QTableWidgetItem* item = table->item(row, column);
    return item ? item->data(Qt::UserRole).toString() : QString();
}

} // namespace

TFormProgAutoDetect::TFormProgAutoDetect(const TData& params)
    : TFormCommand(params, {key::name, key::route, key::execute, key::stop})
{
    QFormLayout* rows = formRows(nullptr);
    const TNameLine line = addNameLine(rows, langText(Text::LabelFamily), langText(Text::SelectFamily));
    m_family = line.edit;
    m_select = line.button;
    m_execute = modeBox({cmdCode().name(cmd::jamp), cmdCode().name(cmd::execute)});
    m_exist = modeBox({langText(Text::RouteSkip), langText(Text::RouteStop)});
    rows->addRow(langText(Text::LabelRouteBy), m_execute);
    rows->addRow(langText(Text::LabelWithoutRoute), m_exist);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addLayout(rows);
    layout->addWidget(new QLabel(langText(Text::TitleRoutes), this));
    layout->addLayout(routeTable());
    m_view = new TWgtDeviceView(langText(Text::LabelFamilyRemarks), langText(Text::LabelFamilyPins),
                                ruleLength, this);
    layout->addWidget(m_view);
    TFormProgAutoDetect::showParams();
    connectAll();
    slotSelectItemRoute();
}

TFormProgAutoDetect::~TFormProgAutoDetect()
{
    appData().WindowMainCmdAutoColumnDeviceWidth = m_routes->columnWidth(ColumnChip);
}

QComboBox* TFormProgAutoDetect::modeBox(const QStringList& texts)
{
    auto* box = new TComboBox;
    box->addItems(texts);
    return box;
}

QLayout* TFormProgAutoDetect::routeTable()
{
    m_routes = new QTableWidget(0, ColumnCount, this);
    m_routes->setHorizontalHeaderLabels({langText(Text::HeaderRouteDevice), langText(Text::HeaderRouteCfg)});
    m_routes->horizontalHeader()->setStretchLastSection(true);
    m_routes->horizontalHeader()->setHighlightSections(false);
    m_routes->setColumnWidth(ColumnChip, appData().WindowMainCmdAutoColumnDeviceWidth);
    m_routes->verticalHeader()->hide();
    m_routes->verticalHeader()->setDefaultSectionSize(lineHeight(m_routes, rowHeight, 2));
    m_routes->setSelectionMode(QAbstractItemView::SingleSelection);
    m_routes->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_routes->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_routes->setTabKeyNavigation(false);
    m_routes->setWordWrap(false);
    m_routes->setMinimumHeight(tableHeight);
    m_routes->setContextMenuPolicy(Qt::CustomContextMenu);
    markInactive(m_routes);
    makeActions();
    auto* column = new QVBoxLayout;
    column->setSpacing(1);
    for (QAction* action : qAsConst(m_actions)) {
        auto* button = new QToolButton(this);
        button->setDefaultAction(action);
        button->setFixedSize(buttonSize, buttonSize);
        button->setFocusPolicy(Qt::NoFocus);
        column->addWidget(button);
    }
    column->addStretch(1);
    auto* layout = new QHBoxLayout;
    layout->setSpacing(3);
    layout->addWidget(m_routes, 1);
    layout->addLayout(column);
    return layout;
}

void TFormProgAutoDetect::makeActions()
{
    static constexpr struct
    {
        Text text;
        const char* hotKey;
        const char* sign;
        void (TFormProgAutoDetect::*slot)();
    } rows[ActionCount] = {
        {Text::ActionRouteAdd, "HotKeyCmdAutoDetect/Add", "+", &TFormProgAutoDetect::slotAdd},
        {Text::ActionRouteEdit, "HotKeyCmdAutoDetect/Edit", "…", &TFormProgAutoDetect::slotEdit},
        {Text::ActionRouteDelete, "HotKeyCmdAutoDetect/Delete", "−", &TFormProgAutoDetect::slotDelete},
        {Text::ActionRouteMoveUp, "HotKeyCmdAutoDetect/MoveUp", "↑", &TFormProgAutoDetect::slotMoveUp},
        {Text::ActionRouteMoveDown, "HotKeyCmdAutoDetect/MoveDown", "↓", &TFormProgAutoDetect::slotMoveDown},
    };
    for (const auto& row : rows) {
        const QString text = langText(row.text);
        QAction* action = formHost() ? formHost()->action(text, QLatin1String(row.hotKey), m_routes)
                                     : new QAction(text, m_routes);
        action->setIconText(QString::fromUtf8(row.sign));
        connect(action, &QAction::triggered, this, row.slot);
        m_actions.append(action);
    }
}

void TFormProgAutoDetect::connectAll()
{
    const auto changed = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(m_select, &QPushButton::clicked, this, &TFormProgAutoDetect::slotBtnSelectFamily);
    connect(m_execute, changed, this, &TFormProgAutoDetect::slotChangeExecuteMode);
    connect(m_exist, changed, this, &TFormProgAutoDetect::slotChangeExistMode);
    connect(m_routes, &QTableWidget::itemSelectionChanged, this, &TFormProgAutoDetect::slotSelectItemRoute);
    connect(m_routes, &QTableWidget::itemDoubleClicked, this, &TFormProgAutoDetect::slotEdit);
    connect(m_routes, &QTableWidget::customContextMenuRequested, this,
            &TFormProgAutoDetect::slotShowContextMenuRoute);
    connect(m_view, &TWgtDeviceView::signalChangedCmdParam, this, &TFormCommand::signalChangedCmdParam);
}

void TFormProgAutoDetect::showParams()
{
    const TBinding bound = project().binding(idCmd());
    showName(m_family, textParam(key::name), bound.family != nullptr);
    const QSignalBlocker executeBlocker(m_execute);
    const QSignalBlocker existBlocker(m_exist);
    m_execute->setCurrentIndex(isFlagSet(param(key::execute)) ? 1 : 0);
    m_exist->setCurrentIndex(isFlagSet(param(key::stop)) ? 1 : 0);
    showRoutes();
    m_view->showDevice(bound);
    alignLabels(this);
}

void TFormProgAutoDetect::showRoutes()
{
    const TPairStringList routes = TPairStringList::fromText(textParam(key::route));
    m_chips = autoSignatures(devicesFolder(), textParam(key::name));
    const QSignalBlocker blocker(m_routes);
    const int current = m_routes->currentRow();
    m_routes->setRowCount(0);
    m_routes->setRowCount(routes.count());
    for (int row = 0; row < routes.count(); ++row)
        showRoute(row, {routes.key(row), routes.value(row)});
    if (routes.count() > 0)
        m_routes->selectRow(qBound(0, current, routes.count() - 1));
}

void TFormProgAutoDetect::showRoute(int row, const TRoute& route)
{
    bool isNumber = false;
    const int id = route.cfg.toInt(&isNumber);
    setCell(m_routes, row, ColumnChip, route.chip, m_chips.value(route.chip));
    setCell(m_routes, row, ColumnCfg, route.cfg, isNumber ? project().cfgName(id) : QString());
}

TRoute TFormProgAutoDetect::routeAt(int row) const
{
    return {storedIn(m_routes, row, ColumnChip), storedIn(m_routes, row, ColumnCfg)};
}

void TFormProgAutoDetect::storeRoutes(int currentRow)
{
    QStringList routes;
    for (int row = 0; row < m_routes->rowCount(); ++row) {
        const TRoute route = routeAt(row);
        routes << QStringLiteral("%1=%2").arg(route.chip, route.cfg);
    }
    if (currentRow >= 0)
        m_routes->selectRow(currentRow);
    slotSelectItemRoute();
    setParam(key::route, routes.join(QLatin1Char('|')));
    emit signalChangedCmdParam({{key::id_cmd, idCmd()}, {key::route, param(key::route)}});
}

void TFormProgAutoDetect::slotShowContextMenuRoute(QPoint pos)
{
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(m_actions);
    menu->popup(m_routes->viewport()->mapToGlobal(pos));
}

void TFormProgAutoDetect::slotAdd()
{
    const QPointer<TFormProgAutoDetect> self(this);
    TRoute route;
    if (!formHost() || !formHost()->editRoute(route, true, m_chips, window()) || !self)
        return;
    const int row = m_routes->currentRow() + 1;
    m_routes->insertRow(row);
    showRoute(row, route);
    storeRoutes(row);
}

void TFormProgAutoDetect::slotEdit()
{
    const int row = m_routes->currentRow();
    if (row < 0)
        return;
    const QPointer<TFormProgAutoDetect> self(this);
    TRoute route = routeAt(row);
    if (!formHost() || !formHost()->editRoute(route, false, m_chips, window()) || !self)
        return;
    const TRoute before = routeAt(row);
    if (row >= m_routes->rowCount() || (route.chip == before.chip && route.cfg == before.cfg))
        return;
    showRoute(row, route);
    storeRoutes(row);
}

void TFormProgAutoDetect::slotDelete()
{
    const int row = m_routes->currentRow();
    if (row < 0)
        return;
    const QPointer<TFormProgAutoDetect> self(this);
    if (!formHost() || !formHost()->ask(langText(Text::AskDeleteRoute), window()) || !self ||
        row >= m_routes->rowCount())
        return;
    m_routes->removeRow(row);
    storeRoutes(qMin(row, m_routes->rowCount() - 1));
}

void TFormProgAutoDetect::slotMoveUp()
{
    moveRoute(-1);
}

void TFormProgAutoDetect::slotMoveDown()
{
    moveRoute(1);
}

void TFormProgAutoDetect::moveRoute(int delta)
{
    const int from = m_routes->currentRow();
    const int to = from + delta;
    if (from < 0 || to < 0 || to >= m_routes->rowCount())
        return;
    const TRoute moved = routeAt(from);
    showRoute(from, routeAt(to));
    showRoute(to, moved);
    storeRoutes(to);
}

void TFormProgAutoDetect::slotBtnSelectFamily()
{
    const QPointer<TFormProgAutoDetect> self(this);
    const QString before = textParam(key::name);
    const QString name = formHost() ? formHost()->selectFamily(before, window()) : QString();
    if (!self || name.isEmpty() || name == before)
        return;
    setParam(key::name, name);
    setParam(key::route, QString());
    showRoutes();
    slotSelectItemRoute();
    emit signalChangedCmdParam({{key::id_cmd, idCmd()}, {key::name, name}, {key::route, QString()}});
    // The page may have taken another form in the meantime.
    if (self)
        showParams();
}

void TFormProgAutoDetect::slotChangeExecuteMode()
{
    setParam(key::execute, m_execute->currentIndex());
    emit signalChangedCmdParam({{key::id_cmd, idCmd()}, {key::execute, m_execute->currentIndex()}});
}

void TFormProgAutoDetect::slotChangeExistMode()
{
    setParam(key::stop, m_exist->currentIndex());
    emit signalChangedCmdParam({{key::id_cmd, idCmd()}, {key::stop, m_exist->currentIndex()}});
}

void TFormProgAutoDetect::slotSelectItemRoute()
{
    const int row = m_routes->currentRow();
    m_actions.at(Edit)->setEnabled(row >= 0);
    m_actions.at(Delete)->setEnabled(row >= 0);
    m_actions.at(MoveUp)->setEnabled(row > 0);
    m_actions.at(MoveDown)->setEnabled(row >= 0 && row + 1 < m_routes->rowCount());
}
