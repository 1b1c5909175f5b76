#include "devices/tools/CalcCrc.h"

#include "base/helpers.h"
#include "base/keys.h"
#include "core/model/TDataPrj.h"
#include "formats/crc/ICRC.h"
#include "formats/crc/createCRC.h"
#include "misc/TNormCmdParam.h"
#include "misc/TParamReader.h"

#include <limits>

namespace {

constexpr qint64 readBlock = 0x1000000;
/// What is taken between two reports.
constexpr qint64 reportBlock = 0x100000;

constexpr TParamReader param("devices/CalcCrc");

/// The last address of the range; never the greatest number, so that the one behind it can be told.
qint64 lastOfRange(qint64 addr, const TData& data)
{
    return qMin(lastAddress(addr, param(data, key::count).toLongLong()),
                std::numeric_limits<qint64>::max() - 1);
}

} // namespace

CalcCrc::CalcCrc(const TData& data)
    : m_name(param(data, key::crc_name).toString())
    , m_file(param(data, key::file).toString())
    , m_addr(param(data, key::addr).toLongLong())
    , m_last(lastOfRange(m_addr, data))
    , m_fill(static_cast<char>(param(data, key::fill).toInt()))
    , m_pos(m_addr)
    , m_format(param(data, key::format).toString().toLower(), absFile(project().workPath(), m_file), m_addr,
               m_addr, m_last, readBlock)
{
}

CalcCrc::~CalcCrc() = default;

bool CalcCrc::open()
{
    if (!m_format.open(0)) {
        m_errorText = m_format.errorText();
        return false;
    }
    m_crc.reset(createCRC(m_name));
    return m_crc != nullptr;
}

bool CalcCrc::take(const char* bytes, qint64 n, const Report& report)
{
    while (n > 0) {
        const qint64 part = qMin(n, reportBlock);
        m_crc->update(bytes, part);
        bytes += part;
        n -= part;
        m_pos += part;
        if (report(m_pos, m_last))
            return true;
    }
    return false;
}

bool CalcCrc::takeFill(qint64 n, const Report& report)
{
    if (n > 0 && m_padding.isEmpty())
        m_padding.fill(m_fill, static_cast<int>(reportBlock));
    for (; n > 0; n -= reportBlock) {
        if (take(m_padding.constData(), qMin(n, reportBlock), report))
            return true;
    }
    return false;
}

bool CalcCrc::run(const Report& report)
{
    QByteArray data;
    while (m_pos <= m_last) {
        qint64 addr = m_pos;
        if (!m_format.read(addr, data)) {
            m_errorText = m_format.errorText();
            return false;
        }
        if (data.isEmpty())
            addr = m_last + 1; // the file has no more: the rest of the range is a gap
        // The last record of a HEX file may go beyond the range.
        const qint64 n = qMin<qint64>(data.size(), m_last - addr + 1);
        m_isStopped = takeFill(addr - m_pos, report) || take(data.constData(), n, report);
        if (m_isStopped)
            return true;
        m_tally.take(addr, n);
        m_tally.leave(data.size() - n);
    }
    return readRest();
}

bool CalcCrc::readRest()
{
    QByteArray data;
    do {
        qint64 addr = m_last + 1;
        if (!m_format.read(addr, data)) {
            m_errorText = m_format.errorText();
            return false;
        }
        m_tally.leave(data.size());
    } while (!data.isEmpty());
    m_tally.leave(m_format.leftOut());
    if (m_format.mayBeCut())
        m_tally.endBefore(m_last);
    return true;
}

QStringList CalcCrc::remarks() const
{
    return m_isStopped ? QStringList() : m_tally.remarks(m_file);
}

QString CalcCrc::resultText()
{
    return QStringLiteral("%1: %2").arg(m_name, bytesToHex(m_crc->result()));
}

bool CalcCrc::close()
{
    return m_format.close();
}
