#include "formats/data/TFormatHEX.h"

#include "base/TLang.h"
#include "base/chunkSize.h"
#include "formats/data/THexRecord.h"

namespace {

constexpr qint64 recordSize = 16;
constexpr qint64 bankSize = 0x10000; // what the offset of one record can reach
constexpr qint64 addressLimit = 0x100000000;
constexpr qint64 pieceLimit = 0x2000000; // of memory that is reserved ahead
constexpr int lineSize = 1 + 2 * (5 + recordSize) + 2;

/// addr_file + (addr_end - addr_device), wrapping for the absurd numbers that a hand-edited project may
/// hold: the run is then empty.
qint64 lastFileAddr(qint64 addrFile, qint64 addrDevice, qint64 addrEnd)
{
    return static_cast<qint64>(static_cast<quint64>(addrFile) + static_cast<quint64>(addrEnd) -
                               static_cast<quint64>(addrDevice));
}

quint16 upperOf(qint64 addr)
{
    return static_cast<quint16>(addr >> 16);
}

} // namespace

TFormatHEX::TFormatHEX(const QString& file, qint64 addrFile, qint64 addrDevice, qint64 addrEnd, qint64 chunk)
    : IFormat(file)
    , m_addrFile(addrFile)
    , m_addrDevice(addrDevice)
    , m_lastWritten(lastFileAddr(addrFile, addrDevice, addrEnd))
    , m_lastWanted(qMax(addrEnd, m_lastWritten))
    , m_chunk(chunk)
    , m_curAddr(addrFile)
    , m_reached(addrDevice)
    , m_lines(m_file)
{
}

bool TFormatHEX::open(int mode)
{
    m_mode = mode;
    m_extType = 0;
    return mode == Write ? openWrite() : openRead();
}

bool TFormatHEX::openRead()
{
    if (!m_file.exists())
        return fail(langText(Text::FileNotFound).arg(QString()));
    // Lines are cut and blocks are kept by m_lines, so a second buffer would only cost a copy.
    QString reason;
    if (!openFile(QIODevice::ReadOnly | QIODevice::Unbuffered, reason))
        return fail(langText(Text::FileNotFound).arg(reason));
    // Two digits make a byte, so the file itself bounds what can come; the last record may go beyond.
    const qint64 most = qMin(m_chunk, m_file.size() / 2) + THexRecord::maxBytes;
    m_most = static_cast<int>(qMin(most, pieceLimit));
    return true;
}

bool TFormatHEX::openWrite()
{
    if (m_lastWritten > 0xFFFFF || (m_lastWritten > 0xFFFF && m_isLinear))
        m_extType = THexRecord::LinearAddress;
    else if (m_lastWritten > 0xFFFF)
        m_extType = THexRecord::SegmentAddress;
    QString reason;
    if (!openNew(reason))
        return fail(langText(Text::FileNotFound).arg(reason));
    if (m_extType == 0)
        return true;
    QByteArray out;
    appendAddress(out);
    return put(out);
}

bool TFormatHEX::hasSegments() const
{
    return m_extType == THexRecord::SegmentAddress;
}

void TFormatHEX::appendAddress(QByteArray& out)
{
    // A caller that writes behind its own range still gets a file that can be read.
    if (m_extType == 0)
        m_extType = THexRecord::LinearAddress;
    m_upper = upperOf(m_curAddr);
    const char bytes[] = {static_cast<char>(m_upper >> 8), static_cast<char>(m_upper)};
    THexRecord::append(out, m_extType, 0, bytes, sizeof bytes);
}

int TFormatHEX::appendRecords(QByteArray& out, const QByteArray& data, int atLeast, qint64 grid)
{
    int done = 0;
    while (data.size() - done >= atLeast) {
        if (upperOf(m_curAddr) != m_upper)
            appendAddress(out);
        const qint64 n = chunkSize(m_curAddr, m_curAddr + data.size() - done - 1, grid);
        THexRecord::append(out, THexRecord::Data, static_cast<int>(m_curAddr % bankSize),
                           data.constData() + done, static_cast<int>(n));
        m_curAddr += n;
        done += static_cast<int>(n);
    }
    return done;
}

void TFormatHEX::appendPending(QByteArray& out)
{
    // One short record, but two where it would leave its bank: other tools wrap there.
    appendRecords(out, m_pending, 1, bankSize);
    m_pending.clear();
}

bool TFormatHEX::write(qint64 addr, const QByteArray& data)
{
    if (data.isEmpty())
        return true;
    if (addr < 0 || addr > addressLimit - data.size())
        return fail(langText(Text::AddrOutsideDevice));
    QByteArray out;
    out.reserve(static_cast<int>((data.size() / recordSize + 4) * lineSize));
    appendPending(out);
    m_curAddr = addr;
    m_pending = data.mid(appendRecords(out, data, recordSize, recordSize));
    return put(out);
}

