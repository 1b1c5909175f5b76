#include "devices/shared/TFamilyExec.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/TDataPrj.h"
#include "core/model/shared_settings.h"
#include "devices/shared/TFileTally.h"
#include "devices/shared/signatureName.h"
#include "formats/data/TFormat.h"
#include "link/lists/TProg.h"
#include "link/wire/TSerialPort.h"
#include "link/wire/bytes.h"
#include "misc/TNormCmdParam.h"
#include "misc/dev_misc.h"

#include <algorithm>

namespace {

constexpr char source[] = "devices/TFamilyExec";
constexpr quint8 opLeave = 1;
constexpr quint8 opSetClock = 2;
constexpr quint8 erasedByte = 0xFF;

/// base + offset, held at the largest number: addresses of a hand-edited project may be anything.
qint64 addHeld(qint64 base, qint64 offset)
{
    constexpr qint64 max = std::numeric_limits<qint64>::max();
    return offset > 0 && base > max - offset ? max : base + offset;
}

} // namespace

TFamilyExec::TFamilyExec(const TData& data, const TCommandTable& table)
    : IDeviceExec(data)
    , m_table(table)
{
}

bool TFamilyExec::execute(TSerialPort* port, bool&, int&, int&)
{
    const TCommandRow* row = m_table.find(m_cmdData.value(key::cmd).toString());
    return row && begin(port) && run(*row);
}

bool TFamilyExec::begin(TSerialPort* port)
{
    if (!portGuard(port))
        return false;
    const TBinding bound = project().binding(param(key::id_cmd).toInt());
    m_device = bound.family;
    if (!m_device || !bound.prog)
        return fail();
    m_port = port;
    m_chip = m_device->deviceData();
    quint16 bytes = 0;
    bound.prog->maxData(bytes);
    m_maxData = bytes;
    m_timeout = bound.prog->timeout();
    return true;
}

qint64 TFamilyExec::bytesInTime(qint64 msPerByte) const
{
    return msPerByte < 1 ? std::numeric_limits<qint64>::max() : qMax<qint64>(m_timeout / 2 / msPerByte, 1);
}

bool TFamilyExec::run(const TCommandRow& row)
{
    switch (row.shape) {
    case Shape::Clock:
        return setClock();
    case Shape::Leave:
        return leave();
    case Shape::Ident:
        return ident();
    case Shape::Char:
        return runChar(memory(row.area), row.action);
    case Shape::Data:
        return runData(memory(row.area), row.action);
    case Shape::File:
        return row.area == Area::Security && row.action == Action::Read
                   ? readFileTold(memory(row.area))
                   : runFile(memory(row.area), row.action);
    case Shape::Plain:
        return row.action == Action::TestEmpty ? verifyAll(memory(row.area), erasedByte) : runOwn(row);
    case Shape::Pins:
    case Shape::Blocks:
    case Shape::Register:
    case Shape::RegisterMask:
        return runOwn(row);
    case Shape::Separator:
        break;
    }
    return fail();
}

QVariant TFamilyExec::param(const QString& key, int line) const
{
    return getParam(source, line, m_cmdData, key);
}

QVariant TFamilyExec::chip(const QString& key, int line) const
{
    return getParam(source, line, m_chip, key);
}

int TFamilyExec::alg(const QString& key, int line) const
{
    return chip(key, line).toInt();
}

bool TFamilyExec::requireAlgZero(const QString& key, int line)
{
    return alg(key, line) == 0 || fail();
}

bool TFamilyExec::send(quint8 opcode, const QByteArray& payload)
{
    QByteArray data = payload;
    return sendChecked(m_port, opcode, data);
}

bool TFamilyExec::request(quint8 opcode, const QByteArray& payload, QByteArray& reply)
{
    reply = payload;
    return sendChecked(m_port, opcode, reply);
}

bool TFamilyExec::failMissingSize()
{
    return fail(langText(Text::SizeMissing));
}

bool TFamilyExec::failOutside()
{
    return fail(langText(Text::AddrOutsideDevice));
}

bool TFamilyExec::setClock()
{
    return send(opSetClock, doubleWordBytes(execClk(m_cmdData)));
}

bool TFamilyExec::leave()
{
    return send(opLeave, leavePayload(param(key::id_cmd).toInt(), m_device->hasReset()));
}

bool TFamilyExec::readSignature(QByteArray&)
{
    return fail();
}

bool TFamilyExec::readSignatureText(TSerialPort* port, QString& id)
{
    QByteArray bytes;
    if (!begin(port) || !readSignature(bytes))
        return false;
    id = bytesToHex(bytes);
    return true;
}

bool TFamilyExec::ident()
{
    QByteArray bytes;
    if (!readSignature(bytes))
        return false;
    if (bytes == hexToBytes(chip(key::signature).toString()))
        return true;
    const QString id = bytesToHex(bytes);
    return fail(QStringLiteral("Read signature: %1 (%2)")
                    .arg(id, signatureName(absDir(chip(key::dev_file).toString()), id)));
}

