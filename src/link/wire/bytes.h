#pragma once

#include <QByteArray>
#include <QtEndian>

// Numbers as the programmer's protocol has them: the low byte first, whatever this machine does.

/// The low 16 bits of n in two bytes.
inline QByteArray wordBytes(qint64 n)
{
    QByteArray bytes(2, Qt::Uninitialized);
    qToLittleEndian(static_cast<quint16>(n), bytes.data());
    return bytes;
}

/// The low 32 bits of n in four bytes.
inline QByteArray doubleWordBytes(qint64 n)
{
    QByteArray bytes(4, Qt::Uninitialized);
    qToLittleEndian(static_cast<quint32>(n), bytes.data());
    return bytes;
}

/// The number in the two bytes from index on; what lies behind the end of too short a reply counts as 0.
inline int wordAt(const QByteArray& bytes, int index)
{
    const QByteArray two = bytes.mid(index, 2).leftJustified(2, '\0');
    return qFromLittleEndian<quint16>(two.constData());
}
