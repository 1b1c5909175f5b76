#include "forms/prog/TFormProgSetIO.h"

#include "base/keys.h"
#include "forms/TPinStates.h"

#include <QVBoxLayout>

TFormProgSetIO::TFormProgSetIO(const TData& params, const QStringList& pins, const QStringList& texts,
                               const QFont& font)
    : TFormCommand(params, {key::state})
    , m_pins(new TPinStates(pins, texts, font, TPinStates::Beside))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pins);
    TFormProgSetIO::showParams();
    connect(m_pins, &TPinStates::signalChanged, this, &TFormProgSetIO::slotChanged);
}

void TFormProgSetIO::showParams()
{
    m_pins->setState(textParam(key::state));
}

void TFormProgSetIO::slotChanged()
{
    setParam(key::state, m_pins->state());
    report();
}
