#pragma once

#include "ui/TDialogBase.h"

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
    [[nodiscard]] bool write();

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
    QTableWidget* m_table = nullptr;
};
