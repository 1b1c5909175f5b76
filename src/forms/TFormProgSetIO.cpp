#include "forms/TFormProgSetIO.h"

#include "core/keys.h"
#include "forms/TComboBox.h"
#include "misc/TNormCmdParam.h"

#include <QFormLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>

namespace {
/// A style may put an "&" into a button's text, so the letter is not taken from there.
constexpr char letterProperty[] = "letter";
constexpr int leastHeight = 110;
constexpr int buttonMargin = 12;
constexpr int stateLetters = 15; // of a text, to be seen
} // namespace

TFormProgSetIO::TFormProgSetIO(const TData& params, const QStringList& pins, const QString& letters,
                               const QStringList& texts, const QFont& font)
    : TFormCommand(params, {key::state})
    , m_letters(letters)
{
    auto* area = new QScrollArea(this);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setMinimumHeight(leastHeight);
    area->setWidget(pinRows(pins, texts, font));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(3);
    layout->addWidget(area, 1);
    layout->addLayout(letterButtons(font));
    TFormProgSetIO::showParams();
    for (const TComboBox* box : qAsConst(m_boxes))
        connect(box, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &TFormProgSetIO::slotChanged);
}

QWidget* TFormProgSetIO::pinRows(const QStringList& pins, const QStringList& texts, const QFont& font)
{
    auto* rows = new QWidget;
    QFormLayout* layout = formRows(rows);
    layout->setSpacing(3);
    // In a narrow page the pin stands above its state.
    layout->setRowWrapPolicy(QFormLayout::WrapLongRows);
    for (const QString& pin : pins) {
        auto* box = new TComboBox(rows);
        box->setFont(font);
        box->addItems(texts);
        box->allowNarrow(stateLetters);
        layout->addRow(pin, box);
        m_boxes.append(box);
    }
    return rows;
}

QVBoxLayout* TFormProgSetIO::letterButtons(const QFont& font)
{
    auto* column = new QVBoxLayout;
    column->setSpacing(3);
    for (const QChar letter : qAsConst(m_letters)) {
        auto* button = new QPushButton(QStringLiteral("All '%1'").arg(letter), this);
        button->setFont(font);
        button->setFixedWidth(button->fontMetrics().horizontalAdvance(button->text()) + buttonMargin);
        button->setProperty(letterProperty, letter);
        column->addWidget(button);
        connect(button, &QPushButton::clicked, this, &TFormProgSetIO::slotSetStateAll);
    }
    column->addStretch(1);
    return column;
}

void TFormProgSetIO::showParams()
{
    const QString state = padState(textParam(key::state), m_boxes.size());
    for (int pin = 0; pin < m_boxes.size(); ++pin)
        showLetter(m_boxes.at(pin), state.at(pin));
}

void TFormProgSetIO::showLetter(TComboBox* box, QChar letter)
{
    const QSignalBlocker blocker(box);
    box->setCurrentIndex(m_letters.indexOf(letter));
    box->slotChanged();
}

void TFormProgSetIO::slotChanged()
{
    auto* box = qobject_cast<TComboBox*>(sender());
    const int pin = m_boxes.indexOf(box);
    if (pin < 0 || box->currentIndex() < 0)
        return;
    QString state = textParam(key::state);
    state = padState(state, qMax(state.size(), m_boxes.size()));
    state[pin] = box->currentText().at(0);
    setParam(key::state, state);
    report();
}

void TFormProgSetIO::slotSetStateAll()
{
    const QChar letter = sender()->property(letterProperty).toChar();
    setParam(key::state, QString(m_boxes.size(), letter));
    showParams();
    report();
}
