#pragma once

#include "formats/crc/ICRC.h"
#include "formats/crc/crcTable.h"

/// Base of the algorithms that take a byte by one look into a table of 256 entries.
template <class State> class TCRC : public ICRC
{
public:
    quint64 update(const char* data, qint64 size) override;
    QByteArray result() override;

protected:
    /// params and table are constants of the program.
    TCRC(const TCrcParams& params, const State* table);

private:
    State m_state;
    const TCrcParams& m_params;
    const State* const m_table;
};

extern template class TCRC<quint8>;
extern template class TCRC<quint16>;
extern template class TCRC<quint32>;
extern template class TCRC<quint64>;
