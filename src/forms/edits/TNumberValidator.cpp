#include "forms/edits/TNumberValidator.h"

namespace {

QString decimalPattern()
{
    return QStringLiteral("[-+]?[0-9]*");
}

QString hexPattern()
{
    return QStringLiteral("-?(0[xX])?[0-9A-Fa-f]*");
}

QString realPattern(int decimals)
{
    return QStringLiteral("[-+]?[0-9]*(\\.[0-9]{0,%1})?").arg(decimals);
}

} // namespace

TNumberValidator::TNumberValidator(const QString& pattern, QObject* parent)
    : QValidator(parent)
    , m_pattern(QStringLiteral("\\A\\s*%1\\s*\\z").arg(pattern))
{
}

QValidator::State TNumberValidator::validate(QString& text, int&) const
{
    return m_pattern.match(text).hasMatch() ? Acceptable : Invalid;
}

TIntValidator::TIntValidator(QObject* parent)
    : TNumberValidator(decimalPattern(), parent)
{
}

Int64Validator::Int64Validator(QObject* parent)
    : TNumberValidator(decimalPattern(), parent)
{
}

TDoubleValidator::TDoubleValidator(int decimals, QObject* parent)
    : TNumberValidator(realPattern(decimals), parent)
{
}

QValidator::State TDoubleValidator::validate(QString& text, int& pos) const
{
    text.replace(QLatin1Char(','), QLatin1Char('.'));
    return TNumberValidator::validate(text, pos);
}

THexValidator::THexValidator(QObject* parent)
    : TNumberValidator(hexPattern(), parent)
{
}

THex64Validator::THex64Validator(QObject* parent)
    : TNumberValidator(hexPattern(), parent)
{
}

TStrHexValidator::TStrHexValidator(QObject* parent)
    : TNumberValidator(QStringLiteral("[0-9A-Fa-f ]*"), parent)
{
}
