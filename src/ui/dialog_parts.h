#pragma once

#include "base/texts.h"

#include <QKeySequence>
#include <QList>
#include <QString>

class QAction;
class QBoxLayout;
class QDialog;
class QLayout;
class QLineEdit;
class QPoint;
class QPushButton;
class QTableWidget;
class QWidget;

// Parts that the dialogs share. Main thread.

/// A button of the size that the lower frames of the dialogs have, wider for a longer text.
QPushButton* dialogButton(const QString& text, QWidget* parent);
/// The lower frame of a dialog, appended to layout: at its right an accepting button, which is the
/// default one and is returned, and a rejecting one.
QPushButton* addDialogButtons(QDialog* dialog, QBoxLayout* layout, Text acceptText, Text rejectText);
/// The frame alone; its layout is a horizontal box with a stretch in it.
QBoxLayout* addDialogFrame(QWidget* window, QBoxLayout* layout);

/// A line with a button behind it that opens a file dialog.
struct TBrowseLine
{
    QLayout* layout = nullptr;
    QLineEdit* line = nullptr;
    QPushButton* button = nullptr;
};
TBrowseLine makeBrowseLine(const QString& text, QWidget* parent);
/// Asks for a file, existing or new, starting at current; empty when refused. Nothing is overwritten by
/// the choice itself, so nothing is asked about that.
QString askFile(QWidget* parent, const QString& title, const QString& current, const QString& filter);

/// Asks for a file to write, of that suffix and with it; empty when the user does not want to.
QString askNewFile(QWidget* parent, const QString& title, const QString& start, const QString& suffix,
                   bool confirmOverwrite);
/// What a file dialog shows: the files with that suffix, which is given without the dot.
QString suffixFilter(const QString& suffix);

/// One tool button for each action, below each other; null makes a gap. The buttons take no focus.
QWidget* actionColumn(const QList<QAction*>& actions, QWidget* parent);
/// A context menu of the actions at a place of the widget's viewport; null makes a separator.
void showActionMenu(const QList<QAction*>& actions, QWidget* viewport, const QPoint& pos);

/// A table of rows of text, of which one is chosen, without editing; the last column stretches.
QTableWidget* makeRowTable(const QStringList& headers, QWidget* parent);
/// Sets the text of a cell, which is also its tool tip, and gives the cell an item if it has none.
void setCell(QTableWidget* table, int row, int column, const QString& text);
QString cellText(const QTableWidget* table, int row, int column);

/// A hot key of the hot-key file; empty without the key.
QKeySequence hotKey(const QString& group, const QString& name);
/// A text without the mark of its menu key.
QString plainTitle(Text text);
