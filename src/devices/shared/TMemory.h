#pragma once

#include "misc/TNormCmdParam.h"

#include <QByteArray>

#include <functional>
#include <limits>

/// How a range is cut into pieces, one exchange each. Bytes.
struct TPieces
{
    /// Most bytes of a piece; a piece never crosses a multiple of it.
    qint64 chunk = 0;
    /// Nor a multiple of this: the chip's page, where a write would wrap.
    qint64 border = 0;

    /// A chunk or border below 1 cuts nothing.
    bool isValid() const { return chunk >= 1 && border >= 1; }
    /// Bytes of the piece at addr; 0 behind last.
    qint64 at(qint64 addr, qint64 last) const;
};

/// One memory of a chip as the loops of the operation layer see it: a family gives the way to read and
/// to write one piece, and what cuts the pieces.
struct TMemory
{
    TRegion region;
    TPieces reads;
    TPieces writes;
    /// First address that a write cannot name: the address bytes of the chip's command would wrap and
    /// hit another place.
    qint64 reach = std::numeric_limits<qint64>::max();

    /// Reads n bytes at addr; false with the reason stored. The loop checks the length of the reply.
    std::function<bool(qint64 addr, int n, QByteArray& bytes)> read;
    /// Writes bytes at addr; false with the reason stored.
    std::function<bool(qint64 addr, const QByteArray& bytes)> write;

    /// Last address of the region; the one before begin for an empty one.
    qint64 last() const;
    /// Last address that a write may touch.
    qint64 lastWritable() const;
    /// The range lies in the region and within reach of a write.
    bool canWrite(qint64 first, qint64 last) const;
};
