#pragma once

#include "forms/TFormCommand.h"

class TPinStates;

/// The states of the programmer's pins.
class TFormProgSetIO : public TFormCommand
{
    Q_OBJECT

public:
    /// pins: names in the order of the state's letters. texts: the states on offer, each beginning with its
    /// letter. font: of fixed width, for boxes and buttons.
    TFormProgSetIO(const TData& params, const QStringList& pins, const QStringList& texts, const QFont& font);

public slots:
    void slotChanged();

private:
    void showParams() override;

    TPinStates* m_pins;
};
