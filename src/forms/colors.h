#pragma once

class QColor;
class QWidget;

/// Sets the text colour of a widget for all colour groups and turns automatic background fill on.
void setTextColor(QWidget* widget, const QColor& colour);
/// The same for the base colour.
void setBaseColor(QWidget* widget, const QColor& colour);
