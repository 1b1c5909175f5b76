#pragma once

#include <QByteArray>

// The bits that a control of a register form shows and changes. Bytes past the end of a string count as 0.

/// value cut to the length of mask, and with it.
QByteArray maskedBits(const QByteArray& value, const QByteArray& mask);
/// value with the bits of mask taken from data; longer if the mask is.
QByteArray mergedBits(QByteArray value, const QByteArray& mask, const QByteArray& data);
/// A bit of the mask is set in value, or, if inverse, is clear there. Bytes past the end of value have
/// neither.
bool hasBit(const QByteArray& value, const QByteArray& mask, bool inverse);
/// The bytes of value under which the mask is not 0, and with it.
QByteArray shownBits(const QByteArray& value, const QByteArray& mask);
/// value cut or filled with zero bytes to that size.
QByteArray resizedBytes(const QByteArray& value, int size);
