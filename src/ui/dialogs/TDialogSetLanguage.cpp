#include "ui/dialogs/TDialogSetLanguage.h"

#include "settings/TAppData.h"
#include "ui/dialog_parts.h"

#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

TDialogSetLanguage::TDialogSetLanguage(const QStringList& entries, QWidget* parent)
    : TDialogBase({&appData().WindowLanguageLeft, &appData().WindowLanguageTop,
                   &appData().WindowLanguageWidth, &appData().WindowLanguageHeight},
                  parent)
    , m_list(new QListWidget(this))
{
    // Not translated: it must be found again in a language that one cannot read.
    setWindowTitle(QStringLiteral("Language"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_list);
    QPushButton* accept = addDialogButtons(this, layout, Text::ButtonSelect, Text::ButtonCancel);
    accept->setEnabled(!entries.isEmpty());
    m_list->addItems(entries);
    m_list->sortItems();
    m_list->setCurrentRow(0);
    m_list->setMinimumWidth(m_list->sizeHintForColumn(0) + 2 * m_list->frameWidth() +
                            m_list->verticalScrollBar()->sizeHint().width());
    connect(m_list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
}

QString TDialogSetLanguage::selected() const
{
    const QListWidgetItem* item = m_list->currentItem();
    return item ? item->text() : QString();
}
