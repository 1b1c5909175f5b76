#include "ui/panels/TWgtCmdList.h"

#include "base/TCmdCode.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "forms/edits/colors.h"
#include "forms/edits/line_height.h"
#include "forms/edits/mono_font.h"
#include "settings/TAppData.h"
#include "ui/panels/Delegate.h"
#include "ui/panels/TColumnDrag.h"
#include "ui/panels/TStyleCmdList.h"
#include "ui/window_helpers.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int columnCheck = 0;
constexpr int columnName = 1;
constexpr int columnText = 2;
constexpr int columnCount = 3;
constexpr int checkWidth = 20;
constexpr int rowHeight = 19;
/// Of column 0 the id of the command, of column 1 its key word.
constexpr int roleCommand = Qt::UserRole;
/// Of column 0: what the row shows of the command's validity, 1 for the device and 2 for the parameters.
constexpr int roleValidity = Qt::UserRole + 1;

struct TColorRow
{
    QLatin1String word;
    bool TAppData::*enabled;
    QColor TAppData::*color;
};

constexpr TColorRow colorRows[] = {
#define VM_TOOL(word, Name, title, reference)                                                                \
    {cmd::word, &TAppData::CmdEnableColor##Name, &TAppData::CmdColor##Name},
#include "base/tools.def"
    {cmd::set_device, &TAppData::CmdEnableColorSetDevice, &TAppData::CmdColorSetDevice},
    {cmd::auto_detect, &TAppData::CmdEnableColorAutoDetect, &TAppData::CmdColorAutoDetect},
    {cmd::leave, &TAppData::CmdEnableColorLeave, &TAppData::CmdColorLeave},
};

/// In pixels. The default grows until the longest name fits.
int nameWidth(const QFont& font)
{
    constexpr int margins = 10; // of a cell and its grid line
    static const int usual = TAppData().WindowMainCmdListColumnNameWidth;
    const int width = appData().WindowMainCmdListColumnNameWidth;
    const QString longest = cmdCode().name(cmd::security_reg_test_empty);
    return width == usual ? qMax(usual, QFontMetrics(font).horizontalAdvance(longest) + margins) : width;
}

QTableWidgetItem* newItem(Qt::ItemFlags more = {})
{
    auto* item = new QTableWidgetItem;
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | more);
    return item;
}

bool isChecked(const QTableWidgetItem* item)
{
    return item->checkState() == Qt::Checked;
}

void check(QTableWidgetItem* item, bool on)
{
    item->setCheckState(on ? Qt::Checked : Qt::Unchecked);
}

/// As the device words it, from the open form if there is one. A form must not tell of changes while it
/// is asked.
QString textOf(const IDevice& device, const TData& data, QWidget* form)
{
    if (!form)
        return device.paramsText(data, nullptr);
    const QSignalBlocker blocker(form);
    return device.paramsText(data, form);
}

} // namespace

TWgtCmdList::TWgtCmdList(QWidget* parent)
    : QWidget(parent)
    , m_table(new QTableWidget(0, columnCount, this))
{
    makeTable();
    takeColors();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_table);
    connect(m_table, &QTableWidget::currentItemChanged, this, &TWgtCmdList::slotSelectCmd);
    connect(m_table, &QTableWidget::itemClicked, this, &TWgtCmdList::slotSelectCmdClick);
    connect(m_table, &QTableWidget::itemChanged, this, &TWgtCmdList::slotEnabledCmd);
    connect(m_table, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        emit signalContextMenuRequested(m_table->viewport()->mapToGlobal(pos));
    });
}

TWgtCmdList::~TWgtCmdList() = default;

void TWgtCmdList::makeTable()
{
    m_table->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    m_table->setFont(monoFont());
    m_table->setShowGrid(true);
    m_table->setWordWrap(false);
    m_table->setTabKeyNavigation(false);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    m_table->setItemDelegateForColumn(columnText, new Delegate(m_table));

    QHeaderView* rows = m_table->verticalHeader();
    // The header's own minimum would win over the height below it.
    const int height = lineHeight(m_table, rowHeight, 2);
    rows->setMinimumSectionSize(height);
    rows->setDefaultSectionSize(height);
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->hide();
    QHeaderView* columns = m_table->horizontalHeader();
    columns->setMinimumSectionSize(checkWidth);
    columns->setSectionResizeMode(columnCheck, QHeaderView::Fixed);
    columns->setSectionResizeMode(columnText, QHeaderView::Stretch);
    columns->hide();
    m_table->setColumnWidth(columnCheck, checkWidth);
    m_table->setColumnWidth(columnName, nameWidth(m_table->font()));
    auto* drag = new TColumnDrag(m_table, columnName);
    connect(drag, &TColumnDrag::signalMoved, this,
            [](int width) { appData().WindowMainCmdListColumnNameWidth = width; });
    m_table->installEventFilter(this);
    markInactive(m_table);
    takeStyle();
}

