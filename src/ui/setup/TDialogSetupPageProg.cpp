#include "ui/setup/TDialogSetupPageProg.h"

#include "base/TLang.h"
#include "core/model/TDataPrj.h"
#include "forms/edits/TComboBox.h"
#include "forms/edits/colors.h"
#include "settings/TAppData.h"
#include "ui/TActionWidget.h"
#include "ui/dialog_parts.h"
#include "ui/setup/TDialogSetupPageProgAliasEdit.h"
#include "ui/setup/TDialogSetupPageProgTypeEdit.h"
#include "ui/window_helpers.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTableWidget>

namespace {

using Page = TDialogSetupPageProg;

enum AliasColumn { ColumnEnabled, ColumnAlias, ColumnPort, ColumnAliasType };
enum TypeColumn { ColumnType, ColumnFile };
enum ListAction { Add, Edit, Delete, MoveUp, MoveDown };

/// What can be done to the rows of either table.
struct ActionRow
{
    const char* key; ///< of the hot key
    Text aliasText;
    void (Page::*alias)();
    Text typeText;
    void (Page::*type)();
};

constexpr ActionRow actionRows[] = {
    {"Add", Text::ActionAliasAdd, &Page::slotAliasAdd, Text::ActionTypeAdd, &Page::slotTypeAdd},
    {"Edit", Text::ActionAliasEdit, &Page::slotAliasEdit, Text::ActionTypeEdit, &Page::slotTypeEdit},
    {"Delete", Text::ActionAliasDelete, &Page::slotAliasDelete, Text::ActionTypeDelete,
     &Page::slotTypeDelete},
    {"MoveUp", Text::ActionAliasMoveUp, &Page::slotAliasMoveUp, Text::ActionTypeMoveUp,
     &Page::slotTypeMoveUp},
    {"MoveDown", Text::ActionAliasMoveDown, &Page::slotAliasMoveDown, Text::ActionTypeMoveDown,
     &Page::slotTypeMoveDown},
};

void updateActions(const QList<QAction*>& actions, const QTableWidget* table)
{
    const int row = table->currentRow();
    actions[Edit]->setEnabled(row >= 0);
    actions[Delete]->setEnabled(row >= 0);
    actions[MoveUp]->setEnabled(row > 0);
    actions[MoveDown]->setEnabled(row >= 0 && row < table->rowCount() - 1);
}

int appendRow(QTableWidget* table)
{
    const int row = table->rowCount();
    table->insertRow(row);
    return row;
}

} // namespace

TDialogSetupPageProg::TDialogSetupPageProg(QWidget* parent)
    : IDialogSetupPage(Text::SetupProgs, parent)
    , m_splitter(new QSplitter(Qt::Vertical, this))
{
    makeTables();
    makeActions();
    m_splitter->addWidget(makePart(Text::TitleAliases, m_aliases, m_aliasActions, makeDefaultLine()));
    m_splitter->addWidget(makePart(Text::TitleTypes, m_types, m_typeActions, nullptr));
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setSizes(appData().WindowSettingsProgSplitter);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_splitter);
    fill();
    connect(m_aliases, &QTableWidget::itemChanged, this, &Page::slotListAliasChanged);
    connect(m_aliases, &QTableWidget::itemSelectionChanged, this, &Page::slotSelectItemAlias);
    connect(m_types, &QTableWidget::itemSelectionChanged, this, &Page::slotSelectItemType);
    connect(m_aliases, &QWidget::customContextMenuRequested, this, &Page::slotShowContextMenuAlias);
    connect(m_types, &QWidget::customContextMenuRequested, this, &Page::slotShowContextMenuType);
    connect(m_aliases, &QTableWidget::itemDoubleClicked, this, [this](const QTableWidgetItem* item) {
        if (item->column() != ColumnEnabled)
            slotAliasEdit();
    });
    connect(m_types, &QTableWidget::itemDoubleClicked, this, &Page::slotTypeEdit);
}

TDialogSetupPageProg::~TDialogSetupPageProg()
{
    appData().WindowSettingsProgSplitter = m_splitter->sizes();
}

void TDialogSetupPageProg::makeTables()
{
    m_aliases = makeRowTable({langText(Text::HeaderAliasEnabled), langText(Text::HeaderAlias),
                              langText(Text::HeaderAliasPort), langText(Text::HeaderAliasType)},
                             this);
    m_types = makeRowTable({langText(Text::HeaderType), langText(Text::HeaderTypeFile)}, this);
    m_aliases->setObjectName(QStringLiteral("aliases"));
    m_types->setObjectName(QStringLiteral("types"));
    m_aliases->setColumnWidth(ColumnEnabled,
                              qMax(40, m_aliases->horizontalHeader()->sectionSizeHint(ColumnEnabled)));
    m_aliases->setColumnWidth(ColumnPort, 120);
}

