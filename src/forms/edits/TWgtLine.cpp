#include "forms/edits/TWgtLine.h"

TWgtLine::TWgtLine(QWidget* parent)
    : QFrame(parent)
{
    setFrameStyle(QFrame::HLine | QFrame::Sunken);
    setFixedHeight(10);
}
