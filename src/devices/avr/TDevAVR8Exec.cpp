#include "devices/avr/TDevAVR8Exec.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "devices/avr/TDevAVR8.h"
#include "link/wire/TSerialPort.h"
#include "link/wire/bytes.h"

namespace {

constexpr quint8 opFlashRead = 3;
constexpr quint8 opFlashWrite = 4;
constexpr quint8 opEepromRead = 5;
constexpr quint8 opEepromWrite = 6;
constexpr quint8 opInstruction = 7;

constexpr int replySize = 4;
constexpr int signatureSize = 3;
constexpr qint64 blockSize = 0x10000;     ///< what the 16 address bits of a frame reach
constexpr qint64 extendedEnd = 0x1000000; ///< with the extended address byte
constexpr qint64 eepromPage = 32;
constexpr char erasedByte = char(0xFF);
constexpr int maxFuses = 3;
constexpr int maxCalibrations = 256; ///< one byte of address
/// The address for which the extended address byte was last sent, as the link keeps it.
constexpr QLatin1String extendedNote("avr/extended_address");
constexpr char verifyText[] = "Fuse Bits: Data: %1, Read: %2";

/// First two bytes of the instructions of the low, high and extended fuse byte.
constexpr quint8 fuseReads[maxFuses][2] = {{0x50, 0x00}, {0x58, 0x08}, {0x50, 0x08}};
constexpr quint8 fuseWrites[maxFuses][2] = {{0xAC, 0xA0}, {0xAC, 0xA8}, {0xAC, 0xA4}};

/// Numbers of alg_flash_write.
enum FlashWrite { writeBytes = 0, writePage = 1, writeExtendedPage = 2 };

/// A piece of flash holds whole words.
qint64 evenDown(qint64 n)
{
    return n < 1 ? n : qMax<qint64>(n & ~qint64(1), 2);
}

} // namespace

TDevAVR8Exec::TDevAVR8Exec(const TData& data)
    : TFamilyExec(data, TDevAVR8_SPI::commands())
{
}

bool TDevAVR8Exec::readChipId(TSerialPort* port, QString& id)
{
    return readSignatureText(port, id);
}

TMemory TDevAVR8Exec::memory(Area area)
{
    return area == Area::Eeprom ? eeprom() : flash();
}

TMemory TDevAVR8Exec::flash()
{
    TMemory memory;
    memory.region = {chip(key::flash_addr_begin).toLongLong(), chip(key::flash_size).toLongLong()};
    // A piece never runs over a line of 64 KiB: a frame has one extended address byte in force.
    memory.reads = {maxData(), blockSize};
    const int write = alg(key::alg_flash_write);
    const qint64 page = chip(key::flash_page_size).toLongLong();
    if (page != 0) {
        memory.writes = {evenDown(qMin<qint64>(maxData(), page)), evenDown(page)};
    } else {
        // Without pages the programmer writes byte by byte and waits after each as the device's block
        // told it, so the frame and its time limit a piece. A commit belongs to a page; where a description
        // asks for one all the same, it gets one word at a time, which is right for any page.
        const qint64 most = qMin<qint64>(maxData(), bytesInTime(chip(key::flash_delay).toLongLong()));
        memory.writes = {write == writeBytes ? evenDown(most) : evenDown(qMin(maxData(), 2)), blockSize};
    }
    memory.reach = write == writeExtendedPage ? extendedEnd : blockSize;
    memory.read = [this](qint64 addr, int n, QByteArray& bytes) { return flashRead(addr, n, bytes); };
    memory.write = [this](qint64 addr, const QByteArray& bytes) { return flashWrite(addr, bytes); };
    return memory;
}

TMemory TDevAVR8Exec::eeprom()
{
    TMemory memory;
    memory.region = {chip(key::eeprom_addr_begin).toLongLong(), chip(key::eeprom_size).toLongLong()};
    memory.reads = {maxData(), blockSize};
    const qint64 most = qMin<qint64>(maxData(), bytesInTime(chip(key::eeprom_delay).toLongLong()));
    memory.writes = {qMin(most, eepromPage), eepromPage};
    memory.reach = blockSize;
    memory.read = [this](qint64 addr, int n, QByteArray& bytes) { return eepromRead(addr, n, bytes); };
    memory.write = [this](qint64 addr, const QByteArray& bytes) { return eepromWrite(addr, bytes); };
    return memory;
}