bool TFormatHEX::close()
{
    if (m_mode != Write) {
        m_file.close();
        return true;
    }
    if (!m_out->isOpen())
        return false;
    QByteArray out;
    appendPending(out);
    THexRecord::append(out, THexRecord::End, 0, nullptr, 0);
    return put(out) && finish();
}

bool TFormatHEX::read(qint64& addr, QByteArray& data)
{
    data.clear();
    if (m_chunk < 1)
        return fail(langText(Text::SizeMissing));
    if (m_pending.isEmpty())
        m_pending.reserve(m_most);
    if (!gather(addr))
        return false;
    if (m_pending.isEmpty())
        return true;
    const qint64 n = chunkSize(m_curAddr, m_curAddr + m_pending.size() - 1, m_chunk);
    if (n == m_pending.size()) {
        data.swap(m_pending);
    } else {
        data = m_pending.left(static_cast<int>(n));
        m_pending.remove(0, static_cast<int>(n));
    }
    addr = m_curAddr;
    m_curAddr += n;
    return true;
}

bool TFormatHEX::gather(qint64 want)
{
    const char* line = nullptr;
    int length = 0;
    THexRecord record;
    Step step = Next;
    while (step == Next && !m_ended && m_pending.size() < m_chunk) {
        const TLineReader::Result result = m_lines.next(line, length);
        if (result == TLineReader::Failed)
            return failDevice();
        if (result == TLineReader::AtEnd)
            return true;
        if (result == TLineReader::TooLong || !record.parse(line, length))
            return failLine();
        step = takeRecord(record, want);
    }
    return step != Wrong || failLine();
}

bool TFormatHEX::failLine()
{
    return fail(langText(Text::FilePlace)
                    .arg(langText(Text::HexWrongLine), m_file.fileName(), QString::number(m_lines.number())));
}

TFormatHEX::Step TFormatHEX::takeRecord(const THexRecord& record, qint64 want)
{
    switch (record.type()) {
    case THexRecord::Data:
        return takeData(record, want);
    case THexRecord::End:
        m_ended = true;
        leaveRest();
        return Stop;
    case THexRecord::SegmentAddress:
    case THexRecord::LinearAddress:
        return takeUpper(record);
    default:
        return Next;
    }
}

TFormatHEX::Step TFormatHEX::takeUpper(const THexRecord& record)
{
    if (record.size() != 2)
        return Wrong;
    if (!m_pending.isEmpty())
        return putBack();
    const int value = record.data()[0] << 8 | record.data()[1];
    // Other tools write a segment, bits 19..4 of the address. Taken as an upper address such a value
    // would lie beyond every chip, and the data behind it would be left out without a word.
    const bool segment =
        record.type() == THexRecord::SegmentAddress && value >= 0x1000 && (value & 0xFFF) == 0;
    m_upper = static_cast<quint16>(segment ? value >> 12 : value);
    return Next;
}

TFormatHEX::Step TFormatHEX::takeData(const THexRecord& record, qint64 want)
{
    const qint64 addr = (static_cast<qint64>(m_upper) << 16) + record.offset();
    const qint64 end = addr + record.size();
    if (record.size() == 0)
        return Next;
    if (addr > m_lastWanted)
        return leave(record.size());
    if (!m_pending.isEmpty() && addr != m_reached)
        return putBack();
    if (end <= m_addrDevice)
        return leave(record.size());
    if (qMax(addr, m_addrDevice) < m_reached)
        return Wrong;
    const qint64 cut = m_pending.isEmpty() ? qMax<qint64>(want - addr, 0) : 0;
    if (cut >= record.size())
        return leave(record.size());
    m_leftOut += cut;
    if (m_pending.isEmpty())
        m_curAddr = addr + cut;
    m_pending.append(reinterpret_cast<const char*>(record.data()) + cut,
                     static_cast<int>(record.size() - cut));
    m_reached = end;
    return Next;
}

TFormatHEX::Step TFormatHEX::leave(int bytes)
{
    m_leftOut += bytes;
    return Next;
}

void TFormatHEX::leaveRest()
{
    // Two files put together with their end records both in place: what stands behind the first one is not
    // taken, and must not be missed in silence. A pipe may stay open for long, and is not waited for.
    const char* line = nullptr;
    int length = 0;
    THexRecord record;
    while (!m_file.isSequential() && m_lines.next(line, length) == TLineReader::Line) {
        if (record.parse(line, length) && record.type() == THexRecord::Data)
            leave(record.size());
    }
}

TFormatHEX::Step TFormatHEX::putBack()
{
    m_lines.putBack();
    return Stop;
}
