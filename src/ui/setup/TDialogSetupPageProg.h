#pragma once

#include "link/lists/TProgName.h"
#include "ui/setup/IDialogSetupPage.h"

class QAction;
class QSplitter;
class QTableWidget;
class QTableWidgetItem;
class TComboBox;

/// The user's programmers and their models, as two tables. They are copies: nothing changes before the
/// page is stored.
class TDialogSetupPageProg : public IDialogSetupPage
{
    Q_OBJECT

public:
    explicit TDialogSetupPageProg(QWidget* parent = nullptr);
    ~TDialogSetupPageProg() override;

    /// Replaces both lists under the lock of the project, since a run may read them.
    void store() override;

public slots:
    void slotListAliasChanged(QTableWidgetItem* item);
    void slotShowContextMenuAlias(QPoint pos);
    void slotShowContextMenuType(QPoint pos);
    void slotAliasAdd();
    void slotAliasEdit();
    void slotAliasDelete();
    void slotAliasMoveUp();
    void slotAliasMoveDown();
    void slotTypeAdd();
    void slotTypeEdit();
    void slotTypeDelete();
    void slotTypeMoveUp();
    void slotTypeMoveDown();
    void slotSelectItemAlias();
    void slotSelectItemType();

private:
    void makeTables();
    void makeActions();
    QWidget* makePart(Text title, QTableWidget* table, const QList<QAction*>& actions, QWidget* below);
    QWidget* makeDefaultLine();
    void fill();
    void setAlias(int row, const QString& alias, const TProgRecord& record);
    void setType(int row, const QString& type, const QString& file);
    TProgRecord recordAt(int row) const;
    /// Texts of a column but that of one row.
    QStringList otherTexts(const QTableWidget* table, int column, int row) const;
    /// Aliases of the programmers of a type.
    QStringList aliasesOf(const QString& type) const;
    void renameType(const QString& from, const QString& to);
    int defaultRow() const;
    void setDefaultRow(int row);
    /// Brings what depends on the tables up to date: marks of unknown types, the default, the actions.
    void refresh();

    QTableWidget* m_aliases = nullptr;
    QTableWidget* m_types = nullptr;
    QList<QAction*> m_aliasActions;
    QList<QAction*> m_typeActions;
    TComboBox* m_default = nullptr;
    QSplitter* m_splitter = nullptr;
    /// The cell of the default alias, which goes along when its row is moved; null with none.
    QTableWidgetItem* m_defaultItem = nullptr;
    int m_shownDefault = -1;
};
