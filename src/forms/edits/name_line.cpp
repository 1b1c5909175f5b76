#include "forms/edits/name_line.h"

#include "forms/edits/TTextKeys.h"
#include "forms/edits/colors.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

TNameLine addNameLine(QFormLayout* layout, const QString& label, const QString& buttonText)
{
    TNameLine line;
    line.edit = new QLineEdit;
    line.edit->setReadOnly(true);
    new TTextKeys(line.edit);
    line.button = new QPushButton(buttonText);
    line.button->setAutoDefault(false);
    auto* row = new QHBoxLayout;
    row->setSpacing(3);
    row->addWidget(line.edit, 1);
    row->addWidget(line.button);
    auto* title = new QLabel(label);
    title->setBuddy(line.edit);
    layout->addRow(title, row);
    return line;
}

void showName(QLineEdit* edit, const QString& name, bool isKnown)
{
    edit->setText(name);
    edit->setCursorPosition(0);
    markFault(edit, !isKnown);
}
