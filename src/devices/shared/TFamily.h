#pragma once

#include "base/types.h"
#include "devices/shared/TFamilyRules.h"

#include <QList>

class IDevice;
struct TCommandTable;

/// A chip family as the rest of the program knows it.
struct TFamily
{
    QLatin1String word;    ///< the class word, gui_type of a description
    QLatin1String type;    ///< prg_type: its word in types.lst, whose number goes to the programmer
    QLatin1String section; ///< prg_section: its group in a programmer's description
    /// A chip of the family with that description, owned by the caller.
    IDevice* (*make)(const QString& name, const TData& description);
    const TCommandTable& (*commands)();
    /// What its descriptions have to keep.
    TFamilyRules (*rules)();
};

/// All families that a description can select. Never changes; any thread.
const QList<TFamily>& families();
/// The family of a class word, null when there is none.
const TFamily* familyOfClass(const QString& word);
