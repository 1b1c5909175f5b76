#pragma once

#include <QRegularExpression>
#include <QValidator>

/// Lets through what may stand in a number field while it is typed, the empty text included: the range
/// counts only when the field is left, so everything else is acceptable.
class TNumberValidator : public QValidator
{
    Q_OBJECT

public:
    State validate(QString& text, int& pos) const override;

protected:
    /// pattern of the texts that may be typed; blanks around it do not matter.
    TNumberValidator(const QString& pattern, QObject* parent);

private:
    QRegularExpression m_pattern;
};

/// A decimal whole number of 32 bits.
class TIntValidator : public TNumberValidator
{
    Q_OBJECT

public:
    explicit TIntValidator(QObject* parent = nullptr);
};

/// A decimal whole number of 64 bits.
class Int64Validator : public TNumberValidator
{
    Q_OBJECT

public:
    explicit Int64Validator(QObject* parent = nullptr);
};

/// A decimal fraction with a point, whatever the locale; a comma becomes the point, for "3,3" must never be
/// taken for 33.
class TDoubleValidator : public TNumberValidator
{
    Q_OBJECT

public:
    /// decimals: most digits behind the point.
    explicit TDoubleValidator(int decimals, QObject* parent = nullptr);
    State validate(QString& text, int& pos) const override;
};

/// A hexadecimal number of 32 bits, with or without "0x".
class THexValidator : public TNumberValidator
{
    Q_OBJECT

public:
    explicit THexValidator(QObject* parent = nullptr);
};

/// A hexadecimal number of 64 bits, with or without "0x".
class THex64Validator : public TNumberValidator
{
    Q_OBJECT

public:
    explicit THex64Validator(QObject* parent = nullptr);
};

/// Bytes in hexadecimal, blanks anywhere.
class TStrHexValidator : public TNumberValidator
{
    Q_OBJECT

public:
    explicit TStrHexValidator(QObject* parent = nullptr);
};
