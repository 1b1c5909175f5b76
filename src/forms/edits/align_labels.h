#pragma once

class QWidget;

/// Makes the labels of all row layouts in a form equally wide, so that its fields begin on one line.
void alignLabels(QWidget* form);
