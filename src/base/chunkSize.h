#pragma once

#include <QtGlobal>

/// Bytes from addr up to the next multiple of block, or up to addr_last if that is nearer; 0 if addr is
/// beyond addr_last or block is below 1. So a piece never crosses a multiple of block.
qint64 chunkSize(qint64 addr, qint64 addr_last, qint64 block);
