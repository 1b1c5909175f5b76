#include "forms/edits/TNumberText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int hexBase = 16;
constexpr quint64 greatest = quint64(std::numeric_limits<qint64>::max());

bool dropSign(QString& text)
{
    const bool isNegative = text.startsWith(QLatin1Char('-'));
    if (isNegative || text.startsWith(QLatin1Char('+')))
        text.remove(0, 1);
    return isNegative;
}

bool areDigits(const QString& text, int base)
{
    return std::all_of(text.begin(), text.end(), [base](QChar c) {
        bool ok = false;
        QString(c).toInt(&ok, base);
        return ok;
    });
}

/// The digits as a number, at most limit, which is also what a text too long for the type gives.
quint64 magnitude(const QString& digits, int base, quint64 limit)
{
    if (digits.isEmpty() || !areDigits(digits, base))
        return 0;
    bool ok = false;
    const quint64 value = digits.toULongLong(&ok, base);
    return ok ? qMin(value, limit) : limit;
}

} // namespace

QString TNumberText::text(qint64 value) const
{
    if (base != hexBase)
        return QString::number(value);
    const quint64 bits = value < 0 ? 0 - quint64(value) : quint64(value);
    const QString digits = QString::number(bits, hexBase).toUpper().rightJustified(2, QLatin1Char('0'));
    return QLatin1String(value < 0 ? "-0x" : "0x") + digits;
}

QString TNumberText::text(double value) const
{
    return QString::number(value, 'f', decimals);
}

void TNumberText::read(const QString& text, qint64& value) const
{
    QString digits = text.trimmed();
    const bool isNegative = dropSign(digits);
    if (base == hexBase && digits.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        digits.remove(0, 2);
    const quint64 bits = magnitude(digits, base, isNegative ? greatest + 1 : greatest);
    value = qint64(isNegative ? 0 - bits : bits);
}

void TNumberText::read(const QString& text, int& value) const
{
    qint64 wide = 0;
    read(text, wide);
    value = int(std::clamp<qint64>(wide, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

void TNumberText::read(const QString& text, double& value) const
{
    value = text.trimmed().toDouble();
    if (std::isnan(value))
        value = 0;
    else if (std::isinf(value))
        value = std::copysign(std::numeric_limits<double>::max(), value);
}

bool TNumberText::readStored(const QString& text, int& value)
{
    bool ok = false;
    text.toInt(&ok);
    TNumberText{}.read(text, value);
    return ok;
}

bool TNumberText::readStored(const QString& text, qint64& value)
{
    bool ok = false;
    text.toLongLong(&ok);
    TNumberText{}.read(text, value);
    return ok;
}

bool TNumberText::readStored(const QString& text, double& value)
{
    bool ok = false;
    const bool isFinite = std::isfinite(text.toDouble(&ok));
    TNumberText{}.read(text, value);
    return ok && isFinite;
}
