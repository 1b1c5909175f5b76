#pragma once

#include "devices/shared/TFamilyRules.h"
#include "devices/shared/TLintFile.h"

// Checks of a description that several families make. Each puts its fault into the file.

constexpr qint64 largestChip = 0x1000000; ///< bytes that three address bytes reach

bool isPowerOfTwo(qint64 n);
/// The text is of these characters only, and not empty.
bool isMadeOf(const QString& text, const char* characters);
/// So many digits in upper case.
bool isHex(const QString& text, int digits);
/// An area that does not begin at 0 still ends in the chip, whose size is a power of two.
void expectInside(TLintFile& file, const QLatin1String& key, qint64 size);
/// The signature is three bytes, and automatic detection knows it.
void expectSignature(TLintFile& file, const TLintLists& lists);
