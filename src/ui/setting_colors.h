#pragma once

#include <QColor>

class TAppData;

// How the colours of the settings look on a light and on a dark desktop. Main thread.

/// The colour of a setting as it is shown on a background: what the user has chosen stays as it is, a
/// default that was made for a light background gives way to its counterpart on a dark one.
QColor shownColor(QColor TAppData::*setting, const QColor& back);
/// The background of the log: the user's, or one that goes with the base colour of the desktop.
QColor logBackground(const QColor& base);