/// The names may have got another width in another tab.
void TWgtCmdList::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_table->setColumnWidth(columnName, nameWidth(m_table->font()));
}

void TWgtCmdList::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    markInactive(m_table); // a view with a style sheet does not follow by itself
    reloadColors();
}

/// The space bar checks the current row from any of its cells, not from the one with the box only.
bool TWgtCmdList::eventFilter(QObject* object, QEvent* event)
{
    if (object == m_table && event->type() == QEvent::KeyPress) {
        const auto* keyEvent = static_cast<QKeyEvent*>(event);
        QTableWidgetItem* item = m_table->item(m_table->currentRow(), columnCheck);
        if (keyEvent->key() == Qt::Key_Space && keyEvent->modifiers() == Qt::NoModifier && item) {
            check(item, !isChecked(item));
            return true;
        }
    }
    return QWidget::eventFilter(object, event);
}

/// Follows the style of the settings: a style over another one does not do so by itself.
void TWgtCmdList::takeStyle()
{
    TStyleCmdList* style = TStyleCmdList::shared();
    if (m_style == style)
        return;
    m_style = style;
    m_table->setStyle(style);
}

void TWgtCmdList::takeColors()
{
    m_colors.clear();
    for (const TColorRow& row : colorRows)
        m_colors.insert(row.word, {appData().*row.enabled, appData().*row.color});
}

void TWgtCmdList::fill(int id_cfg)
{
    {
        const QSignalBlocker blocker(m_table);
        m_table->setUpdatesEnabled(false);
        m_table->setRowCount(0);
        m_highlighted = -1;
        m_revealed = -1;
        const QList<TDataCmd*> commands = project().cmdsOfCfg(id_cfg);
        m_table->setRowCount(commands.size());
        for (int row = 0; row < commands.size(); ++row)
            setRow(row, *commands.at(row));
        m_table->setUpdatesEnabled(true);
        setCurrentRow(firstShownRow(0));
    }
    m_announced = -1;
    announceCurrent();
}

void TWgtCmdList::setRow(int row, const TDataCmd& command)
{
    m_table->setItem(row, columnCheck, newItem(Qt::ItemIsUserCheckable));
    m_table->setItem(row, columnName, newItem());
    m_table->setItem(row, columnText, newItem());
    m_table->item(row, columnCheck)->setData(roleCommand, command.id());
    const TData values = command.toData();
    check(m_table->item(row, columnCheck), values.value(key::status).toBool());
    showCommand(row, values, command.device(), nullptr);
    showColor(row);
    showHidden(row);
}

void TWgtCmdList::showCommand(int row, const TData& values, const IDevice* device, QWidget* form)
{
    const QString word = values.value(key::cmd).toString();
    m_table->item(row, columnName)->setData(roleCommand, word);
    m_table->item(row, columnName)->setText(device ? device->commandTitle(values) : cmdCode().name(word));
    m_table->item(row, columnText)->setText(device ? textOf(*device, values, form) : QString());
    showValidity(row, values.value(key::valid_dev).toBool(), values.value(key::valid_param).toBool());
}

void TWgtCmdList::showValidity(int row, bool validDev, bool validParam)
{
    const int state = (validDev ? 1 : 0) + (validParam ? 2 : 0);
    QTableWidgetItem* first = m_table->item(row, columnCheck);
    const QVariant shown = first->data(roleValidity);
    if (shown.isValid() && shown.toInt() == state)
        return;
    first->setData(roleValidity, state);
    showTextColor(row);
    showFont(row);
}

