#include "ui/panels/TWgtPrjList.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "forms/edits/line_height.h"
#include "settings/TAppData.h"
#include "ui/TWgtLabelElided.h"
#include "ui/panels/TTreeWidget.h"
#include "ui/window_helpers.h"

#include <QFileIconProvider>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHash>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int columnName = 0;
constexpr int columnFile = 1;
/// Of column 0: the node is expanded when no filter is at work.
constexpr int roleExpanded = Qt::UserRole;
/// Of column 0: the node is expanded by the file; the program has expanded it; other keys of the file.
constexpr int roleStored = Qt::UserRole + 1;
constexpr int roleShown = Qt::UserRole + 2;
constexpr int roleOthers = Qt::UserRole + 3;
constexpr int titleHeight = 19;

QFrame* newLine(QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    line->setFixedHeight(2);
    return line;
}

QRegularExpression filterPattern(const QString& text)
{
    return QRegularExpression(wildcardPattern(text), QRegularExpression::CaseInsensitiveOption |
                                                         QRegularExpression::DotMatchesEverythingOption |
                                                         QRegularExpression::UseUnicodePropertiesOption);
}

} // namespace

TWgtPrjList::TWgtPrjList(QWidget* parent)
    : QFrame(parent)
    , m_tree(new TTreeWidget(this))
{
    setFrameStyle(QFrame::Box | QFrame::Sunken);
    const QFileIconProvider icons;
    m_iconFile = icons.icon(QFileIconProvider::File);
    m_iconFolder = icons.icon(QFileIconProvider::Folder);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(1);
    makeTitle();
    makeFilter();
    makeTree();
    layout->addWidget(m_title);
    layout->addWidget(m_titleLine);
    layout->addWidget(m_filterRow);
    layout->addWidget(m_filterLine);
    layout->addWidget(m_tree, 1);
    showLoaded(false);
}

TWgtPrjList::~TWgtPrjList() = default;

void TWgtPrjList::makeTitle()
{
    m_title = new TWgtLabelElided(this);
    m_title->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_title->setFixedHeight(lineHeight(m_title, titleHeight, 2));
    m_title->setAutoFillBackground(true);
    m_title->setToolTip(langText(Text::TipPrjListName));
    QFont font = m_title->font();
    font.setItalic(true);
    m_title->setFont(font);
    m_titleLine = newLine(this);
    applyTitleColors();
}

void TWgtPrjList::applyTitleColors()
{
    QPalette palette = m_title->palette();
    palette.setColor(QPalette::WindowText, appData().PrjListNameColorText);
    palette.setColor(QPalette::Window, appData().PrjListNameColorBack);
    m_title->setPalette(palette);
}

void TWgtPrjList::makeFilter()
{
    m_filterRow = new QWidget(this);
    m_filter = new QLineEdit(m_filterRow);
    m_filter->setFixedHeight(fieldHeight(m_filter));
    m_filter->setToolTip(langText(Text::TipPrjListFilter));
    m_filter->installEventFilter(this);
    m_filterClear = new QPushButton(QStringLiteral("*"), m_filterRow);
    m_filterClear->setFixedSize(m_filter->height(), m_filter->height());
    m_filterClear->setFocusPolicy(Qt::NoFocus);
    m_filterClear->setToolTip(langText(Text::TipPrjListFilterClear));
    m_filterLine = newLine(this);

    auto* layout = new QHBoxLayout(m_filterRow);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(3);
    layout->addWidget(m_filter);
    layout->addWidget(m_filterClear);
    connect(m_filter, &QLineEdit::textChanged, this, &TWgtPrjList::slotFilterString);
    connect(m_filterClear, &QPushButton::clicked, this, &TWgtPrjList::slotFilterClear);
}

void TWgtPrjList::makeTree()
{
    m_tree->setColumnCount(2);
    m_tree->hideColumn(columnFile);
    m_tree->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tree->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_tree->setRootIsDecorated(true);
    m_tree->setUniformRowHeights(true);
    m_tree->setHeaderHidden(true);
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tree->installEventFilter(this);
    connect(m_tree, &QTreeWidget::currentItemChanged, this, &TWgtPrjList::slotItemSelect);
    connect(m_tree, &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        emit signalContextMenuRequested(m_tree->viewport()->mapToGlobal(pos));
    });
}

