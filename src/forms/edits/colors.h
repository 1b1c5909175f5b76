#pragma once

#include <QStringList>

class QAbstractItemView;
class QColor;
class QLabel;
class QWidget;

/// Sets the text colour of a widget for all colour groups and turns automatic background fill on.
void setTextColor(QWidget* widget, const QColor& colour);
/// The same for the base colour.
void setBaseColor(QWidget* widget, const QColor& colour);
/// Shows a field on the colour of faults, or again as its style has it.
void markFault(QWidget* field, bool fault);
/// Shows the current row of a table or a tree also while something else has the focus, and so that it
/// can be read.
void markInactive(QAbstractItemView* view);
/// Texts on it have to be light.
bool isDark(const QColor& back);
/// The colour of what is wrong, and that of what went well, for a text on a background.
QColor faultText(const QColor& back);
QColor goodText(const QColor& back);
/// The usual colour of a text if it can be told from the colour behind it, else black or white.
QColor readableOn(const QColor& back, const QColor& usual);
/// Makes the text of a widget stand out: what it sets can harm the chip.
void setDanger(QWidget* widget);
/// A label of whole lines that stands out likewise, hidden as long as it has none.
QLabel* warningLabel(QWidget* parent);
/// Shows lines in such a label.
void showWarning(QLabel* label, const QStringList& lines);
/// text as a button, a tab or a menu has to be given it, so that an "&" shows as itself.
QString literalLabel(QString text);
