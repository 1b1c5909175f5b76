#include "formats/data/TLineReader.h"

#include <QIODevice>

#include <cstring>

namespace {

constexpr int blockSize = 0x10000;
/// One byte beyond the longest line tells a line of that length from a longer one.
constexpr int enough = TLineReader::maxLine + 1;

} // namespace

TLineReader::TLineReader(QIODevice& device)
    : m_device(device)
{
}

bool TLineReader::fill()
{
    if (m_block.isEmpty())
        m_block.resize(blockSize);
    char* const block = m_block.data();
    std::memmove(block, block + m_begin, static_cast<size_t>(m_end - m_begin));
    m_end -= m_begin;
    m_begin = 0;
    m_last = 0;
    while (m_end < enough) {
        const qint64 got = m_device.read(block + m_end, blockSize - m_end);
        if (got < 0)
            return false;
        if (got == 0)
            break;
        m_end += static_cast<int>(got);
    }
    return true;
}

TLineReader::Result TLineReader::next(const char*& line, int& length)
{
    if (m_end - m_begin < enough && !fill())
        return Failed;
    if (m_begin == m_end)
        return AtEnd;
    ++m_number;
    line = m_block.constData() + m_begin;
    const int seen = qMin(m_end - m_begin, maxLine);
    const void* const feed = std::memchr(line, '\n', static_cast<size_t>(seen));
    if (feed)
        length = static_cast<int>(static_cast<const char*>(feed) - line) + 1;
    else if (m_end - m_begin > maxLine)
        return TooLong;
    else
        length = seen;
    m_last = m_begin;
    m_begin += length;
    return Line;
}

void TLineReader::putBack()
{
    m_begin = m_last;
    --m_number;
}
