#pragma once

#include "formats/crc/ICRC.h"

/// The one algorithm that is wider than a machine word. It works bit by bit.
class TCRC_82_DARC final : public ICRC
{
public:
    quint64 update(const char* data, qint64 size) override;
    QByteArray result() override;

private:
    quint64 m_high = 0;
    quint64 m_low = 0;
};
