#pragma once

#include "base/texts.h"

#include <QList>
#include <QString>

#include <array>

class QRect;
class QScreen;
class QTableWidget;
class QWidget;

// What windows and dialogs share. Main thread.

/// Modal boxes with the program's name as title. The texts are shown as they are, never as markup.
void msgInfo(const QString& text, QWidget* parent);
void msgError(const QString& text, QWidget* parent);
/// True if Yes, the default button, was pressed; closing the box means No.
[[nodiscard]] bool msgAsk(const QString& text, QWidget* parent);
/// A question with three buttons; the index of the one pressed. Enter presses the default one, and closing
/// the box or Escape the last.
[[nodiscard]] int msgChoose(const QString& text, const std::array<Text, 3>& buttons, int defaultButton,
                            QWidget* parent);

/// Shows the folder of a file in the file manager; false, without a box, when the folder is gone or nothing
/// can show it.
[[nodiscard]] bool openFolder(const QString& file);

/// The screen that shows most of a place; the primary one for a place that none shows.
QScreen* screenOf(const QRect& place);
/// The same among screens of which the first is the primary one: its index.
int screenOf(const QRect& place, const QList<QRect>& screens);
/// A place moved and cut to lie on that screen.
QRect heldOnScreen(const QRect& place, const QList<QRect>& screens);
/// Gives the widget this place on the desktop and size, held inside the screen that shows most of it; if
/// wanted centred on the primary screen instead.
void placeOnScreen(QWidget* widget, bool centre, int left, int top, int width, int height);
/// The same, but centred on the active window; without one, on the primary screen.
void placeOnWindow(QWidget* widget, bool centre, int left, int top, int width, int height);

/// Applies a style by its name; an unknown name changes nothing.
void setStyle(const QString& name);
/// Applies the style of the settings, and puts the first style that there is in the place of one
/// that is unknown.
void applyStyleSettings();
/// Makes the font of the settings that of the application, and lets an empty font for tables and logs
/// follow it.
void applyFontSettings();

/// A regular expression of what a filter says: "*" and "?" stand for any characters, everything else for
/// itself.
QString wildcardPattern(const QString& text);

/// Swaps the current row with the one delta rows away, if there is one, and makes that row current.
/// The table emits nothing.
void moveTableRow(QTableWidget* table, int delta);
