#pragma once

class QWidget;

/// Height of one line of text and a frame in the widget's font, in pixels: usual unless the font needs
/// more.
int lineHeight(const QWidget* widget, int usual, int frame);
/// The same for a field of the forms: 21 is usual.
int fieldHeight(const QWidget* widget);
