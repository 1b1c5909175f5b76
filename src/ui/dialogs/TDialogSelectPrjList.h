#pragma once

#include "base/texts.h"
#include "core/files/TPrjLists.h"
#include "ui/TDialogBase.h"

#include <functional>

class QAction;
class QPushButton;
class QTableWidget;

/// Chooses one of the user's project lists, and keeps the list of them.
class TDialogSelectPrjList : public TDialogBase
{
    Q_OBJECT

public:
    /// file is the list of lists, absolute.
    explicit TDialogSelectPrjList(const QString& file, QWidget* parent = nullptr);

    /// The file could be read.
    bool isLoaded() const;
    /// The list that is open now: it is preselected and can be added.
    void setPreset(const QString& name, const QString& file);
    QString name() const;
    QString file() const;
    /// The table differs from the file; the caller then writes it.
    bool isChanged() const;
    /// Somebody else has written the file since it was read.
    bool isOutdated() const;
    /// False with errorText().
    [[nodiscard]] bool write();
    QString errorText() const;

public slots:
    void slotShowContextMenu(QPoint pos);
    void slotNew();
    void slotAdd();
    void slotAddCurr();
    void slotEdit();
    void slotCopy();
    void slotDelete();
    void slotMoveUp();
    void slotMoveDown();
    void slotOpenFolder();
    void slotSelectItem();

private:
    void makeActions();
    void fill();
    QList<TPrjListEntry> entries() const;
    int rowOf(const QString& file) const;
    void append(const TPrjListEntry& entry);
    /// Writes a new list file where the user wants it or, if there is one, beside that; and its row.
    void create(Text title, const TPrjListEntry& proposal,
                const std::function<bool(const QString& path)>& write);
    void updateActions();

    const QString m_listsFile;
    TPrjLists m_lists;
    bool m_isLoaded = false;
    TPrjListEntry m_preset;
    /// In the order of the table in the source; null separates groups.
    QList<QAction*> m_actions;
    QPushButton* m_accept = nullptr;
    QTableWidget* m_table = nullptr;
};