bool TWgtPrjList::load(const QString& name, const QString& file, int expandMode)
{
    const QSignalBlocker treeBlocker(m_tree);
    const QSignalBlocker filterBlocker(m_filter);
    m_listName = name;
    m_listFile = file.isEmpty() ? QString() : TPrjListFile::path(file);
    m_statusText.clear();
    m_errorText.clear();
    m_title->setFullText(QString());
    m_filter->clear();
    m_filterText.clear();
    m_tree->clear();

    const TPrjListFile::Result result = m_file.read(m_listFile);
    if (result == TPrjListFile::Failed)
        m_errorText = m_file.errorText();
    else if (result == TPrjListFile::Empty)
        m_statusText = langText(Text::FileEmpty);
    else
        addNodes(expandMode);
    showLoaded(result == TPrjListFile::Ok);
    dropChanges();
    return m_isLoaded;
}

void TWgtPrjList::addNodes(int expandMode)
{
    const QList<TPrjListItem> items = m_file.items();
    m_title->setFullText(m_listName);
    m_tree->setUpdatesEnabled(false);
    QList<QTreeWidgetItem*> nodes;
    QList<QTreeWidgetItem*> tops;
    for (const TPrjListItem& item : items) {
        QTreeWidgetItem* node = newNode(item.name, item.file);
        node->setData(columnName, roleStored, item.expand);
        node->setData(columnName, roleOthers, item.others);
        if (item.parent > 0)
            nodes.at(item.parent - 1)->addChild(node);
        else
            tops.append(node);
        nodes.append(node);
    }
    m_tree->addTopLevelItems(tops);
    for (int i = 0; i < nodes.size(); ++i) {
        if (expandMode == 0 ? items.at(i).expand : expandMode == 2)
            nodes.at(i)->setExpanded(true);
        nodes.at(i)->setData(columnName, roleShown, nodes.at(i)->isExpanded());
    }
    m_tree->setUpdatesEnabled(true);
}

void TWgtPrjList::showLoaded(bool loaded)
{
    m_isLoaded = loaded;
    m_filter->setEnabled(loaded);
    m_filterClear->setEnabled(loaded && !m_filter->text().isEmpty());
    if (loaded)
        m_filter->setFocus();
}

QTreeWidgetItem* TWgtPrjList::newNode(const QString& name, const QString& file) const
{
    auto* node = new QTreeWidgetItem;
    setNode(node, name, file);
    return node;
}

void TWgtPrjList::setNode(QTreeWidgetItem* node, const QString& name, const QString& file) const
{
    node->setText(columnName, name);
    node->setText(columnFile, file);
    node->setIcon(columnName, file.isEmpty() ? m_iconFolder : m_iconFile);
}

bool TWgtPrjList::isLoaded() const
{
    return m_isLoaded;
}

QString TWgtPrjList::statusText() const
{
    return m_statusText;
}

QString TWgtPrjList::errorText() const
{
    return m_errorText;
}

bool TWgtPrjList::isChanged() const
{
    return m_isLoaded && items() != m_stored;
}

void TWgtPrjList::dropChanges()
{
    m_stored = items();
}

/// Nodes, names or files differ from what was read or written last.
bool TWgtPrjList::hasOtherNodes() const
{
    const QList<TPrjListItem> now = items();
    return !std::equal(now.begin(), now.end(), m_stored.begin(), m_stored.end(),
                       [](TPrjListItem a, const TPrjListItem& b) {
                           a.expand = b.expand;
                           return a == b;
                       });
}

bool TWgtPrjList::isOutdated() const
{
    return m_file.isOutdated() && hasOtherNodes();
}

bool TWgtPrjList::save(const QString& path)
{
    if (!isChanged())
        return true;
    const bool isNeeded = hasOtherNodes();
    if (!isNeeded && m_file.isOutdated())
        return true;
    m_file.setItems(items());
    const bool ok = m_file.write(path);
    m_errorText = m_file.errorText();
    if (ok)
        dropChanges();
    return ok || !isNeeded;
}

bool TWgtPrjList::saveCopy(const QString& path)
{
    TPrjListFile copy = m_file;
    copy.setItems(items());
    copy.changeFolder(listFolder(), absDir(path));
    const bool ok = copy.write(path);
    m_errorText = copy.errorText();
    return ok;
}

QList<TPrjListItem> TWgtPrjList::items() const
{
    const bool isFiltered = !m_filterText.isEmpty();
    const QList<QTreeWidgetItem*> nodes = m_tree->nodes();
    QHash<const QTreeWidgetItem*, int> numbers;
    QList<TPrjListItem> list;
    list.reserve(nodes.size());
    for (const QTreeWidgetItem* node : nodes) {
        TPrjListItem item;
        item.parent = numbers.value(node->parent());
        // A filter expands everything: that is not how the user left the tree. Nor is it the user's choice
        // what stands as the program has shown it.
        const bool expanded = isFiltered ? node->data(columnName, roleExpanded).toBool() : node->isExpanded();
        const bool isAsShown = expanded == node->data(columnName, roleShown).toBool();
        item.expand = isAsShown ? node->data(columnName, roleStored).toBool() : expanded;
        item.others = node->data(columnName, roleOthers).toJsonObject();
        item.name = node->text(columnName);
        item.file = node->text(columnFile);
        list.append(item);
        numbers.insert(node, list.size());
    }
    return list;
}

