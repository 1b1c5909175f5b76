#pragma once

#include <QList>
#include <QStringList>

/// An erase command of a chip: the command's byte and the bytes that one of them erases.
struct TBlockErase
{
    quint8 op = 0;
    qint64 bytes = 0;

    /// Reads "op|bytes", op in hexadecimal, bytes in decimal. False unless these are two fields, the first of
    /// which is a byte. bytes of a damaged text come out as 0.
    [[nodiscard]] static bool fromText(const QString& text, TBlockErase& erase);
};

/// The readable ones of a description's list, in its order.
QList<TBlockErase> blockErases(const QStringList& texts);
