#include "devices/i2c/TDev24Exec.h"

#include "base/keys.h"
#include "devices/i2c/TDev24.h"
#include "link/wire/bytes.h"

namespace {

constexpr quint8 opSetPins = 3;
constexpr quint8 opWrite = 4;
constexpr quint8 opRead = 5;
constexpr quint8 controlByte = 0xA0; ///< the type of device, common to all serial EEPROMs
constexpr quint8 erasedByte = 0xFF;
constexpr int blockBits = 3; ///< address bits that find room in the control byte

} // namespace

TDev24CExec::TDev24CExec(const TData& data)
    : TFamilyExec(data, TDev24::commands())
{
}

TMemory TDev24CExec::memory(Area)
{
    TMemory memory;
    memory.region = {chip(key::addr_begin).toLongLong(), chip(key::size).toLongLong()};
    const qint64 page = chip(key::page_size).toLongLong();
    // Where the chip's address counter turns back inside the chip, a read that went on would start over.
    const qint64 block = description().value(key::read_block).toLongLong();
    memory.reads = {maxData(), block > 0 ? block : maxData()};
    memory.writes = {qMin<qint64>(maxData(), page), page};
    const uint addrSize = qMin(chip(key::addr_size).toUInt(), 2U);
    memory.reach = qint64(1) << (addrSize * 8 + blockBits);
    memory.read = [this](qint64 addr, int n, QByteArray& bytes) { return chipRead(addr, n, bytes); };
    memory.write = [this](qint64 addr, const QByteArray& bytes) { return chipWrite(addr, bytes); };
    return memory;
}

bool TDev24CExec::runOwn(const TCommandRow& row)
{
    if (row.key == cmd::set_addr)
        return setAddr();
    // There is no command for it: an erased chip is one written full.
    return row.key == cmd::erase ? writeAll(memory(Area::Whole), erasedByte) : fail();
}

bool TDev24CExec::addressed(qint64 addr, QByteArray& bytes)
{
    const uint addrSize = chip(key::addr_size).toUInt();
    if (addrSize != 1 && addrSize != 2)
        return fail();
    // The bits above those that are sent select a block, in the place of address pins.
    bytes.append(char(quint8(controlByte | (addr >> (addrSize * 8) & 0xFF) * 2)));
    if (addrSize == 2)
        bytes.append(char(addr >> 8 & 0xFF));
    bytes.append(char(addr & 0xFF));
    return true;
}

bool TDev24CExec::chipRead(qint64 addr, int n, QByteArray& bytes)
{
    QByteArray payload = wordBytes(n);
    return requireAlgZero(key::alg_read) && addressed(addr, payload) && request(opRead, payload, bytes);
}

bool TDev24CExec::chipWrite(qint64 addr, const QByteArray& bytes)
{
    QByteArray payload;
    return requireAlgZero(key::alg_write) && addressed(addr, payload) && send(opWrite, payload + bytes);
}

bool TDev24CExec::setAddr()
{
    const uint pins = param(key::addr).toUInt() & chip(key::addr_mask).toUInt();
    return send(opSetPins, QByteArray(1, char(quint8(pins * 2))));
}