QString TWgtPrjList::listName() const
{
    return m_listName;
}

QString TWgtPrjList::listFile() const
{
    return m_listFile;
}

QString TWgtPrjList::listFolder() const
{
    return m_listFile.isEmpty() ? QString() : absDir(m_listFile);
}

void TWgtPrjList::setTitleVisible(bool visible)
{
    applyTitleColors();
    m_title->setVisible(visible);
    m_titleLine->setVisible(visible);
}

void TWgtPrjList::setFilterVisible(bool visible)
{
    m_filterRow->setVisible(visible);
    m_filterLine->setVisible(visible);
    if (!visible)
        slotFilterClear();
}

void TWgtPrjList::dragMode(bool on)
{
    m_tree->setDragDropMode(on ? QAbstractItemView::InternalMove : QAbstractItemView::NoDragDrop);
}

bool TWgtPrjList::hasNode() const
{
    return m_tree->currentItem() != nullptr;
}

bool TWgtPrjList::nodeHasChildren() const
{
    return hasNode() && m_tree->currentItem()->childCount() > 0;
}

QString TWgtPrjList::nodeName() const
{
    return hasNode() ? m_tree->currentItem()->text(columnName) : QString();
}

QString TWgtPrjList::nodeFile() const
{
    return hasNode() ? m_tree->currentItem()->text(columnFile) : QString();
}

QString TWgtPrjList::nodePath() const
{
    return pathOf(nodeFile());
}

QString TWgtPrjList::pathOf(const QString& file) const
{
    return file.isEmpty() ? QString() : absFile(listFolder(), file);
}

void TWgtPrjList::setCurrentNode(const QString& name, const QString& file)
{
    if (hasNode())
        setNode(m_tree->currentItem(), name, file);
}

bool TWgtPrjList::insertNode(const QString& name, const QString& file, TPrjFileMode mode, Place place,
                             const QByteArray& content)
{
    QString stored = file;
    m_errorText.clear();
    if (!joinPrjList(listFolder(), mode, content, stored, m_errorText))
        return false;
    QTreeWidgetItem* current = m_tree->currentItem();
    QTreeWidgetItem* parent = place == Child ? current : (current ? current->parent() : nullptr);
    if (!parent)
        parent = m_tree->invisibleRootItem();
    const bool isBelow = place == Sibling && current;
    const int row = isBelow ? parent->indexOfChild(current) + 1 : parent->childCount();
    QTreeWidgetItem* node = newNode(name, stored);
    {
        const QSignalBlocker blocker(m_tree);
        parent->insertChild(row, node);
        if (place == Child && current) {
            // Also when the filter has gone again.
            current->setData(columnName, roleExpanded, true);
            current->setExpanded(true);
        }
    }
    m_tree->setCurrentItem(node);
    return true;
}

QTreeWidgetItem* TWgtPrjList::nodeFor(const QString& path, QTreeWidgetItem* above)
{
    if (QTreeWidgetItem* node = nodeOf(path))
        return node;
    QTreeWidgetItem* parent = above && above->parent() ? above->parent() : m_tree->invisibleRootItem();
    QTreeWidgetItem* node = newNode(QFileInfo(path).completeBaseName(), relToDir(listFolder(), path));
    const QSignalBlocker blocker(m_tree);
    parent->insertChild(above ? parent->indexOfChild(above) + 1 : parent->childCount(), node);
    return node;
}

QTreeWidgetItem* TWgtPrjList::nodeOf(const QString& path) const
{
    const QList<QTreeWidgetItem*> nodes = m_tree->nodes();
    const auto it = std::find_if(nodes.begin(), nodes.end(), [&](const QTreeWidgetItem* node) {
        const QString file = node->text(columnFile);
        return !file.isEmpty() && isSameFile(pathOf(file), path);
    });
    return it == nodes.end() ? nullptr : *it;
}

void TWgtPrjList::deleteNode()
{
    if (!hasNode())
        return;
    {
        // Neighbours are current for a moment while nodes go: only the last of them counts.
        const QSignalBlocker blocker(m_tree);
        delete m_tree->currentItem();
    }
    slotItemSelect(m_tree->currentItem());
}

