#pragma once

#include "TChip.h"

/// I2C EEPROMs: chips and their descriptions from the table i2c-eeprom.tsv.
class TEepromText
{
public:
    explicit TEepromText(const TTable& chips);

    QList<TChip> chips() const;
    static QByteArray description(const TChip& chip);

private:
    const TTable& m_chips;
};