void TDialogSetupPageProg::makeActions()
{
    for (const ActionRow& row : actionRows) {
        const QString key = QLatin1String(row.key);
        auto* alias = new TActionWidget(langText(row.aliasText),
                                        hotKey(QStringLiteral("HotKeySettingsProgName"), key), m_aliases);
        auto* type = new TActionWidget(langText(row.typeText),
                                       hotKey(QStringLiteral("HotKeySettingsProgType"), key), m_types);
        connect(alias, &QAction::triggered, this, row.alias);
        connect(type, &QAction::triggered, this, row.type);
        m_aliasActions.append(alias);
        m_typeActions.append(type);
    }
}

QWidget* TDialogSetupPageProg::makePart(Text title, QTableWidget* table, const QList<QAction*>& actions,
                                        QWidget* below)
{
    auto* part = new QWidget(m_splitter);
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(new QLabel(langText(title), part));
    auto* row = new QHBoxLayout;
    row->addWidget(table, 1);
    row->addWidget(actionColumn(actions, part));
    column->addLayout(row, 1);
    if (below)
        column->addWidget(below);
    return part;
}

QWidget* TDialogSetupPageProg::makeDefaultLine()
{
    auto* line = new QWidget(this);
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    m_default = new TComboBox(line);
    m_default->allowNarrow();
    row->addWidget(new QLabel(langText(Text::LabelDefaultAlias), line));
    row->addWidget(m_default, 1);
    // Entry 0 stands for none.
    connect(m_default, QOverload<int>::of(&QComboBox::activated), this,
            [this](int index) { setDefaultRow(index - 1); });
    return line;
}

void TDialogSetupPageProg::fill()
{
    const TAppData& settings = appData();
    for (int row = 0; row < settings.progTypes.count(); ++row)
        setType(appendRow(m_types), settings.progTypes.name(row), settings.progTypes.file(row));
    for (int row = 0; row < settings.progNames.count(); ++row)
        setAlias(appendRow(m_aliases), settings.progNames.name(row), settings.progNames.record(row));
    m_aliases->setCurrentCell(m_aliases->rowCount() ? 0 : -1, ColumnAlias);
    m_types->setCurrentCell(m_types->rowCount() ? 0 : -1, ColumnType);
    setDefaultRow(settings.ProgDefault);
    m_shownDefault = defaultRow();
    refresh();
}

void TDialogSetupPageProg::setAlias(int row, const QString& alias, const TProgRecord& record)
{
    const QSignalBlocker blocker(m_aliases);
    setCell(m_aliases, row, ColumnEnabled, QString());
    m_aliases->item(row, ColumnEnabled)->setCheckState(record.enabled ? Qt::Checked : Qt::Unchecked);
    setCell(m_aliases, row, ColumnAlias, alias);
    setCell(m_aliases, row, ColumnPort, record.port);
    setCell(m_aliases, row, ColumnAliasType, record.type);
}

void TDialogSetupPageProg::setType(int row, const QString& type, const QString& file)
{
    setCell(m_types, row, ColumnType, type);
    setCell(m_types, row, ColumnFile, file);
}

TProgRecord TDialogSetupPageProg::recordAt(int row) const
{
    return {m_aliases->item(row, ColumnEnabled)->checkState() == Qt::Checked,
            cellText(m_aliases, row, ColumnPort), cellText(m_aliases, row, ColumnAliasType)};
}

QStringList TDialogSetupPageProg::otherTexts(const QTableWidget* table, int column, int row) const
{
    QStringList texts;
    for (int i = 0; i < table->rowCount(); ++i) {
        if (i != row)
            texts.append(cellText(table, i, column));
    }
    return texts;
}

QStringList TDialogSetupPageProg::aliasesOf(const QString& type) const
{
    QStringList aliases;
    for (int row = 0; row < m_aliases->rowCount(); ++row) {
        if (cellText(m_aliases, row, ColumnAliasType) == type)
            aliases.append(cellText(m_aliases, row, ColumnAlias));
    }
    return aliases;
}

void TDialogSetupPageProg::renameType(const QString& from, const QString& to)
{
    for (int row = 0; row < m_aliases->rowCount(); ++row) {
        if (cellText(m_aliases, row, ColumnAliasType) == from)
            setCell(m_aliases, row, ColumnAliasType, to);
    }
}

int TDialogSetupPageProg::defaultRow() const
{
    return m_defaultItem ? m_defaultItem->row() : -1;
}

void TDialogSetupPageProg::setDefaultRow(int row)
{
    m_defaultItem = m_aliases->item(row, ColumnAlias);
}

void TDialogSetupPageProg::refresh()
{
    const QSignalBlocker blocker(m_aliases);
    const QStringList types = otherTexts(m_types, ColumnType, -1);
    const QColor fault = faultText(m_aliases->palette().color(QPalette::Base));
    for (int row = 0; row < m_aliases->rowCount(); ++row) {
        QTableWidgetItem* item = m_aliases->item(row, ColumnAliasType);
        item->setForeground(types.contains(item->text()) ? QBrush() : QBrush(fault));
    }
    m_default->clear();
    m_default->addItem(QStringLiteral("-"));
    m_default->addItems(otherTexts(m_aliases, ColumnAlias, -1));
    m_default->setCurrentIndex(defaultRow() + 1);
    updateActions(m_aliasActions, m_aliases);
    updateActions(m_typeActions, m_types);
}

