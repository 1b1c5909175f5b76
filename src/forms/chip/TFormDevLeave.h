#pragma once

#include "forms/TFormCommand.h"

class QCheckBox;
class TPinStates;
class TWgtEditDecDef;

/// What becomes of the pins when the programmer leaves the chip, and of a chip with a reset line the
/// pulse on it.
class TFormDevLeave : public TFormCommand
{
    Q_OBJECT

public:
    /// The pulse on the reset line, in milliseconds; the sign is its polarity.
    struct Pulse
    {
        int min = 0; ///< not negative, as max
        int max = 0;
        int usual = 0;
        bool isPositive = true;
    };

    /// state: a letter for each of the pins; texts: the states on offer, each beginning with its letter.
    /// pulse: null for a chip without a reset line.
    TFormDevLeave(const TData& params, const QString& state, const QStringList& pins,
                  const QStringList& texts, const Pulse* pulse);

public slots:
    void slotChangedReset();
    void slotChangedState();

private:
    void showParams() override;
    void addPulse(const Pulse& pulse);

    QCheckBox* m_reset = nullptr;
    TWgtEditDecDef* m_duration = nullptr;
    TPinStates* m_pins;
};
