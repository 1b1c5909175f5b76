#pragma once

class QFormLayout;
class QLineEdit;
class QPushButton;
class QString;

/// A name that is not typed but chosen: a line that only shows it, and beside it
/// a button that lets choose.
struct TNameLine
{
    QLineEdit* edit = nullptr;
    QPushButton* button = nullptr;
};
/// Appends both to the layout.
TNameLine addNameLine(QFormLayout* layout, const QString& label, const QString& buttonText);
/// Shows the name from its start; marked when nothing is known under it.
void showName(QLineEdit* edit, const QString& name, bool isKnown);
