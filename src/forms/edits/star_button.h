#pragma once

class QPushButton;
class QWidget;

/// The small button "*" behind a field; it takes no focus.
QPushButton* starButton(QWidget* parent);