void TWgtCmdList::showFont(int row)
{
    const QTableWidgetItem* first = m_table->item(row, columnCheck);
    const bool isHighlighted = m_highlighted >= 0 && m_highlighted == first->data(roleCommand).toInt();
    QFont font = m_table->font();
    font.setStrikeOut(!(first->data(roleValidity).toInt() & 1));
    font.setWeight(isHighlighted ? QFont::Bold : QFont::Normal);
    font.setItalic(isHighlighted);
    for (int column = 0; column < columnCount; ++column)
        m_table->item(row, column)->setFont(font);
}

void TWgtCmdList::showColor(int row)
{
    const QString word = m_table->item(row, columnName)->data(roleCommand).toString();
    const TColor own = m_colors.value(word);
    const QColor color = own.enabled ? own.color : m_table->palette().color(QPalette::Base);
    for (int column = 0; column < columnCount; ++column)
        m_table->item(row, column)->setBackground(color);
    showTextColor(row);
}

void TWgtCmdList::showTextColor(int row)
{
    constexpr int valid = 3;
    const QTableWidgetItem* first = m_table->item(row, columnCheck);
    const QColor usual = m_table->palette().color(QPalette::Text);
    const QBrush back = first->background();
    QBrush brush;
    if (first->data(roleValidity).toInt() != valid)
        brush =
            faultText(back.style() == Qt::NoBrush ? m_table->palette().color(QPalette::Base) : back.color());
    else if (back.style() != Qt::NoBrush && readableOn(back.color(), usual) != usual)
        brush = readableOn(back.color(), usual);
    for (int column = 0; column < columnCount; ++column)
        m_table->item(row, column)->setForeground(brush);
}

void TWgtCmdList::showHidden(int row)
{
    const bool hide = m_hideUnchecked && !isChecked(m_table->item(row, columnCheck)) &&
                      (m_revealed < 0 || cmdAt(row) != m_revealed);
    if (m_table->isRowHidden(row) != hide)
        m_table->setRowHidden(row, hide);
}

void TWgtCmdList::refreshRow(int row, QWidget* openForm, int id_form)
{
    const TDataCmd* command = row >= 0 && row < rowCount() ? project().cmdById(cmdAt(row)) : nullptr;
    if (!command)
        return;
    const QSignalBlocker blocker(m_table);
    showCommand(row, command->toData(), command->device(), command->id() == id_form ? openForm : nullptr);
}

void TWgtCmdList::refreshAll(QWidget* openForm, int id_form)
{
    m_table->setUpdatesEnabled(false);
    for (int row = 0; row < rowCount(); ++row)
        refreshRow(row, openForm, id_form);
    m_table->setUpdatesEnabled(true);
}

void TWgtCmdList::refreshValidity()
{
    const QSignalBlocker blocker(m_table);
    m_table->setUpdatesEnabled(false);
    for (int row = 0; row < rowCount(); ++row) {
        if (const TDataCmd* command = project().cmdById(cmdAt(row)))
            showValidity(row, command->validDev(), command->validParam());
    }
    m_table->setUpdatesEnabled(true);
}

void TWgtCmdList::insertRow(int row, int id_cmd)
{
    const TDataCmd* command = project().cmdById(id_cmd);
    if (!command)
        return;
    const QSignalBlocker blocker(m_table);
    const int place = qBound(0, row, rowCount());
    m_table->insertRow(place);
    setRow(place, *command);
}

void TWgtCmdList::removeRow(int row)
{
    {
        // On its way out the current row hands over to neighbours that may leave as well.
        const QSignalBlocker blocker(m_table);
        m_table->removeRow(row);
        leaveHiddenRow();
    }
    announceCurrent();
}

void TWgtCmdList::moveRow(int row, int delta)
{
    if (row != currentRow())
        setCurrentRow(row);
    moveTableRow(m_table, delta);
    const int target = currentRow();
    if (row >= 0 && row < rowCount() && target >= 0) {
        showHidden(row);
        showHidden(target);
    }
}

void TWgtCmdList::setChecked(bool on)
{
    {
        const QSignalBlocker blocker(m_table);
        m_table->setUpdatesEnabled(false);
        for (int row = 0; row < rowCount(); ++row) {
            check(m_table->item(row, columnCheck), on);
            showHidden(row);
        }
        leaveHiddenRow();
        m_table->setUpdatesEnabled(true);
    }
    announceCurrent();
}

