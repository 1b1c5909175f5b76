#pragma once

#include <QByteArray>

/// One record of an Intel HEX file: a line of text on one side, its fields on the other.
struct THexRecord
{
    enum Type { Data = 0, End = 1, SegmentAddress = 2, LinearAddress = 4 };
    /// Length, two bytes of offset, type, up to 255 bytes of data, checksum.
    static constexpr int maxBytes = 260;

    /// Decodes a line with or without its line end. False if it does not begin with a colon, holds
    /// anything but digits and white space behind it, or has a wrong sum or length; the fields are then
    /// undefined.
    [[nodiscard]] bool parse(const char* line, int length);

    int type() const { return m_bytes[3]; }
    int offset() const { return m_bytes[1] << 8 | m_bytes[2]; }
    int size() const { return m_bytes[0]; }
    const uchar* data() const { return m_bytes + 4; }

    /// Appends the line of a record, with CR LF, to out. size is at most 255.
    static void append(QByteArray& out, int type, int offset, const char* data, int size);

private:
    bool decode(const char* line, int length, int& count);

    uchar m_bytes[maxBytes];
};