void TDialogSetupPageProg::store()
{
    TProgName names;
    TProgType types;
    for (int row = 0; row < m_aliases->rowCount(); ++row) {
        const TProgRecord record = recordAt(row);
        names.append(cellText(m_aliases, row, ColumnAlias), record.enabled, record.port, record.type);
    }
    for (int row = 0; row < m_types->rowCount(); ++row)
        types.append(cellText(m_types, row, ColumnType), cellText(m_types, row, ColumnFile));
    project().locked([&] {
        std::swap(appData().progNames, names);
        std::swap(appData().progTypes, types);
    });
    if (defaultRow() != m_shownDefault)
        appData().ProgDefault = defaultRow();
}

void TDialogSetupPageProg::slotListAliasChanged(QTableWidgetItem*)
{
    refresh();
}

void TDialogSetupPageProg::slotShowContextMenuAlias(QPoint pos)
{
    showActionMenu(m_aliasActions, m_aliases->viewport(), pos);
}

void TDialogSetupPageProg::slotShowContextMenuType(QPoint pos)
{
    showActionMenu(m_typeActions, m_types->viewport(), pos);
}

void TDialogSetupPageProg::slotAliasAdd()
{
    TProgRecord record;
    record.enabled = true;
    TDialogSetupPageProgAliasEdit dialog(langText(Text::TitleAliasAdd), {}, record,
                                         otherTexts(m_types, ColumnType, -1),
                                         otherTexts(m_aliases, ColumnAlias, -1), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const int row = appendRow(m_aliases);
    setAlias(row, dialog.alias(), dialog.record());
    m_aliases->setCurrentCell(row, ColumnAlias);
    // The first programmer is meant to be used.
    if (row == 0)
        setDefaultRow(row);
    refresh();
}

void TDialogSetupPageProg::slotAliasEdit()
{
    const int row = m_aliases->currentRow();
    TDialogSetupPageProgAliasEdit dialog(
        langText(Text::TitleAliasEdit), cellText(m_aliases, row, ColumnAlias), recordAt(row),
        otherTexts(m_types, ColumnType, -1), otherTexts(m_aliases, ColumnAlias, row), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    setAlias(row, dialog.alias(), dialog.record());
    refresh();
}

void TDialogSetupPageProg::slotAliasDelete()
{
    const int row = m_aliases->currentRow();
    if (!msgAsk(langText(Text::AskDeleteAlias).arg(cellText(m_aliases, row, ColumnAlias)), this))
        return;
    if (defaultRow() == row)
        m_defaultItem = nullptr;
    m_aliases->removeRow(row);
    refresh();
}

void TDialogSetupPageProg::slotAliasMoveUp()
{
    moveTableRow(m_aliases, -1);
    refresh();
}

void TDialogSetupPageProg::slotAliasMoveDown()
{
    moveTableRow(m_aliases, 1);
    refresh();
}

void TDialogSetupPageProg::slotTypeAdd()
{
    TDialogSetupPageProgTypeEdit dialog(langText(Text::TitleTypeAdd), {}, {},
                                        otherTexts(m_types, ColumnType, -1), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const int row = appendRow(m_types);
    setType(row, dialog.name(), dialog.file());
    m_types->setCurrentCell(row, ColumnType);
    refresh();
}

void TDialogSetupPageProg::slotTypeEdit()
{
    const int row = m_types->currentRow();
    const QString old = cellText(m_types, row, ColumnType);
    TDialogSetupPageProgTypeEdit dialog(langText(Text::TitleTypeEdit), old,
                                        cellText(m_types, row, ColumnFile),
                                        otherTexts(m_types, ColumnType, row), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    setType(row, dialog.name(), dialog.file());
    renameType(old, dialog.name());
    refresh();
}

/// Programmers of the type keep its name, marked as unknown: they work again when it comes back.
void TDialogSetupPageProg::slotTypeDelete()
{
    const int row = m_types->currentRow();
    const QString type = cellText(m_types, row, ColumnType);
    QString question = langText(Text::AskDeleteType).arg(type);
    const QStringList users = aliasesOf(type);
    if (!users.isEmpty())
        question +=
            QStringLiteral("\n%1: %2").arg(langText(Text::TitleAliases), users.join(QLatin1String(", ")));
    if (!msgAsk(question, this))
        return;
    m_types->removeRow(row);
    refresh();
}

void TDialogSetupPageProg::slotTypeMoveUp()
{
    moveTableRow(m_types, -1);
    refresh();
}

void TDialogSetupPageProg::slotTypeMoveDown()
{
    moveTableRow(m_types, 1);
    refresh();
}

void TDialogSetupPageProg::slotSelectItemAlias()
{
    updateActions(m_aliasActions, m_aliases);
}

void TDialogSetupPageProg::slotSelectItemType()
{
    updateActions(m_typeActions, m_types);
}