void TWgtCmdList::reloadColors()
{
    takeColors();
    takeStyle();
    const QSignalBlocker blocker(m_table);
    m_table->setUpdatesEnabled(false);
    for (int row = 0; row < rowCount(); ++row)
        showColor(row);
    m_table->setUpdatesEnabled(true);
}

void TWgtCmdList::hideUnchecked(bool hide)
{
    // The user, not an action that only brings all up to date, hides the current row as well.
    if (hide != m_hideUnchecked)
        m_revealed = -1;
    m_hideUnchecked = hide;
    {
        const QSignalBlocker blocker(m_table);
        m_table->setUpdatesEnabled(false);
        for (int row = 0; row < rowCount(); ++row)
            showHidden(row);
        leaveHiddenRow();
        m_table->setUpdatesEnabled(true);
    }
    announceCurrent();
}

/// Nobody must delete or change a row that is not to be seen.
void TWgtCmdList::leaveHiddenRow()
{
    const int row = currentRow();
    if (row >= 0 && m_table->isRowHidden(row))
        setCurrentRow(firstShownRow(row));
}

int TWgtCmdList::firstShownRow(int from) const
{
    for (int row = qMax(0, from); row < rowCount(); ++row) {
        if (!m_table->isRowHidden(row))
            return row;
    }
    for (int row = qMin(from, rowCount()) - 1; row >= 0; --row) {
        if (!m_table->isRowHidden(row))
            return row;
    }
    return -1;
}

void TWgtCmdList::highlight(int id_cmd)
{
    const int before = m_highlighted;
    m_highlighted = id_cmd;
    if (before == id_cmd)
        return;
    const QSignalBlocker blocker(m_table);
    for (const int id : {before, id_cmd}) {
        const int row = rowOf(id);
        if (row >= 0)
            showFont(row);
    }
}

int TWgtCmdList::rowCount() const
{
    return m_table->rowCount();
}

int TWgtCmdList::currentRow() const
{
    return m_table->currentRow();
}

void TWgtCmdList::setCurrentRow(int row)
{
    if (row < 0) {
        m_table->setCurrentItem(nullptr);
    } else if (row < rowCount()) {
        if (m_table->isRowHidden(row))
            reveal(cmdAt(row));
        m_table->setCurrentCell(row, columnCheck);
    }
}

/// Shows a row that would be hidden, instead of the one before; -1 for none.
void TWgtCmdList::reveal(int id_cmd)
{
    for (const int id : {std::exchange(m_revealed, id_cmd), id_cmd}) {
        const int row = rowOf(id);
        if (row >= 0)
            showHidden(row);
    }
}

int TWgtCmdList::currentCmd() const
{
    return cmdAt(currentRow());
}

int TWgtCmdList::cmdAt(int row) const
{
    const QTableWidgetItem* item = m_table->item(row, columnCheck);
    return item ? item->data(roleCommand).toInt() : -1;
}

int TWgtCmdList::rowOf(int id_cmd) const
{
    if (id_cmd < 0)
        return -1;
    for (int row = 0; row < rowCount(); ++row) {
        if (cmdAt(row) == id_cmd)
            return row;
    }
    return -1;
}

void TWgtCmdList::slotSelectCmd(QTableWidgetItem*)
{
    announceCurrent();
}

/// The current cell may change within its row: that is no other command.
void TWgtCmdList::announceCurrent()
{
    const int id_cmd = currentCmd();
    if (m_revealed >= 0 && m_revealed != id_cmd)
        reveal(-1);
    if (id_cmd == m_announced)
        return;
    m_announced = id_cmd;
    emit signalSelectCmd(id_cmd);
}

void TWgtCmdList::slotSelectCmdClick(QTableWidgetItem*)
{
    emit signalClikedCmd();
}

void TWgtCmdList::slotEnabledCmd(QTableWidgetItem* item)
{
    if (!item || item->column() != columnCheck)
        return;
    const TDataCmd* command = project().cmdById(item->data(roleCommand).toInt());
    if (!command || command->status() == isChecked(item))
        return;
    emit signalEnabledCmd(command->id(), isChecked(item));
    m_revealed = -1;
    {
        const QSignalBlocker blocker(m_table);
        showHidden(item->row());
        leaveHiddenRow();
    }
    announceCurrent();
}
