#include "devices/flash/TDev25Exec.h"

#include "base/keys.h"
#include "devices/flash/TDev25.h"
#include "devices/shared/TBlockErase.h"
#include "link/wire/bytes.h"

namespace {

constexpr quint8 opTransferRead = 3;
constexpr quint8 opTransfer = 4;
constexpr int registerSize = TDev25::registerSize;
constexpr qint64 addressEnd = 0x1000000; ///< three address bytes
constexpr int idSize = 3;
constexpr int uniqueIdSize = 8;
constexpr int statusSize = 3;
constexpr quint8 erasedByte = 0xFF;

/// The code of a security register stands in the upper half of an address byte, counted from 1.
constexpr int registerCodes = 15;

/// Instructions of the chip, common to the makers of serial NOR flash.
enum Instruction : quint8 {
    pageProgram = 0x02,
    fastRead = 0x0B,
    programSecurity = 0x42,
    eraseSecurity = 0x44,
    readSecurity = 0x48,
    readUniqueId = 0x4B,
    readSfdp = 0x5A,
    readId = 0x9F
};

/// The same for the status registers, in their order.
constexpr quint8 readStatus[statusSize] = {0x05, 0x35, 0x15};
constexpr quint8 writeStatus[statusSize] = {0x01, 0x31, 0x11};

QByteArray bytesOf(std::initializer_list<int> values)
{
    QByteArray bytes;
    for (const int value : values)
        bytes.append(char(quint8(value)));
    return bytes;
}

/// An instruction with the low 24 bits of an address, high byte first.
QByteArray addressed(quint8 instruction, qint64 addr)
{
    return bytesOf({instruction, int(addr >> 16 & 0xFF), int(addr >> 8 & 0xFF), int(addr & 0xFF)});
}

quint8 registerCode(qint64 index)
{
    return quint8((index + 1) * 16);
}

QByteArray securityAddressed(quint8 instruction, qint64 addr)
{
    return bytesOf({instruction, 0, registerCode(addr >> 8), int(addr & 0xFF)});
}

} // namespace

TDev25Exec::TDev25Exec(const TData& data)
    : TFamilyExec(data, TDev25::commands())
{
}

bool TDev25Exec::readChipId(TSerialPort* port, QString& id)
{
    return readSignatureText(port, id);
}

TMemory TDev25Exec::memory(Area area)
{
    TMemory memory;
    memory.region = {chip(key::addr_begin).toLongLong(), chip(key::size).toLongLong()};
    const qint64 page = chip(key::page_size).toLongLong();
    memory.reads = {maxData(), maxData()};
    memory.writes = {qMin<qint64>(maxData(), page), page};
    memory.reach = addressEnd;
    memory.read = [this](qint64 addr, int n, QByteArray& bytes) { return chipRead(addr, n, bytes); };
    memory.write = [this](qint64 addr, const QByteArray& bytes) { return chipWrite(addr, bytes); };
    if (area == Area::Whole)
        return memory;

    // The smaller areas are addressed by register: a piece that ran over its end would wrap inside it.
    memory.reads = {qMin(maxData(), registerSize), registerSize};
    memory.writes = memory.reads;
    if (area == Area::Security) {
        memory.region = {0, chip(key::security_reg_size).toLongLong()};
        memory.reach = qint64(registerCodes) * registerSize;
        memory.read = [this](qint64 addr, int n, QByteArray& bytes) {
            return chipSecurityRead(addr, n, bytes);
        };
        memory.write = [this](qint64 addr, const QByteArray& bytes) {
            return chipSecurityWrite(addr, bytes);
        };
    } else {
        memory.region = {0, chip(key::sfdp_reg_size).toLongLong()};
        memory.reach = 0;
        memory.read = [this](qint64 addr, int n, QByteArray& bytes) { return chipSfdpRead(addr, n, bytes); };
        memory.write = nullptr;
    }
    return memory;
}

bool TDev25Exec::runOwn(const TCommandRow& row)
{
    static constexpr struct
    {
        QLatin1String key;
        bool (TDev25Exec::*routine)();
    } routines[] = {
        {cmd::erase, &TDev25Exec::erase},
        {cmd::erase_blocks, &TDev25Exec::eraseBlocks},
        {cmd::test_empty_blocks, &TDev25Exec::testEmptyBlocks},
        {cmd::status_reg_read, &TDev25Exec::statusRead},
        {cmd::status_reg_write, &TDev25Exec::statusWrite},
        {cmd::status_reg_verify, &TDev25Exec::statusVerify},
        {cmd::security_reg_erase, &TDev25Exec::securityErase},
        {cmd::security_reg_test_empty, &TDev25Exec::securityTestEmpty},
        {cmd::unique_id_read, &TDev25Exec::uniqueIdRead},
    };
    for (const auto& routine : routines) {
        if (routine.key == row.key)
            return (this->*routine.routine)();
    }
    return fail();
}

