#include "ui/setup/TDialogSetupSelect.h"

#include "base/TLang.h"
#include "forms/edits/colors.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"
#include "ui/setup/TDialogSetupPageConfirm.h"
#include "ui/setup/TDialogSetupPageInterface.h"
#include "ui/setup/TDialogSetupPageMain.h"
#include "ui/setup/TDialogSetupPageProg.h"
#include "ui/window_helpers.h"

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

TDialogSetupSelect::TDialogSetupSelect(QWidget* parent)
    : TDialogBase({&appData().WindowSettingsLeft, &appData().WindowSettingsTop,
                   &appData().WindowSettingsWidth, &appData().WindowSettingsHeight},
                  parent)
    , m_splitter(new QSplitter(Qt::Horizontal, this))
    , m_tree(new QTreeWidget(m_splitter))
    , m_head(new QLabel(this))
    , m_stack(new QStackedWidget(this))
{
    setWindowTitle(langText(Text::TitleSettings));
    m_tree->setHeaderHidden(true);
    markInactive(m_tree);
    auto* right = new QWidget(m_splitter);
    auto* column = new QVBoxLayout(right);
    column->setContentsMargins(5, 0, 0, 0);
    column->addWidget(m_head);
    column->addWidget(m_stack, 1);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setStretchFactor(1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(5, 5, 5, 0);
    layout->addWidget(m_splitter, 1);
    addDialogButtons(this, layout, Text::ButtonOk, Text::ButtonCancel);
    addPage(new TDialogSetupPageMain(m_stack));
    addPage(new TDialogSetupPageInterface(m_stack));
    addPage(new TDialogSetupPageConfirm(m_stack));
    addPage(new TDialogSetupPageProg(m_stack));
    fitTree();
    m_splitter->setSizes(appData().WindowSettingsMainSplitter);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &TDialogSetupSelect::slotGroupSelect);
    m_tree->setCurrentItem(m_tree->topLevelItem(0));
}

TDialogSetupSelect::~TDialogSetupSelect()
{
    appData().WindowSettingsMainSplitter = m_splitter->sizes();
}

void TDialogSetupSelect::addPage(IDialogSetupPage* page)
{
    m_pages.append(page);
    m_stack->addWidget(page);
    auto* item = new QTreeWidgetItem(m_tree, {page->title()});
    for (const QString& group : page->groups())
        new QTreeWidgetItem(item, {group});
}

/// No title is cut, also of the groups that are not shown yet.
void TDialogSetupSelect::fitTree()
{
    m_tree->expandAll();
    const QAbstractItemView* view = m_tree; // where the method is public
    m_tree->setMinimumWidth(view->sizeHintForColumn(0) + 2 * m_tree->frameWidth() + 10);
    m_tree->collapseAll();
}

void TDialogSetupSelect::slotGroupSelect(QModelIndex index)
{
    if (!index.isValid())
        return;
    const bool isGroup = index.parent().isValid();
    IDialogSetupPage* page = m_pages.at(isGroup ? index.parent().row() : index.row());
    m_head->setText(QStringLiteral("<H3>%1</H3>").arg(page->title().toHtmlEscaped()));
    m_stack->setCurrentWidget(page);
    m_tree->expand(index);
    page->showGroup(isGroup ? index.row() : 0);
}

void TDialogSetupSelect::accept()
{
    const QString language = appData().Language;
    for (IDialogSetupPage* page : m_pages)
        page->store();
    if (appData().Language != language)
        msgInfo(langText(Text::LanguageChanged), this);
    TDialogBase::accept();
}
