#pragma once

#include <QHash>
#include <QLatin1String>
#include <QList>
#include <QSet>

class TLintFile;

/// What the lists of a folder of devices say that a description must agree with.
struct TLintLists
{
    QHash<QString, int> types; ///< families by word
    QSet<QString> signatures;  ///< of the signature.lst beside the description
};

/// One key of a description.
struct TKeyRule
{
    /// Which descriptions are not complete without the key: those of whole chips, or those for automatic
    /// detection too.
    enum Need { Optional, Chip, Always };

    QLatin1String key;
    const char* types; ///< letters that its value may have
    Need need = Optional;
    int ways = 0; ///< alg_...: greatest number of an algorithm
};

/// What the descriptions of a family have to keep, for the checker.
struct TFamilyRules
{
    /// The family's own keys; those of every family are known to the checker.
    QList<TKeyRule> keys;
    /// Faults of a whole chip that no single key shows.
    void (*check)(TLintFile& file, const TLintLists& lists);
};
