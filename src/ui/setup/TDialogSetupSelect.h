#pragma once

#include "ui/TDialogBase.h"

#include <QModelIndex>

class IDialogSetupPage;
class QLabel;
class QSplitter;
class QStackedWidget;
class QTreeWidget;

/// The setup dialog: a tree of pages on the left, the page on the right. On accept every page stores its
/// values in TAppData; the caller then applies them.
class TDialogSetupSelect : public TDialogBase
{
    Q_OBJECT

public:
    explicit TDialogSetupSelect(QWidget* parent = nullptr);
    ~TDialogSetupSelect() override;

    void accept() override;

public slots:
    void slotGroupSelect(QModelIndex index);

private:
    void addPage(IDialogSetupPage* page);
    void fitTree();

    QSplitter* m_splitter;
    QTreeWidget* m_tree;
    QLabel* m_head;
    QStackedWidget* m_stack;
    QList<IDialogSetupPage*> m_pages;
};
