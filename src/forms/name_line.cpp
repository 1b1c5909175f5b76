#include "forms/name_line.h"

#include "forms/colors.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

TNameLine addNameLine(QFormLayout* layout, const QString& label, const QString& buttonText)
{
    TNameLine line;
    line.edit = new QLineEdit;
    line.edit->setReadOnly(true);
    line.button = new QPushButton(buttonText);
    line.button->setAutoDefault(false);
    // Side by side, or both behind the label, they would be wider than a narrow page.
    layout->addRow(label, line.edit);
    layout->addRow(line.button);
    return line;
}

void showName(QLineEdit* edit, const QString& name, bool isKnown)
{
    edit->setText(name);
    edit->setCursorPosition(0);
    markFault(edit, !isKnown);
}
