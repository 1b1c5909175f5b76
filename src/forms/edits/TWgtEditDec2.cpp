#include "forms/edits/TWgtEditDec2.h"

#include "forms/edits/TNumberValidator.h"

#include <algorithm>

TWgtEditDec2::TWgtEditDec2(int value, QWidget* parent)
    : TNumberEdit<int>(value, {10, 0}, new TIntValidator, parent)
{
    setRange(0, std::numeric_limits<int>::max());
}

bool TWgtEditDec2::allows(int value) const
{
    const qint64 size = qAbs<qint64>(value);
    return size >= minimum() && size <= maximum();
}

int TWgtEditDec2::fitted(int value) const
{
    if (value == 0 && !allows(0))
        return allows(defaultValue()) ? defaultValue() : minimum();
    const int size = int(std::clamp<qint64>(qAbs<qint64>(value), minimum(), maximum()));
    return value < 0 ? -size : size;
}

int TWgtEditDec2::stepped(int value, int delta) const
{
    const int next = int(std::clamp<qint64>(qint64(value) + delta, -maximum(), maximum()));
    const bool entersGap = allows(value) && !allows(next);
    return entersGap ? delta * minimum() : next;
}
