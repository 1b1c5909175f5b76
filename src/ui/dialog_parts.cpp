#include "ui/dialog_parts.h"

#include "base/TLang.h"
#include "base/TSettings.h"
#include "base/helpers.h"
#include "core/files/TPrjListFile.h"
#include "forms/edits/colors.h"
#include "forms/edits/line_height.h"

#include <QAction>
#include <QDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>

namespace {

constexpr int buttonWidth = 100;
constexpr int buttonHeight = 24;
constexpr int frameHeight = 40;
constexpr int margin = 5;
constexpr int gap = 8;

QToolButton* actionButton(QAction* action, QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setDefaultAction(action);
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

} // namespace

QPushButton* dialogButton(const QString& text, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    button->setFixedHeight(lineHeight(button, buttonHeight, 8));
    button->setFixedWidth(qMax(buttonWidth, button->sizeHint().width()));
    return button;
}

QBoxLayout* addDialogFrame(QWidget* window, QBoxLayout* layout)
{
    auto* frame = new QFrame(window);
    frame->setFixedHeight(lineHeight(frame, frameHeight, 8 + 3 * margin));
    auto* row = new QHBoxLayout(frame);
    row->setContentsMargins(margin, margin, margin, margin);
    row->setSpacing(margin);
    row->addStretch();
    layout->addWidget(frame);
    return row;
}

QPushButton* addDialogButtons(QDialog* dialog, QBoxLayout* layout, Text acceptText, Text rejectText)
{
    QBoxLayout* row = addDialogFrame(dialog, layout);
    QPushButton* accept = dialogButton(langText(acceptText), dialog);
    QPushButton* reject = dialogButton(langText(rejectText), dialog);
    accept->setDefault(true);
    reject->setAutoDefault(false);
    row->addWidget(accept);
    row->addWidget(reject);
    QObject::connect(accept, &QPushButton::clicked, dialog, &QDialog::accept);
    QObject::connect(reject, &QPushButton::clicked, dialog, &QDialog::reject);
    return accept;
}

TBrowseLine makeBrowseLine(const QString& text, QWidget* parent)
{
    TBrowseLine parts;
    auto* row = new QHBoxLayout;
    row->setSpacing(3);
    parts.layout = row;
    parts.line = new QLineEdit(text, parent);
    parts.button = new QPushButton(QStringLiteral("..."), parent);
    parts.button->setFixedSize(30, parts.line->sizeHint().height());
    parts.button->setAutoDefault(false);
    parts.button->setToolTip(langText(Text::TipBrowse));
    row->addWidget(parts.line);
    row->addWidget(parts.button);
    return parts;
}

QString askFile(QWidget* parent, const QString& title, const QString& current, const QString& filter)
{
    return QFileDialog::getSaveFileName(parent, title, current, filter, nullptr,
                                        QFileDialog::DontConfirmOverwrite);
}

QString askNewFile(QWidget* parent, const QString& title, const QString& start, const QString& suffix,
                   bool confirmOverwrite)
{
    QFileDialog dialog(parent, title, start, suffixFilter(suffix));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !confirmOverwrite);
    while (dialog.exec() == QDialog::Accepted) {
        const QString chosen = dialog.selectedFiles().value(0);
        QString file = withSuffix(chosen, suffix);
        // The dialog has asked about the file that was typed, not about the one with another suffix.
        if (file == chosen || !confirmOverwrite || !QFileInfo::exists(file))
            return file;
        dialog.selectFile(file);
    }
    return QString();
}

QString suffixFilter(const QString& suffix)
{
    return QStringLiteral("*.%1").arg(suffix);
}

QWidget* actionColumn(const QList<QAction*>& actions, QWidget* parent)
{
    auto* widget = new QWidget(parent);
    auto* column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    for (QAction* action : actions) {
        if (action)
            column->addWidget(actionButton(action, widget));
        else
            column->addSpacing(gap);
    }
    column->addStretch();
    return widget;
}

void showActionMenu(const QList<QAction*>& actions, QWidget* viewport, const QPoint& pos)
{
    QMenu menu(viewport);
    for (QAction* action : actions) {
        if (action)
            menu.addAction(action);
        else
            menu.addSeparator();
    }
    menu.exec(viewport->mapToGlobal(pos));
}

QTableWidget* makeRowTable(const QStringList& headers, QWidget* parent)
{
    auto* table = new QTableWidget(0, headers.size(), parent);
    table->setHorizontalHeaderLabels(headers);
    table->horizontalHeader()->setStretchLastSection(true);
    table->horizontalHeader()->setHighlightSections(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    markInactive(table);
    return table;
}

void setCell(QTableWidget* table, int row, int column, const QString& text)
{
    QTableWidgetItem* item = table->item(row, column);
    if (!item)
        table->setItem(row, column, item = new QTableWidgetItem);
    item->setText(text);
    item->setToolTip(text);
}

QString cellText(const QTableWidget* table, int row, int column)
{
    const QTableWidgetItem* item = table->item(row, column);
    return item ? item->text() : QString();
}

QKeySequence hotKey(const QString& group, const QString& name)
{
    const TSettings file(fileInAppDir(QStringLiteral("hk")));
    return file.readKeySequence(QStringLiteral("%1/%2").arg(group, name));
}

QString plainTitle(Text text)
{
    return langText(text).remove(QLatin1Char('&'));
}