void TWgtPrjList::deleteChildren()
{
    if (!hasNode())
        return;
    const QSignalBlocker blocker(m_tree);
    qDeleteAll(m_tree->currentItem()->takeChildren());
}

int TWgtPrjList::indexOfSelected() const
{
    return m_tree->indexOfSelected();
}

void TWgtPrjList::selectByIndex(int index)
{
    unfoldAbove(m_tree->nodes().value(index));
    m_tree->selectByIndex(index);
}

void TWgtPrjList::restoreCurrent(QTreeWidgetItem* item)
{
    const QSignalBlocker blocker(m_tree);
    unfoldAbove(item);
    m_tree->setCurrentItem(item);
}

// The tree does it by itself when it scrolls to its current node, but then nobody could tell it from a
// click of the user's.
void TWgtPrjList::unfoldAbove(QTreeWidgetItem* node)
{
    for (QTreeWidgetItem* above = node ? node->parent() : nullptr; above; above = above->parent()) {
        if (above->isExpanded())
            continue;
        above->setExpanded(true);
        above->setData(columnName, roleShown, true);
    }
}

void TWgtPrjList::slotFilterClear()
{
    m_filter->clear();
}

void TWgtPrjList::slotFilterString(const QString& text)
{
    const bool wasFiltered = !m_filterText.isEmpty();
    m_filterText = text;
    m_filterClear->setEnabled(!text.isEmpty());
    const QSignalBlocker blocker(m_tree);
    const QList<QTreeWidgetItem*> nodes = m_tree->nodes();
    m_tree->setUpdatesEnabled(false);
    if (!wasFiltered)
        keepExpanded(nodes);
    hideOthers(nodes, text);
    if (!text.isEmpty())
        m_tree->expandAll();
    else if (wasFiltered)
        restoreExpanded(nodes);
    m_tree->setUpdatesEnabled(true);
}

void TWgtPrjList::keepExpanded(const QList<QTreeWidgetItem*>& nodes)
{
    for (QTreeWidgetItem* node : nodes)
        node->setData(columnName, roleExpanded, node->isExpanded());
}

void TWgtPrjList::hideOthers(const QList<QTreeWidgetItem*>& nodes, const QString& text)
{
    const QRegularExpression pattern = filterPattern(text);
    QSet<const QTreeWidgetItem*> withVisibleChild;
    // From the end, so that a node comes behind all that are below it.
    for (int i = nodes.size() - 1; i >= 0; --i) {
        QTreeWidgetItem* node = nodes.at(i);
        const bool isVisible =
            withVisibleChild.contains(node) || pattern.match(node->text(columnName)).hasMatch();
        node->setHidden(!isVisible);
        if (isVisible)
            withVisibleChild.insert(node->parent());
    }
}

void TWgtPrjList::restoreExpanded(const QList<QTreeWidgetItem*>& nodes)
{
    for (QTreeWidgetItem* node : nodes)
        node->setExpanded(node->data(columnName, roleExpanded).toBool());
    QTreeWidgetItem* current = m_tree->currentItem();
    QTreeWidgetItem* top = current;
    while (top && top->parent())
        top = top->parent();
    if (top != current && !top->isExpanded()) {
        top->setExpanded(true);
        top->setData(columnName, roleShown, true);
    }
}

void TWgtPrjList::slotItemSelect(QTreeWidgetItem* item)
{
    emit signalProjectSelect(pathOf(item ? item->text(columnFile) : QString()));
}

bool TWgtPrjList::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto* keyEvent = static_cast<QKeyEvent*>(event);
        if (keyEvent->modifiers() == Qt::NoModifier || keyEvent->modifiers() == Qt::KeypadModifier) {
            if (object == m_filter && keyEvent->key() == Qt::Key_Down)
                return goToTree();
            if (object == m_tree && keyEvent->key() == Qt::Key_Up)
                return goToFilter();
        }
    }
    return QFrame::eventFilter(object, event);
}

bool TWgtPrjList::goToTree()
{
    QTreeWidgetItem* first = firstVisible();
    m_tree->setFocus();
    if (first) {
        m_tree->setCurrentItem(first);
        first->setSelected(true);
    }
    return true;
}

QTreeWidgetItem* TWgtPrjList::firstVisible() const
{
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        if (!m_tree->topLevelItem(i)->isHidden())
            return m_tree->topLevelItem(i);
    }
    return nullptr;
}

bool TWgtPrjList::goToFilter()
{
    QTreeWidgetItem* current = m_tree->currentItem();
    if (!current || current != firstVisible() || m_filterRow->isHidden())
        return false;
    current->setSelected(false);
    m_filter->setFocus();
    return true;
}
