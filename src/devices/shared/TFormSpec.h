#pragma once

#include "misc/TNormCmdParam.h"

#include <QList>
#include <QStringList>

/// Which form a command of a chip family has and what the form needs of the chip, without a widget.
/// The command's own parameters stand in its data.
struct TFormSpec
{
    enum class Kind { None, Empty, Clock, Blocks, Char, Data, File, Leave, Items };

    /// None: the command has no form at all. Empty: it has one that shows nothing.
    Kind kind = Kind::None;
    /// Char, Data, File: the memory. Blocks: the whole chip.
    TRegion region;
    /// Blocks: the sizes on offer, in bytes, in the order of the description.
    QList<int> blockSizes;
    /// Leave: with the chip's reset.
    bool withReset = false;

    // Items: a generated form.
    QString value;        ///< hexadecimal
    QString defaultValue; ///< hexadecimal
    QStringList items;    ///< lines of the item language
    bool showEdit = false;
    /// In the form of set_device: the parameter that keeps the value, as a number.
    QString numberKey;
};
