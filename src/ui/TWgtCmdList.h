#pragma once

#include "core/types.h"

#include <QWidget>

class QTableWidget;
class QTableWidgetItem;

/// The command table of one configuration: check box, display name, parameter text. Shows the model and
/// holds nothing of it but the ids of its rows. Main thread.
class TWgtCmdList : public QWidget
{
    Q_OBJECT

public:
    explicit TWgtCmdList(QWidget* parent = nullptr);
    ~TWgtCmdList() override;

    /// Fills the table from the project and makes row 0 current, or none.
    void fill(int id_cfg);
    /// Display name, parameter text, validity of one row or all rows, from the model. openForm is the
    /// open form of the command id_form, whose text goes before the stored one.
    void refreshRow(int row, QWidget* openForm, int id_form);
    void refreshAll(QWidget* openForm, int id_form);
    /// Adds a row for a command of the model.
    void insertRow(int row, int id_cmd);
    void removeRow(int row);
    void moveRow(int row, int delta);
    void setChecked(bool on);
    /// Colours and flags from the settings, then all rows.
    void reloadColors();
    void hideUnchecked(bool hide);
    /// Bold and italic for the row of the command; none for -1.
    void highlight(int id_cmd);

    int rowCount() const;
    int currentRow() const;
    /// -1 makes no row current.
    void setCurrentRow(int row);
    /// -1 with no current row.
    int currentCmd() const;
    int cmdAt(int row) const;
    int rowOf(int id_cmd) const;
    QTableWidget* table() const { return m_table; }

signals:
    /// The current row has changed; -1 with none.
    void signalSelectCmd(int id_cmd);
    void signalClikedCmd();
    void signalEnabledCmd(int id_cmd, bool status);
    void signalContextMenuRequested(QPoint pos);

public slots:
    void slotSelectCmd(QTableWidgetItem* item);
    void slotSelectCmdClick(QTableWidgetItem* item);
    void slotEnabledCmd(QTableWidgetItem* item);

private:
    // See TWgtCmdList.cpp.
    QTableWidget* m_table = nullptr;
};
