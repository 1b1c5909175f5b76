#include "ui/setup/IDialogSetupPage.h"

#include "base/TLang.h"
#include "ui/dialog_parts.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

IDialogSetupPage::IDialogSetupPage(Text titleText, QWidget* parent)
    : QWidget(parent)
    , m_titleText(titleText)
{
}

IDialogSetupPage::~IDialogSetupPage() = default;

QString IDialogSetupPage::title() const
{
    return langText(m_titleText);
}

QStringList IDialogSetupPage::groups() const
{
    QStringList titles;
    for (const QGroupBox* group : m_groups)
        titles.append(group->title());
    return titles;
}

void IDialogSetupPage::showGroup(int index)
{
    if (index < 0 || index >= m_groups.size())
        return;
    // The layout may not have run yet when the page has never been shown.
    m_scroll->widget()->layout()->activate();
    m_scroll->verticalScrollBar()->setValue(m_groups.at(index)->y());
}

void IDialogSetupPage::store()
{
    for (const TEntry& entry : m_entries)
        entry.editor.store();
}

void IDialogSetupPage::addGroups(const std::vector<TSetupGroup>& groups)
{
    m_scroll = new QScrollArea(this);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* content = new QWidget(m_scroll);
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(3, 3, 3, 3);
    for (const TSetupGroup& group : groups) {
        m_groups.append(makeGroup(group));
        column->addWidget(m_groups.last());
    }
    column->addStretch();
    m_scroll->setWidget(content);
    m_scroll->setMinimumWidth(content->minimumSizeHint().width() +
                              m_scroll->verticalScrollBar()->sizeHint().width());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_scroll);
}

QGroupBox* IDialogSetupPage::makeGroup(const TSetupGroup& group)
{
    auto* box = new QGroupBox(plainTitle(group.title), this);
    auto* grid = new QGridLayout(box);
    grid->setColumnStretch(1, 1);
    grid->setContentsMargins(9, 3, 9, 3);
    grid->setVerticalSpacing(2);
    for (const TSetupRow& row : group.rows) {
        const TSetupEditor editor = makeSetupEditor(row, box);
        const int line = grid->rowCount();
        if (editor.hasLabel)
            grid->addWidget(new QLabel(setupText(row), box), line, 0);
        grid->addWidget(editor.widget, line, editor.hasLabel ? 1 : 0, 1, editor.hasLabel ? 1 : 2);
        m_entries.push_back({row.field, editor});
    }
    return box;
}

QWidget* IDialogSetupPage::editor(const TSetupField& field) const
{
    for (const TEntry& entry : m_entries) {
        if (entry.field == field)
            return entry.editor.widget;
    }
    return nullptr;
}
