#include "devices/shared/lint_checks.h"

#include "base/keys.h"

#include <algorithm>
#include <cstring>

bool isPowerOfTwo(qint64 n)
{
    return n > 0 && (n & (n - 1)) == 0;
}

bool isMadeOf(const QString& text, const char* characters)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [characters](QChar c) {
        return c.unicode() != 0 && c.unicode() < 0x80 && std::strchr(characters, c.toLatin1()) != nullptr;
    });
}

bool isHex(const QString& text, int digits)
{
    return text.size() == digits && isMadeOf(text, "0123456789ABCDEF");
}

void expectInside(TLintFile& file, const QLatin1String& key, qint64 size)
{
    const qint64 begin = file.number(key);
    qint64 chip = 1;
    while (chip < size && chip < largestChip)
        chip *= 2;
    file.expect(begin >= 0 && (begin == 0 || begin <= chip - size), key, "ends behind the chip");
}

void expectSignature(TLintFile& file, const TLintLists& lists)
{
    const QString signature = file.text(key::signature);
    file.expect(isHex(signature, 6), key::signature, "three bytes in upper case");
    file.expect(lists.signatures.contains(signature), key::signature, "is not in signature.lst");
}
