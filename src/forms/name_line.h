#pragma once

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

/// A name that is not typed but chosen: a line that only shows it, and a button that lets choose.
struct TNameLine
{
    QLayout* layout = nullptr;
    QLineEdit* edit = nullptr;
    QPushButton* button = nullptr;
};
TNameLine makeNameLine(const QString& buttonText, QWidget* parent);
/// Shows the name from its start; marked when nothing is known under it.
void showName(QLineEdit* edit, const QString& name, bool isKnown);
