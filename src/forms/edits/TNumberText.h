#pragma once

#include <QString>

/// How a field writes and reads its number, without regard to the user's locale.
struct TNumberText
{
    int base = 10;    ///< of whole numbers: 10, or 16 with "0x" in front
    int decimals = 0; ///< shown behind the point of a double

    QString text(int value) const { return text(qint64(value)); }
    QString text(qint64 value) const;
    QString text(double value) const;

    /// What is no number reads as 0, what is too large as the largest of its sign.
    void read(const QString& text, int& value) const;
    void read(const QString& text, qint64& value) const;
    void read(const QString& text, double& value) const;

    /// A number as the commands keep it, always decimal. False, and the value as read() gives it, for what
    /// is none of this type.
    static bool readStored(const QString& text, int& value);
    static bool readStored(const QString& text, qint64& value);
    static bool readStored(const QString& text, double& value);
};