bool TDevAVR8Exec::runOwn(const TCommandRow& row)
{
    static constexpr struct
    {
        QLatin1String key;
        bool (TDevAVR8Exec::*routine)();
    } routines[] = {
        {cmd::erase, &TDevAVR8Exec::erase},
        {cmd::fuse_read, &TDevAVR8Exec::fuseRead},
        {cmd::fuse_write, &TDevAVR8Exec::fuseWrite},
        {cmd::fuse_verify, &TDevAVR8Exec::fuseVerify},
        {cmd::lock_read, &TDevAVR8Exec::lockRead},
        {cmd::lock_write, &TDevAVR8Exec::lockWrite},
        {cmd::lock_verify, &TDevAVR8Exec::lockVerify},
        {cmd::osccal_read, &TDevAVR8Exec::osccalRead},
    };
    for (const auto& routine : routines) {
        if (routine.key == row.key)
            return (this->*routine.routine)();
    }
    return fail();
}

quint8 TDevAVR8Exec::pace(QLatin1String polling, QLatin1String delay) const
{
    return TDevAVR8_SPI::pace(description(), polling, delay);
}

// Chip primitives.

bool TDevAVR8Exec::instruction(quint8 pace, const Instruction& instruction, QByteArray& reply)
{
    QByteArray payload(1, char(pace));
    for (const quint8 byte : instruction.bytes)
        payload.append(char(byte));
    if (!request(opInstruction, payload, reply))
        return false;
    return reply.size() >= replySize || fail();
}

bool TDevAVR8Exec::echoed(quint8 pace, const Instruction& sent, int n, QByteArray& reply)
{
    if (!instruction(pace, sent, reply))
        return false;
    for (int i = 0; i < n; ++i) {
        if (quint8(reply.at(i + 1)) != sent.bytes[i])
            return fail(langText(Text::WrongEcho));
    }
    return true;
}

bool TDevAVR8Exec::readByte(const Instruction& instruction, quint8& value)
{
    QByteArray reply;
    if (!echoed(0, instruction, 2, reply))
        return false;
    value = quint8(reply.at(3));
    return true;
}

bool TDevAVR8Exec::write(quint8 pace, const Instruction& instruction)
{
    QByteArray reply;
    return echoed(pace, instruction, 3, reply);
}

bool TDevAVR8Exec::readSignature(QByteArray& bytes)
{
    if (!requireAlgZero(key::alg_ident))
        return false;
    for (int i = 0; i < signatureSize; ++i) {
        quint8 value = 0;
        if (!readByte({{0x30, 0x00, quint8(i), 0x00}}, value))
            return false;
        bytes.append(char(value));
    }
    return true;
}

/// The extended address byte holds until another one is sent or the chip is selected again, so the link
/// remembers the address that it was sent for.
bool TDevAVR8Exec::loadExtended(qint64 addr, bool always)
{
    const quint32 address = quint32(addr);
    const QVariant sent = port()->note(extendedNote);
    if (!always && sent.isValid() && sent.toUInt() >> 16 == address >> 16)
        return true;
    QByteArray reply;
    if (!instruction(0, {{0x4D, 0x00, quint8(address >> 16), 0x00}}, reply))
        return false;
    port()->setNote(extendedNote, address);
    return true;
}

bool TDevAVR8Exec::flashRead(qint64 addr, int n, QByteArray& bytes)
{
    if (alg(key::alg_flash_read) != 0 && !loadExtended(addr, addr == 0))
        return false;
    return request(opFlashRead, wordBytes(addr) + wordBytes(n), bytes);
}

bool TDevAVR8Exec::flashWrite(qint64 addr, const QByteArray& bytes)
{
    const int number = alg(key::alg_flash_write);
    if (number < writeBytes || number > writeExtendedPage)
        return fail();
    // Whole words: what lies beside the piece in its first and last word stays as it is, since programming
    // a 1 changes nothing.
    QByteArray padded = bytes;
    const qint64 even = addr & ~qint64(1);
    if (even != addr)
        padded.prepend(erasedByte);
    if (padded.size() % 2 != 0)
        padded.append(erasedByte);

    if (number == writeExtendedPage && !loadExtended(even, false))
        return false;
    if (!send(opFlashWrite, wordBytes(even) + padded))
        return false;
    if (number == writeBytes)
        return true;
    const qint64 wordAddr = even / 2;
    QByteArray reply;
    return instruction(pace(key::flash_polling, key::flash_delay),
                       {{0x4C, quint8(wordAddr >> 8), quint8(wordAddr), 0x00}}, reply);
}

bool TDevAVR8Exec::eepromRead(qint64 addr, int n, QByteArray& bytes)
{
    return requireAlgZero(key::alg_eeprom_read) &&
           request(opEepromRead, wordBytes(addr) + wordBytes(n), bytes);
}

bool TDevAVR8Exec::eepromWrite(qint64 addr, const QByteArray& bytes)
{
    return requireAlgZero(key::alg_eeprom_write) && send(opEepromWrite, wordBytes(addr) + bytes);
}

