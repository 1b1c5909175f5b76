#pragma once

#include "formats/crc/ICRC.h"

/// Two's complement of the 8-bit sum of all bytes, as it ends a record of an Intel HEX file or a message of
/// the Modbus ASCII mode.
class TCHKSUM_8 final : public ICRC
{
public:
    quint64 update(const char* data, qint64 size) override;
    QByteArray result() override;

private:
    quint8 m_state = 0;
};
