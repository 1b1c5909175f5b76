#pragma once

#include <QByteArray>
#include <QObject>

/// A checksum in the making. One object serves one computation on one thread.
class ICRC : public QObject
{
public:
    ICRC();
    ~ICRC() override;

    /// Folds size bytes into the state and returns it; of a state above 64 bits the low 64. Long pieces are
    /// faster than many short ones.
    virtual quint64 update(const char* data, qint64 size) = 0;
    /// Finishes and gives the checksum, most significant byte first, the bits of a width that is no
    /// multiple of 8 in the low end of the first byte. Call it once, last: it changes the state.
    virtual QByteArray result() = 0;

protected:
    /// The low count bytes of value, most significant first.
    static QByteArray bigEndian(quint64 value, int count);
};
