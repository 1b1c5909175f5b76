#include "formats/data/THexRecord.h"

#include <array>

namespace {

constexpr quint8 Blank = 0x40;
constexpr quint8 Bad = 0x80;

constexpr quint8 classOf(int c)
{
    if (c >= '0' && c <= '9')
        return static_cast<quint8>(c - '0');
    if (c >= 'A' && c <= 'F')
        return static_cast<quint8>(c - 'A' + 10);
    if (c >= 'a' && c <= 'f')
        return static_cast<quint8>(c - 'a' + 10);
    return c == ' ' || (c >= '\t' && c <= '\r') ? Blank : Bad;
}

constexpr std::array<quint8, 256> makeClasses()
{
    std::array<quint8, 256> classes{};
    for (int c = 0; c < 256; ++c)
        classes[static_cast<size_t>(c)] = classOf(c);
    return classes;
}

/// Value of a hexadecimal digit, Blank for white space, else Bad.
constexpr std::array<quint8, 256> classes = makeClasses();

quint8 classAt(const char* c)
{
    return classes[static_cast<uchar>(*c)];
}

constexpr char digits[] = "0123456789ABCDEF";

char* putByte(char* to, uchar value)
{
    *to++ = digits[value >> 4];
    *to++ = digits[value & 15];
    return to;
}

} // namespace

bool THexRecord::parse(const char* line, int length)
{
    int count = 0;
    if (length < 1 || line[0] != ':' || !decode(line + 1, length - 1, count))
        return false;
    if (count < 5 || m_bytes[0] != count - 5)
        return false;
    uchar sum = 0;
    for (int i = 0; i < count; ++i)
        sum = static_cast<uchar>(sum + m_bytes[i]);
    return sum == 0;
}

bool THexRecord::decode(const char* line, int length, int& count)
{
    const char* const end = line + length;
    int high = -1; // the first digit of a pair that white space may stand in
    for (const char* at = line; at < end; ++at) {
        const quint8 value = classAt(at);
        if (value == Blank)
            continue;
        if (value == Bad)
            return false;
        if (high < 0) {
            high = value;
            continue;
        }
        if (count == maxBytes)
            return false;
        m_bytes[count++] = static_cast<uchar>(high << 4 | value);
        high = -1;
    }
    return high < 0;
}

void THexRecord::append(QByteArray& out, int type, int offset, const char* data, int size)
{
    char line[1 + 2 * maxBytes + 2];
    const uchar head[] = {static_cast<uchar>(size), static_cast<uchar>(offset >> 8),
                          static_cast<uchar>(offset), static_cast<uchar>(type)};
    char* to = line;
    uchar sum = 0;
    *to++ = ':';
    for (const uchar value : head) {
        sum = static_cast<uchar>(sum + value);
        to = putByte(to, value);
    }
    for (int i = 0; i < size; ++i) {
        const uchar value = static_cast<uchar>(data[i]);
        sum = static_cast<uchar>(sum + value);
        to = putByte(to, value);
    }
    to = putByte(to, static_cast<uchar>(-sum));
    *to++ = '\r';
    *to++ = '\n';
    out.append(line, static_cast<int>(to - line));
}