bool TDevAVR8Exec::chipFuseRead(int n, QByteArray& bytes)
{
    quint8 value = 0;
    if (alg(key::alg_fuse_read) == 0) {
        if (!readByte({{0x58, 0x00, 0x00, 0x00}}, value))
            return false;
        bytes.append(char(value & 0x21));
        return true;
    }
    if (n < 1 || n > maxFuses)
        return fail();
    for (int i = 0; i < n; ++i) {
        if (!readByte({{fuseReads[i][0], fuseReads[i][1], 0x00, 0x00}}, value))
            return false;
        bytes.append(char(value));
    }
    return true;
}

bool TDevAVR8Exec::chipFuseWrite(quint8 pace, const QByteArray& bytes)
{
    const quint8 first = quint8(bytes.at(0));
    switch (alg(key::alg_fuse_write)) {
    case 0:
        return write(pace, {{0xAC, quint8((first & 0x01) | 0xBE), 0x00, 0x00}});
    case 1:
        return write(pace, {{0xAC, quint8((first & 0x1F) | 0xA0), 0x00, 0x00}});
    case 2:
        for (int i = 0; i < qMin(bytes.size(), maxFuses); ++i) {
            if (!write(pace, {{fuseWrites[i][0], fuseWrites[i][1], 0x00, quint8(bytes.at(i))}}))
                return false;
        }
        return true;
    default:
        return fail();
    }
}

bool TDevAVR8Exec::chipLockRead(QByteArray& bytes)
{
    quint8 value = 0;
    if (!readByte({{0x58, 0x00, 0x00, 0x00}}, value))
        return false;
    bytes.append(char(alg(key::alg_lock_read) == 0 ? value >> 4 & 0x06 : value));
    return true;
}

bool TDevAVR8Exec::chipLockWrite(quint8 pace, quint8 value)
{
    if (alg(key::alg_lock_write) == 0)
        return write(pace, {{0xAC, value, 0x00, 0x00}});
    return write(pace, {{0xAC, 0xE0, 0x00, value}});
}

// Routines.

bool TDevAVR8Exec::erase()
{
    return requireAlgZero(key::alg_erase) &&
           write(pace(key::erase_polling, key::erase_delay), {{0xAC, 0x80, 0x00, 0x00}});
}

int TDevAVR8Exec::registerSize(QLatin1String defKey) const
{
    return chip(defKey).toString().size() / 2;
}

bool TDevAVR8Exec::fuseRead()
{
    QByteArray bytes;
    if (!chipFuseRead(registerSize(key::fuse_def), bytes))
        return false;
    storeResult(bytesToHex(bytes));
    return true;
}

bool TDevAVR8Exec::fuseBytes(QByteArray& bytes)
{
    bytes = hexToBytes(param(key::data).toString());
    const int n = registerSize(key::fuse_def);
    return (n >= 1 && n <= maxFuses && bytes.size() == n) || fail();
}

bool TDevAVR8Exec::fuseWrite()
{
    QByteArray bytes;
    return fuseBytes(bytes) && chipFuseWrite(pace(key::fuse_polling, key::fuse_delay), bytes);
}

bool TDevAVR8Exec::fuseVerify()
{
    QByteArray expected;
    QByteArray read;
    return fuseBytes(expected) && chipFuseRead(expected.size(), read) &&
           compareRegisters(read, QString::fromLatin1(verifyText));
}

bool TDevAVR8Exec::lockRead()
{
    QByteArray bytes;
    if (!chipLockRead(bytes))
        return false;
    storeResult(bytesToHex(bytes));
    return true;
}

bool TDevAVR8Exec::lockWrite()
{
    const QByteArray bytes = hexToBytes(param(key::data).toString());
    if (bytes.isEmpty())
        return fail();
    return chipLockWrite(pace(key::lock_polling, key::lock_delay), quint8(bytes.at(0)));
}

bool TDevAVR8Exec::lockVerify()
{
    QByteArray read;
    return chipLockRead(read) && compareRegisters(read, QString::fromLatin1(verifyText));
}

bool TDevAVR8Exec::osccalRead()
{
    const int n = registerSize(key::osccal_def);
    if (n < 1 || n > maxCalibrations || !requireAlgZero(key::alg_osccal_read))
        return fail();
    QByteArray bytes;
    for (int i = 0; i < n; ++i) {
        quint8 value = 0;
        if (!readByte({{0x38, 0x00, quint8(i), 0x00}}, value))
            return false;
        bytes.append(char(value));
    }
    storeResult(bytesToHex(bytes));
    return true;
}
