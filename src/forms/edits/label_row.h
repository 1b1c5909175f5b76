#pragma once

#include <QBoxLayout>

class TWgtLabelBtn;

/// Lays a label and its field out in row, without a margin, and makes the field the one that has the focus of
/// the row. direction: the way from the label to the field.
QBoxLayout* labelRow(QWidget* row, TWgtLabelBtn* label, QWidget* field, QBoxLayout::Direction direction);