bool TFamilyExec::compareRegisters(const QByteArray& read, const QString& text)
{
    const QString data = param(key::data).toString();
    const QString readText = bytesToHex(read);
    return readText == data || fail(text.arg(data, readText));
}

// Ranges.

bool TFamilyExec::canWork(const TMemory& memory, const TPieces& pieces)
{
    return (pieces.isValid() && memory.region.size >= 1) || failMissingSize();
}

TFamilyExec::Loop TFamilyExec::forPieces(const TPieces& pieces, qint64 first, qint64 last,
                                         TProgress& progress, qint64 total, const Piece& use)
{
    qint64 addr = first;
    while (const qint64 n = pieces.at(addr, last)) {
        if (!use(addr, n))
            return Loop::Failed;
        addr += n;
        if (reportProgress(progress, addr, total))
            return Loop::Stopped;
    }
    return Loop::Done;
}

bool TFamilyExec::readPiece(const TMemory& memory, qint64 addr, qint64 n, QByteArray& bytes)
{
    if (!memory.read(addr, int(n), bytes))
        return false;
    return bytes.size() == n || fail();
}

bool TFamilyExec::compare(qint64 addr, const QByteArray& expected, const QByteArray& read)
{
    if (read == expected)
        return true;
    const auto differing = std::mismatch(expected.begin(), expected.end(), read.begin(), read.end());
    return fail(textCompare(addr + (differing.first - expected.begin()), quint8(*differing.first),
                            quint8(*differing.second)));
}

TFamilyExec::Loop TFamilyExec::verifyPieces(const TMemory& memory, qint64 first, qint64 last,
                                            TProgress& progress, qint64 total, const Bytes& bytes)
{
    return forPieces(memory.reads, first, last, progress, total, [&](qint64 addr, qint64 n) {
        QByteArray read;
        return readPiece(memory, addr, n, read) && compare(addr, bytes(addr, n), read);
    });
}

TFamilyExec::Loop TFamilyExec::writePieces(const TMemory& memory, qint64 first, qint64 last,
                                           TProgress& progress, qint64 total, const Bytes& bytes)
{
    return forPieces(memory.writes, first, last, progress, total,
                     [&](qint64 addr, qint64 n) { return memory.write(addr, bytes(addr, n)); });
}

bool TFamilyExec::writeRange(const TMemory& memory, qint64 first, qint64 last, const Bytes& bytes)
{
    if (!canWork(memory, memory.writes))
        return false;
    if (first <= last && !memory.canWrite(first, last))
        return failOutside();
    tellIfEmpty(first, last);
    TProgress progress;
    return writePieces(memory, first, last, progress, last, bytes) != Loop::Failed;
}

bool TFamilyExec::verifyRange(const TMemory& memory, qint64 first, qint64 last, const Bytes& bytes)
{
    if (!canWork(memory, memory.reads))
        return false;
    if (first < 0)
        return failOutside();
    tellIfEmpty(first, last);
    TProgress progress;
    return verifyPieces(memory, first, last, progress, last, bytes) != Loop::Failed;
}

TFamilyExec::Bytes TFamilyExec::constant(quint8 value)
{
    return [value](qint64, qint64 n) { return QByteArray(int(n), char(value)); };
}

bool TFamilyExec::verifyAll(const TMemory& memory, quint8 value)
{
    return verifyRange(memory, memory.region.begin, memory.last(), constant(value));
}

bool TFamilyExec::writeAll(const TMemory& memory, quint8 value)
{
    return writeRange(memory, memory.region.begin, memory.last(), constant(value));
}

bool TFamilyExec::runChar(const TMemory& memory, Action action)
{
    qint64 first = 0;
    qint64 last = 0;
    quint8 fill = 0;
    execChar(m_cmdData, first, last, fill);
    return action == Action::Write ? writeRange(memory, first, last, constant(fill))
                                   : verifyRange(memory, first, last, constant(fill));
}

bool TFamilyExec::runData(const TMemory& memory, Action action)
{
    qint64 first = 0;
    qint64 last = 0;
    QByteArray data;
    QString text;
    execData(m_cmdData, first, last, data, text);
    const Bytes bytes = [&](qint64 addr, qint64 n) { return data.mid(int(addr - first), int(n)); };
    if (action == Action::Read)
        return readData(memory, first, last, text);
    return action == Action::Write ? writeRange(memory, first, last, bytes)
                                   : verifyRange(memory, first, last, bytes);
}

bool TFamilyExec::readData(const TMemory& memory, qint64 first, qint64 last, const QString& pattern)
{
    if (!canWork(memory, memory.reads))
        return false;
    if (first < 0)
        return failOutside();
    tellIfEmpty(first, last);
    QByteArray all;
    TProgress progress;
    const Loop loop = forPieces(memory.reads, first, last, progress, last, [&](qint64 addr, qint64 n) {
        QByteArray read;
        if (!readPiece(memory, addr, n, read))
            return false;
        all.append(read);
        return true;
    });
    if (loop == Loop::Failed)
        return false;
    storeResult(bytesToHexLike(pattern, all));
    return true;
}

// Files.

