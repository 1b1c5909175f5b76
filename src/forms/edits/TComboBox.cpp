#include "forms/edits/TComboBox.h"

#include "forms/edits/colors.h"

#include <QAbstractItemView>
#include <QScrollBar>
#include <QStyleOptionComboBox>

TComboBox::TComboBox(QWidget* parent)
    : TSteadyBox(parent)
{
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &TComboBox::slotChanged);
    slotChanged();
}

void TComboBox::allowNarrow(int letters)
{
    m_leastLetters = letters;
    updateGeometry();
}

QSize TComboBox::minimumSizeHint() const
{
    const QSize whole = QComboBox::minimumSizeHint();
    if (m_leastLetters == 0)
        return whole;
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QSize text(m_leastLetters * fontMetrics().horizontalAdvance(QLatin1Char('X')), whole.height());
    const int least = style()->sizeFromContents(QStyle::CT_ComboBox, &option, text, this).width();
    return {qMin(least, whole.width()), whole.height()};
}

void TComboBox::showPopup()
{
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + view()->verticalScrollBar()->sizeHint().width());
    QComboBox::showPopup();
}

void TComboBox::slotChanged()
{
    markFault(this, currentIndex() < 0);
}