// Chip primitives.

bool TDev25Exec::transfer(int n, const QByteArray& command, QByteArray& reply)
{
    return request(opTransferRead, wordBytes(n) + command, reply);
}

bool TDev25Exec::readSignature(QByteArray& bytes)
{
    return requireAlgZero(key::alg_ident) && transfer(idSize, bytesOf({readId}), bytes);
}

bool TDev25Exec::chipRead(qint64 addr, int n, QByteArray& bytes)
{
    // One byte behind the address gives the chip the time that a fast read needs.
    return requireAlgZero(key::alg_flash_read) && transfer(n, addressed(fastRead, addr) + '\0', bytes);
}

bool TDev25Exec::chipErase(quint8 op, qint64 addr)
{
    return requireAlgZero(key::alg_erase) && send(opTransfer, addressed(op, addr));
}

bool TDev25Exec::chipWrite(qint64 addr, const QByteArray& bytes)
{
    return requireAlgZero(key::alg_flash_write) && send(opTransfer, addressed(pageProgram, addr) + bytes);
}

bool TDev25Exec::chipStatusRead(QByteArray& bytes)
{
    if (!requireAlgZero(key::alg_status_reg_read))
        return false;
    for (int i = 0; i < statusServed(); ++i) {
        QByteArray reply;
        if (!transfer(1, bytesOf({readStatus[i]}), reply))
            return false;
        if (reply.size() != 1)
            return fail();
        bytes.append(reply);
    }
    return true;
}

bool TDev25Exec::chipStatusWrite(const QByteArray& bytes)
{
    if (!requireAlgZero(key::alg_status_reg_write))
        return false;
    if (bytes.size() != statusServed())
        return fail();
    for (int i = 0; i < bytes.size(); ++i) {
        if (!send(opTransfer, bytesOf({writeStatus[i], bytes.at(i)})))
            return false;
    }
    return true;
}

bool TDev25Exec::chipSfdpRead(qint64 addr, int n, QByteArray& bytes)
{
    return requireAlgZero(key::alg_fsdp_read) &&
           transfer(n, bytesOf({readSfdp, 0, 0, int(addr & 0xFF), 0}), bytes);
}

bool TDev25Exec::chipSecurityErase(int index)
{
    return requireAlgZero(key::alg_security_reg_erase) &&
           send(opTransfer, bytesOf({eraseSecurity, 0, registerCode(index), 0}));
}

bool TDev25Exec::chipSecurityRead(qint64 addr, int n, QByteArray& bytes)
{
    return requireAlgZero(key::alg_security_reg_read) &&
           transfer(n, securityAddressed(readSecurity, addr) + '\0', bytes);
}

bool TDev25Exec::chipSecurityWrite(qint64 addr, const QByteArray& bytes)
{
    return requireAlgZero(key::alg_security_reg_write) &&
           send(opTransfer, securityAddressed(programSecurity, addr) + bytes);
}

bool TDev25Exec::chipUniqueId(QByteArray& bytes)
{
    if (!requireAlgZero(key::alg_unique_id_read) ||
        !transfer(uniqueIdSize, bytesOf({readUniqueId, 0, 0, 0, 0}), bytes))
        return false;
    return bytes.size() == uniqueIdSize || fail();
}

// Erase.

bool TDev25Exec::eraseLoop(quint8 op, qint64 size, qint64 begin, qint64 count)
{
    if (count >= 1 && (begin + count - 1) * size >= addressEnd)
        return failOutside();
    TProgress progress;
    for (qint64 i = 0; i < count; ++i) {
        if (!chipErase(op, (begin + i) * size))
            return false;
        if (reportProgress(progress, i, count))
            break;
    }
    return true;
}

bool TDev25Exec::erase()
{
    TBlockErase block;
    if (!TBlockErase::fromText(chip(key::erase).toString(), block) || block.bytes < 1)
        return fail();
    const qint64 size = chip(key::size).toLongLong();
    if (size < 1)
        return failMissingSize();
    const qint64 blocks = size / block.bytes;
    tellIfEmpty(1, blocks);
    return eraseLoop(block.op, block.bytes, 0, blocks);
}

