#include "ui/dialogs/TDialogSelectPrjList.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "core/files/TCtrlProject.h"
#include "core/files/TPrjListFile.h"
#include "settings/TAppData.h"
#include "ui/TActionWidget.h"
#include "ui/dialog_parts.h"
#include "ui/dialogs/TDialogPrjListEdit.h"
#include "ui/window_helpers.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>

namespace {

constexpr int leastLetters = 36; // of a name and its file, to be seen

enum Column { ColumnName, ColumnFile };
/// Of the name's cell: other keys of the file.
constexpr int roleOthers = Qt::UserRole;

/// The actions, in the order of the menu.
enum Action { New, Add, AddCur, Gap1, Edit, Copy, Delete, Gap2, MoveUp, MoveDown, Gap3, OpenFolder };

struct ActionRow
{
    Text text;       ///< none for a gap
    const char* key; ///< in the group of hot keys
    void (TDialogSelectPrjList::*slot)();
};

constexpr ActionRow actionRows[] = {
    {Text::ActionListNew, "New", &TDialogSelectPrjList::slotNew},
    {Text::ActionListAdd, "Add", &TDialogSelectPrjList::slotAdd},
    {Text::ActionListAddCurrent, "AddCur", &TDialogSelectPrjList::slotAddCurr},
    {Text::None, nullptr, nullptr},
    {Text::ActionListEdit, "Edit", &TDialogSelectPrjList::slotEdit},
    {Text::ActionListCopy, "Copy", &TDialogSelectPrjList::slotCopy},
    {Text::ActionListRemove, "Delete", &TDialogSelectPrjList::slotDelete},
    {Text::None, nullptr, nullptr},
    {Text::ActionListMoveUp, "MoveUp", &TDialogSelectPrjList::slotMoveUp},
    {Text::ActionListMoveDown, "MoveDown", &TDialogSelectPrjList::slotMoveDown},
    {Text::None, nullptr, nullptr},
    {Text::ActionListOpenFolder, "OpenFolder", &TDialogSelectPrjList::slotOpenFolder},
};

QString cleanPath(const QString& file)
{
    return QDir::cleanPath(TPrjListFile::path(file));
}

/// With the suffix of a list, and "_new" before it as often as it takes to name no file that exists.
QString freeFile(const QString& file)
{
    QString name = withSuffix(file, prjListSuffix);
    while (QFileInfo::exists(absFile(appData().PathProjects, name))) {
        name.chop(prjListSuffix.size() + 1);
        name = QStringLiteral("%1_new.%2").arg(name, prjListSuffix);
    }
    return name;
}

} // namespace

TDialogSelectPrjList::TDialogSelectPrjList(const QString& file, QWidget* parent)
    : TDialogBase({&appData().WindowSelectPrjListLeft, &appData().WindowSelectPrjListTop,
                   &appData().WindowSelectPrjListWidth, &appData().WindowSelectPrjListHeight},
                  parent)
    , m_listsFile(file)
    , m_isLoaded(m_lists.read(file))
    , m_table(makeRowTable({langText(Text::HeaderListName), langText(Text::HeaderListFile)}, this))
{
    setWindowTitle(langText(Text::TitleLists));
    setMinimumSize(560, 300);
    m_table->setMinimumWidth(m_table->fontMetrics().averageCharWidth() * leastLetters);
    makeActions();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(5, 5, 5, 0);
    auto* row = new QHBoxLayout;
    row->addWidget(m_table, 1);
    row->addWidget(actionColumn(m_actions, this));
    layout->addLayout(row);
    m_accept = addDialogButtons(this, layout, Text::ButtonSelect, Text::ButtonCancel);
    m_table->setColumnWidth(ColumnName, 150);
    fill();
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &TDialogSelectPrjList::slotSelectItem);
    connect(m_table, &QTableWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(m_table, &QWidget::customContextMenuRequested, this, &TDialogSelectPrjList::slotShowContextMenu);
    updateActions();
}

void TDialogSelectPrjList::makeActions()
{
    for (const ActionRow& row : actionRows) {
        if (!row.slot) {
            m_actions.append(nullptr);
            continue;
        }
        const QKeySequence keys = hotKey(QStringLiteral("HotKeySelectProjectList"), QLatin1String(row.key));
        auto* action = new TActionWidget(langText(row.text), keys, m_table);
        connect(action, &QAction::triggered, this, row.slot);
        m_actions.append(action);
    }
}

void TDialogSelectPrjList::fill()
{
    const QList<TPrjListEntry> entries = m_lists.entries();
    for (const TPrjListEntry& entry : entries)
        append(entry);
    m_table->setCurrentCell(entries.isEmpty() ? -1 : 0, ColumnName);
}

void TDialogSelectPrjList::append(const TPrjListEntry& entry)
{
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    setCell(m_table, row, ColumnName, entry.name);
    setCell(m_table, row, ColumnFile, entry.file);
    m_table->item(row, ColumnName)->setData(roleOthers, entry.others);
    m_table->setCurrentCell(row, ColumnName);
    updateActions();
}

