#pragma once

class QColor;
class QWidget;

/// Sets the text colour of a widget for all colour groups and turns automatic background fill on.
void setTextColor(QWidget* widget, const QColor& colour);
/// The same for the base colour.
void setBaseColor(QWidget* widget, const QColor& colour);
/// Shows a field on the colour of faults, or again as its style has it.
void markFault(QWidget* field, bool fault);
/// Height of a field of the forms in the widget's font, in pixels: 21 unless the font needs more.
int fieldHeight(const QWidget* widget);