TFamilyExec::FileRange::FileRange(const TData& data)
{
    execFile(data, fileAddr, first, last, path, format);
}

bool TFamilyExec::runFile(const TMemory& memory, Action action)
{
    switch (action) {
    case Action::Read:
        return readFile(memory);
    case Action::Write:
        return fileToChip(memory, memory.writes, memory.lastWritable(), &TFamilyExec::writePieces);
    case Action::Verify:
        return fileToChip(memory, memory.reads, memory.last(), &TFamilyExec::verifyPieces);
    case Action::None:
    case Action::TestEmpty:
        break;
    }
    return fail();
}

bool TFamilyExec::readFileTold(const TMemory& memory)
{
    QByteArray all;
    TMemory listened = memory;
    listened.read = [&](qint64 addr, int n, QByteArray& bytes) {
        if (!memory.read(addr, n, bytes))
            return false;
        all.append(bytes);
        return true;
    };
    if (!readFile(listened))
        return false;
    if (!all.isEmpty())
        emit signalEventText(ceResult, textFirstBytes(bytesToHex(all)));
    return true;
}

bool TFamilyExec::readFile(const TMemory& memory)
{
    const FileRange range(m_cmdData);
    if (!canWork(memory, memory.reads))
        return false;
    if (range.first < 0)
        return failOutside();
    TFormat file(range.format, range.path, range.fileAddr, range.first, range.last, memory.reads.chunk);
    file.setLinear(hexLinear());
    file.setGiveUp([this] { return isStopAsked(); });
    if (!file.open(1))
        return fail(file.errorText());
    tellIfEmpty(range.first, range.last);
    TProgress progress;
    qint64 next = range.first;
    const Piece use = [&](qint64 addr, qint64 n) {
        QByteArray read;
        if (!readPiece(memory, addr, n, read))
            return false;
        next = addr + n;
        return file.write(addHeld(range.fileAddr, addr - range.first), read) || fail(file.errorText());
    };
    const Loop loop = forPieces(memory.reads, range.first, range.last, progress, range.last, use);
    return closeRead(file, range, next, loop);
}

bool TFamilyExec::closeRead(TFormat& file, const FileRange& range, qint64 next, Loop loop)
{
    // A stop behind the last piece comes too late to leave anything out.
    bool isWhole = loop != Loop::Failed && next > range.last;
    bool good = loop != Loop::Failed;
    if (isWhole || (good && !file.isReplacing()))
        good = file.close() || fail(file.errorText());
    if (file.isGivenUp()) {
        isWhole = false;
        good = true;
    }
    if (!isWhole || !good) {
        const bool isUntouched = file.isReplacing() || next == range.first;
        tell({langText(isUntouched ? Text::FileUntouched : Text::FileHoldsPart)
                  .arg(param(key::file).toString())});
    } else if (file.hasSegments()) {
        tell({langText(Text::HexSegments)});
    }
    return good;
}

void TFamilyExec::tellIfEmpty(qint64 first, qint64 last)
{
    if (first > last)
        tell({langText(Text::RangeEmpty)});
}

void TFamilyExec::tell(const QStringList& remarks)
{
    for (const QString& remark : remarks)
        emit signalEventText(ceWork, remark);
}

bool TFamilyExec::fileToChip(const TMemory& memory, const TPieces& pieces, qint64 lastAllowed, RangeLoop work)
{
    const FileRange range(m_cmdData);
    if (!canWork(memory, pieces))
        return false;
    TFormat file(range.format, range.path, range.fileAddr, range.first, range.last, pieces.chunk);
    if (!file.open(0))
        return fail(file.errorText());

    const qint64 firstAllowed = qMax<qint64>(memory.region.begin, 0);
    const qint64 lastUsed = qMin(lastAllowed, file.lastWanted());
    TProgress progress;
    TFileTally tally;
    Loop loop = Loop::Done;
    for (qint64 addr = range.first; loop == Loop::Done;) {
        QByteArray bytes;
        if (!file.read(addr, bytes))
            return fail(file.errorText());
        if (bytes.isEmpty())
            break;
        // What lies behind the range is left out, on a chip that ends there too. In the range that the
        // command names on the chip, and as the first that comes, it is a mistake.
        const bool isBehindChip = addr > lastAllowed && addr <= file.lastWanted();
        if (addr < firstAllowed || (isBehindChip && (addr <= range.last || !tally.hasTaken())))
            return failOutside();
        const auto n = int(std::clamp<qint64>(lastUsed - addr + 1, 0, bytes.size()));
        const Bytes part = [&](qint64 from, qint64 count) { return bytes.mid(int(from - addr), int(count)); };
        loop = (this->*work)(memory, addr, addr + n - 1, progress, range.last, part);
        tally.take(addr, n);
        tally.leave(bytes.size() - n);
        addr += bytes.size();
    }
    if (loop == Loop::Failed)
        return false;
    tally.leave(file.leftOut());
    if (file.mayBeCut())
        tally.endBefore(range.last);
    if (loop == Loop::Done)
        tell(tally.remarks(param(key::file).toString()));
    return file.close() || fail(file.errorText());
}