bool TDialogSelectPrjList::isLoaded() const
{
    return m_isLoaded;
}

void TDialogSelectPrjList::setPreset(const QString& name, const QString& file)
{
    m_preset = {name, file};
    const int row = file.isEmpty() ? -1 : rowOf(file);
    if (row >= 0)
        m_table->setCurrentCell(row, ColumnName);
    updateActions();
}

QString TDialogSelectPrjList::name() const
{
    return cellText(m_table, m_table->currentRow(), ColumnName);
}

QString TDialogSelectPrjList::file() const
{
    return cellText(m_table, m_table->currentRow(), ColumnFile);
}

QList<TPrjListEntry> TDialogSelectPrjList::entries() const
{
    QList<TPrjListEntry> list;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        list.append({cellText(m_table, row, ColumnName), cellText(m_table, row, ColumnFile),
                     m_table->item(row, ColumnName)->data(roleOthers).toJsonObject()});
    }
    return list;
}

int TDialogSelectPrjList::rowOf(const QString& file) const
{
    const QString path = cleanPath(file);
    for (int row = 0; row < m_table->rowCount(); ++row) {
        if (cleanPath(cellText(m_table, row, ColumnFile)) == path)
            return row;
    }
    return -1;
}

bool TDialogSelectPrjList::isChanged() const
{
    return m_isLoaded && entries() != m_lists.entries();
}

bool TDialogSelectPrjList::isOutdated() const
{
    return m_lists.isOutdated();
}

bool TDialogSelectPrjList::write()
{
    m_lists.setEntries(entries());
    return m_lists.write(m_listsFile);
}

QString TDialogSelectPrjList::errorText() const
{
    return m_lists.errorText();
}

void TDialogSelectPrjList::slotShowContextMenu(QPoint pos)
{
    showActionMenu(m_actions, m_table->viewport(), pos);
}

void TDialogSelectPrjList::create(Text title, const TPrjListEntry& proposal,
                                  const std::function<bool(const QString& path)>& write)
{
    TDialogPrjListEdit dialog(langText(title), proposal.name, proposal.file, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString file = freeFile(dialog.file());
    const QString path = absFile(appData().PathProjects, file);
    if (write(path))
        append({dialog.name(), file});
    else
        msgError(langText(Text::FileNotWritten).arg(path), this);
}

void TDialogSelectPrjList::slotNew()
{
    create(Text::TitleListNew, {}, [](const QString& path) { return writeEmptyList(path); });
}

void TDialogSelectPrjList::slotCopy()
{
    const QString from = TPrjListFile::path(file());
    create(Text::TitleListCopy, {name(), freeFile(file())},
           [&from](const QString& path) { return copyPrjList(from, path); });
}

void TDialogSelectPrjList::slotAdd()
{
    TDialogPrjListEdit dialog(langText(Text::TitleListAdd), {}, {}, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString path = TPrjListFile::path(dialog.file());
    if (QFileInfo(path).isFile())
        append({dialog.name(), dialog.file()});
    else
        msgError(langText(Text::PrjListNotLoaded).arg(path), this);
}

void TDialogSelectPrjList::slotAddCurr()
{
    append({m_preset.name, relToDir(appData().PathProjects, m_preset.file)});
}

void TDialogSelectPrjList::slotEdit()
{
    TDialogPrjListEdit dialog(langText(Text::TitleListEdit), name(), file(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    setCell(m_table, m_table->currentRow(), ColumnName, dialog.name());
    setCell(m_table, m_table->currentRow(), ColumnFile, dialog.file());
    updateActions();
}

void TDialogSelectPrjList::slotDelete()
{
    if (appData().ConfirmProjectsListDelete && !msgAsk(langText(Text::AskRemoveList).arg(name()), this))
        return;
    m_table->removeRow(m_table->currentRow());
    updateActions();
}

void TDialogSelectPrjList::slotMoveUp()
{
    moveTableRow(m_table, -1);
    updateActions();
}

void TDialogSelectPrjList::slotMoveDown()
{
    moveTableRow(m_table, 1);
    updateActions();
}

void TDialogSelectPrjList::slotOpenFolder()
{
    const QString path = TPrjListFile::path(file());
    if (!openFolder(path))
        msgError(langText(Text::FolderNotShown).arg(absDir(path)), this);
}

void TDialogSelectPrjList::slotSelectItem()
{
    updateActions();
}

void TDialogSelectPrjList::updateActions()
{
    const int row = m_table->currentRow();
    const bool isRow = row >= 0;
    m_actions[AddCur]->setEnabled(!m_preset.file.isEmpty() && rowOf(m_preset.file) < 0);
    for (Action action : {Edit, Copy, Delete, OpenFolder})
        m_actions[action]->setEnabled(isRow);
    m_actions[MoveUp]->setEnabled(row > 0);
    m_actions[MoveDown]->setEnabled(isRow && row < m_table->rowCount() - 1);
    m_accept->setEnabled(isRow);
}
