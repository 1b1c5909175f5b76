#include "forms/edits/form_bits.h"

namespace {

quint8 at(const QByteArray& bytes, int i)
{
    return i < bytes.size() ? quint8(bytes.at(i)) : quint8(0);
}

} // namespace

QByteArray maskedBits(const QByteArray& value, const QByteArray& mask)
{
    QByteArray result = mask;
    for (int i = 0; i < mask.size(); ++i)
        result[i] = char(at(value, i) & at(mask, i));
    return result;
}

QByteArray mergedBits(QByteArray value, const QByteArray& mask, const QByteArray& data)
{
    value = resizedBytes(value, qMax(value.size(), mask.size()));
    for (int i = 0; i < mask.size(); ++i) {
        const int kept = at(value, i) & ~at(mask, i);
        // Data outside the mask goes in as it stands: that is how a preset sets what it names.
        value[i] = char(quint8(kept | at(data, i)));
    }
    return value;
}

bool hasBit(const QByteArray& value, const QByteArray& mask, bool inverse)
{
    for (int i = 0; i < value.size(); ++i) {
        const int bits = inverse ? ~at(value, i) : at(value, i);
        if ((bits & at(mask, i)) != 0)
            return true;
    }
    return false;
}

QByteArray shownBits(const QByteArray& value, const QByteArray& mask)
{
    QByteArray result;
    for (int i = 0; i < value.size(); ++i) {
        if (at(mask, i) != 0)
            result.append(char(at(value, i) & at(mask, i)));
    }
    return result;
}

QByteArray resizedBytes(const QByteArray& value, int size)
{
    return value.left(size) + QByteArray(qMax(0, size - value.size()), '\0');
}
