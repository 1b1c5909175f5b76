#include "forms/edits/star_button.h"

#include "forms/edits/line_height.h"

#include <QPushButton>

QPushButton* starButton(QWidget* parent)
{
    auto* button = new QPushButton(QStringLiteral("*"), parent);
    const int side = fieldHeight(button);
    button->setFixedSize(side, side);
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}
