#pragma once

#include "TChip.h"

/// Serial flash: chips and their descriptions from the tables spi-flash.tsv and spi-status.tsv.
class TFlashText
{
public:
    TFlashText(const TTable& chips, const TTable& status);

    /// What a row names that another table does not have, or lacks; empty when all is there.
    QString fault() const;
    QList<TChip> chips() const;
    QByteArray description(const TChip& chip, const QList<TChip>& sameSignature) const;

private:
    void remarks(TChipText& text, const TChip& chip, const QList<TChip>& sameSignature) const;
    void statusRegisters(TChipText& text, const TTable::Row& chip) const;

    const TTable& m_chips;
    const TTable& m_status;
};