bool TDev25Exec::blockRange(qint64& size, qint64& begin, qint64& count)
{
    size = param(key::size).toLongLong();
    begin = param(key::begin).toLongLong();
    count = param(key::count).toLongLong();
    const TMemory whole = memory(Area::Whole);
    if (size < 1 || whole.region.size < 1)
        return failMissingSize();
    tellIfEmpty(1, count);
    if (count < 1)
        return true;
    // By division: the product of two numbers of a damaged project may not fit.
    const qint64 blocks = whole.last() < size - 1 ? 0 : (whole.last() - (size - 1)) / size + 1;
    return (begin >= 0 && begin <= blocks && count <= blocks - begin) || failOutside();
}

bool TDev25Exec::eraseBlocks()
{
    qint64 size = 0;
    qint64 begin = 0;
    qint64 count = 0;
    if (!blockRange(size, begin, count))
        return false;
    if (count < 1)
        return true;
    const QList<TBlockErase> erases = blockErases(chip(key::erase_blocks).toStringList());
    for (int i = erases.size() - 1; i >= 0; --i) {
        if (erases.at(i).bytes == size)
            return eraseLoop(erases.at(i).op, size, begin, count);
    }
    return fail();
}

bool TDev25Exec::testEmptyBlocks()
{
    qint64 size = 0;
    qint64 begin = 0;
    qint64 count = 0;
    if (!blockRange(size, begin, count))
        return false;
    if (count < 1)
        return true;
    return verifyRange(memory(Area::Whole), begin * size, (begin + count) * size - 1, constant(erasedByte));
}

// Status registers.

int TDev25Exec::statusCount() const
{
    const int named = description().value(key::status_reg_count).toInt();
    const int count = named > 0 ? named : chip(key::status_reg_def).toString().size() / 2;
    return count <= statusSize ? count : -1;
}

int TDev25Exec::statusServed() const
{
    return description().contains(key::status_reg_count) ? statusCount() : statusSize;
}

bool TDev25Exec::statusRead()
{
    QByteArray bytes;
    if (statusCount() < 0)
        return fail();
    if (!chipStatusRead(bytes))
        return false;
    storeResult(bytesToHex(bytes));
    return true;
}

bool TDev25Exec::statusBytes(QByteArray& bytes)
{
    bytes = hexToBytes(param(key::data).toString());
    return bytes.size() == statusCount() || fail();
}

bool TDev25Exec::statusWrite()
{
    QByteArray bytes;
    return statusBytes(bytes) && chipStatusWrite(bytes);
}

bool TDev25Exec::statusVerify()
{
    QByteArray expected;
    QByteArray read;
    if (!statusBytes(expected) || !chipStatusRead(read))
        return false;
    // What answers for a register that the chip does not have says nothing.
    const QString data = param(key::data).toString();
    const QString readText = bytesToHex(read.left(expected.size()));
    return readText == data || fail(QStringLiteral("Registers: Data: %1, Read: %2").arg(data, readText));
}

// Security registers and the unique ID.

quint8 TDev25Exec::selectedRegisters() const
{
    const int registers = TDev25::securityRegisters(description());
    const uint present = registers < 8 ? (1U << registers) - 1 : 0xFF;
    return quint8(param(key::data).toUInt() & present);
}

bool TDev25Exec::securityErase()
{
    const int registers = TDev25::securityRegisters(description());
    const quint8 selected = selectedRegisters();
    tellIfEmpty(1, selected);
    TProgress progress;
    for (int i = 0; i < qMin(registers, 8); ++i) {
        if ((selected >> i & 1) == 0)
            continue;
        if (!chipSecurityErase(i))
            return false;
        if (reportProgress(progress, i, registers))
            break;
    }
    return true;
}

bool TDev25Exec::securityTestEmpty()
{
    const quint8 selected = selectedRegisters();
    const TMemory security = memory(Area::Security);
    tellIfEmpty(1, selected);
    if (selected == 0)
        return true;
    if (!security.reads.isValid())
        return failMissingSize();
    TProgress progress;
    for (int i = 0; i < 8; ++i) {
        if ((selected >> i & 1) == 0)
            continue;
        const qint64 first = qint64(i) * registerSize;
        const Loop loop = verifyPieces(security, first, first + registerSize - 1, progress, security.last(),
                                       constant(erasedByte));
        if (loop != Loop::Done)
            return loop == Loop::Stopped;
    }
    return true;
}

bool TDev25Exec::uniqueIdRead()
{
    QByteArray bytes;
    if (!chipUniqueId(bytes))
        return false;
    storeResult(bytesToHex(bytes));
    return true;
}
