#pragma once

#include "base/keys.h"
#include "misc/TNormCmdParam.h"

#include <QString>

#include <cstddef>

class IDevice;

/// What a family's command works on: a memory with addresses, or a register that is one value.
enum class Area { None, Whole, Flash, Eeprom, Security, Sfdp, Status, Fuse, Lock, Osccal, UniqueId };

/// Parameters, text and form that a command shares with others.
enum class Shape {
    Separator,    ///< no command: a rule in the selector
    Plain,        ///< no parameters, no text
    Ident,        ///< no parameters; the text is the signature
    Clock,        ///< clk
    Pins,         ///< addr: the state of an I2C chip's address pins
    Blocks,       ///< size, begin, count, in blocks
    Char,         ///< addr_device, count, fill_char
    Data,         ///< addr_device, data
    File,         ///< file, format, addr_file, addr_device, count
    Register,     ///< data: the register's value in hexadecimal
    RegisterMask, ///< data: a number, bit i selects register i
    Leave         ///< state, and with a reset also reset and duration
};

/// What a command does with its area.
enum class Action { None, Read, Write, Verify, TestEmpty };

/// One command of a family.
struct TCommandRow
{
    QLatin1String key;
    Shape shape;
    Area area = Area::None;
    Action action = Action::None;
};

/// The commands of a family in the order of the selector. The rows are constants; this only borrows them.
struct TCommandTable
{
    template <std::size_t N>
    constexpr TCommandTable(const TCommandRow (&table)[N])
        : rows(table)
        , count(int(N))
    {
    }

    const TCommandRow* begin() const { return rows; }
    const TCommandRow* end() const { return rows + count; }
    /// The row of a command, null for an unknown word and for "separator".
    const TCommandRow* find(const QString& key) const;

    const TCommandRow* rows;
    int count;
};

/// Addresses of a memory in a chip's description; an area that is no memory gives an empty region.
TRegion areaRegion(const IDevice& device, Area area);

/// Keys of a chip's description that belong to a register.
struct TRegisterKeys
{
    QLatin1String def; ///< default value in hexadecimal; its length gives the number of bytes
    QLatin1String cfg; ///< items of its form
    bool editable;     ///< its form has a line for the whole value
};
/// Null for an area that is no described register.
const TRegisterKeys* registerKeys(Area area);
