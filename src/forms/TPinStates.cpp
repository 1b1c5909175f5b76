#include "forms/TPinStates.h"

#include "forms/TFormCommand.h"
#include "forms/edits/TComboBox.h"
#include "forms/edits/colors.h"
#include "misc/TNormCmdParam.h"

#include <QBoxLayout>
#include <QFormLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>

namespace {

/// A style may put an "&" into a button's text, so the letter is not taken from there.
constexpr char letterProperty[] = "letter";
constexpr int spacing = 3;
constexpr int buttonsInRow = 5; // more would make the form wider than its page
constexpr int leastHeight = 110;
constexpr int buttonMargin = 12;
constexpr int stateLetters = 12; // of a text, to be seen

} // namespace

TPinStates::TPinStates(const QStringList& pins, const QStringList& texts, const QFont& font, Buttons place)
    : m_texts(texts)
{
    QWidget* rows = pinRows(pins, font);
    auto* layout = new QBoxLayout(place == Below ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight, this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing);
    layout->addWidget(place == Below ? rows : scrolled(rows), place == Below ? 0 : 1);
    layout->addLayout(buttons(font, place));
    if (place == Below)
        layout->addStretch(1);
    setState(QString());
}

QWidget* TPinStates::pinRows(const QStringList& pins, const QFont& font)
{
    auto* page = new QWidget;
    QFormLayout* rows = formRows(page);
    rows->setSpacing(spacing);
    // In a narrow page the pin stands above its state.
    rows->setRowWrapPolicy(QFormLayout::WrapLongRows);
    for (const QString& pin : pins) {
        auto* box = new TComboBox;
        box->setFont(font);
        box->addItems(m_texts);
        box->allowNarrow(stateLetters);
        rows->addRow(literalLabel(pin), box);
        m_boxes.append(box);
        connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                &TPinStates::slotChangedState);
    }
    return page;
}

QWidget* TPinStates::scrolled(QWidget* rows)
{
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setMinimumHeight(leastHeight);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(rows);
    return area;
}

QGridLayout* TPinStates::buttons(const QFont& font, Buttons place)
{
    auto* grid = new QGridLayout;
    grid->setSpacing(spacing);
    const int columns = place == Below ? buttonsInRow : 1;
    int count = 0;
    int width = 0;
    for (const QString& text : m_texts) {
        const QString letter = text.left(1);
        auto* button = new QPushButton(QStringLiteral("All '%1'").arg(literalLabel(letter)));
        button->setFont(font);
        button->setToolTip(text);
        button->setProperty(letterProperty, letter);
        button->setEnabled(!m_boxes.isEmpty());
        width = qMax(width, button->fontMetrics().horizontalAdvance(button->text()) + buttonMargin);
        grid->addWidget(button, count / columns, count % columns);
        ++count;
        connect(button, &QPushButton::clicked, this, &TPinStates::slotSetStateAll);
    }
    // The style's own width would make the form wider than its page.
    for (int i = 0; i < count; ++i)
        grid->itemAt(i)->widget()->setMinimumWidth(width);
    if (place == Beside)
        grid->setRowStretch(count, 1);
    return grid;
}

void TPinStates::setState(const QString& state)
{
    m_state = padState(state, m_boxes.size());
    for (int pin = 0; pin < m_boxes.size(); ++pin) {
        TComboBox* box = m_boxes.at(pin);
        const QSignalBlocker blocker(box);
        int fitting = m_texts.size() - 1;
        while (fitting >= 0 && !m_texts.at(fitting).startsWith(m_state.at(pin)))
            --fitting;
        box->setCurrentIndex(fitting);
        box->slotChanged();
    }
}

void TPinStates::slotChangedState()
{
    auto* box = qobject_cast<TComboBox*>(sender());
    const int pin = m_boxes.indexOf(box);
    if (pin < 0 || box->currentIndex() < 0)
        return;
    m_state[pin] = box->currentText().at(0);
    emit signalChanged();
}

void TPinStates::slotSetStateAll()
{
    setState(sender()->property(letterProperty).toString().repeated(m_boxes.size()));
    emit signalChanged();
}
