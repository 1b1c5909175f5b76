#pragma once

#include "base/types.h"
#include "ui/panels/TStyleCmdList.h"

#include <QColor>
#include <QHash>
#include <QPointer>
#include <QWidget>

class IDevice;
class QTableWidget;
class QTableWidgetItem;
class TDataCmd;

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
    /// Red and struck out by the model's flags, for all rows.
    void refreshValidity();
    /// Adds a row for a command of the model.
    void insertRow(int row, int id_cmd);
    void removeRow(int row);
    void moveRow(int row, int delta);
    void setChecked(bool on);
    /// Colours and flags from the settings, then all rows.
    void reloadColors();
    /// A current row that is hidden gives way to the nearest one that is not.
    void hideUnchecked(bool hide);
    /// Bold and italic for the row of the command; none for -1.
    void highlight(int id_cmd);

    int rowCount() const;
    int currentRow() const;
    /// -1 makes no row current. A row that is hidden is shown as long as it is current.
    void setCurrentRow(int row);
    /// The row that is shown nearest to this one, those behind it first; -1 with none.
    int firstShownRow(int from) const;
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
    /// pos is global.
    void signalContextMenuRequested(QPoint pos);

public slots:
    void slotSelectCmd(QTableWidgetItem* item);
    void slotSelectCmdClick(QTableWidgetItem* item);
    void slotEnabledCmd(QTableWidgetItem* item);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// Background of the rows of one key word.
    struct TColor
    {
        bool enabled = false;
        QColor color;
    };

    void makeTable();
    void takeStyle();
    void takeColors();
    void setRow(int row, const TDataCmd& command);
    void showCommand(int row, const TData& values, const IDevice* device, QWidget* form);
    void showValidity(int row, bool validDev, bool validParam);
    void showFont(int row);
    void showTextColor(int row);
    void showColor(int row);
    void showHidden(int row);
    void leaveHiddenRow();
    void reveal(int id_cmd);
    void announceCurrent();

    QHash<QString, TColor> m_colors;
    QTableWidget* m_table = nullptr;
    QPointer<TStyleCmdList> m_style; ///< the table asks its style sheet first, so it does not tell
    bool m_hideUnchecked = false;
    int m_highlighted = -1; ///< command whose row is bold
    int m_revealed = -1;    ///< unchecked command that is shown all the same
    int m_announced = -1;   ///< command that the last signalSelectCmd told
};
