#include "forms/name_line.h"

#include "forms/colors.h"

#include <QHBoxLayout>

TNameLine makeNameLine(const QString& buttonText, QWidget* parent)
{
    TNameLine line;
    line.edit = new QLineEdit(parent);
    line.edit->setReadOnly(true);
    line.button = new QPushButton(buttonText, parent);
    line.button->setAutoDefault(false);
    auto* layout = new QHBoxLayout;
    layout->setSpacing(3);
    layout->addWidget(line.edit, 1);
    layout->addWidget(line.button);
    line.layout = layout;
    return line;
}

void showName(QLineEdit* edit, const QString& name, bool isKnown)
{
    edit->setText(name);
    edit->setCursorPosition(0);
    markFault(edit, !isKnown);
}
