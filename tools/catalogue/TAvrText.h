#pragma once

#include "TChip.h"

/// AVR microcontrollers: chips and their descriptions from the tables avr.tsv, avr-layouts.tsv and
/// avr-values.tsv.
class TAvrText
{
public:
    TAvrText(const TTable& chips, const TTable& layouts, const TTable& values);

    /// What a row names that another table does not have, empty when all is there.
    QString fault() const;
    QList<TChip> chips() const;
    QByteArray description(const TChip& chip, const QList<TChip>& sameSignature) const;

private:
    struct Byte
    {
        QString title;
        QString layout;
    };

    void fuses(TChipText& text, const TTable::Row& chip) const;
    void lock(TChipText& text, const TTable::Row& chip) const;
    void form(TChipText& text, const char* key, const QList<Byte>& bytes, const QString& factory,
              const TTable::Row& chip) const;
    /// The values of a list: byte and meaning.
    QList<QPair<uint, QString>> valuesOf(const QString& list) const { return m_values.value(list); }

    const TTable& m_chips;
    QHash<QString, QList<TTable::Row>> m_layouts;
    QHash<QString, QList<QPair<uint, QString>>> m_values;
};
