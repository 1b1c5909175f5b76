#pragma once

#include <QByteArray>

class QIODevice;

/// Lines of a text file without a limit on the file and with one on the line. Reads in blocks, so that a
/// line costs no call of the device, and can give its last line a second time.
class TLineReader
{
public:
    /// Characters of the longest line, its line end among them.
    static constexpr int maxLine = 1023;

    enum Result { Line, AtEnd, TooLong, Failed };

    /// device is opened by the caller and lives longer than this object's use of it.
    explicit TLineReader(QIODevice& device);

    /// Gives the next line with its line feed, if it has one. line stays readable until the next call.
    /// Failed: the device's error string tells why.
    Result next(const char*& line, int& length);
    /// The next call of next gives the last line again. May be called once after each line.
    void putBack();
    /// Number of the line that next has given last, or could not give; the first one is 1.
    int number() const { return m_number; }

private:
    bool fill();

    QIODevice& m_device;
    QByteArray m_block;
    int m_number = 0;
    int m_last = 0;  ///< where the last line begins in the block
    int m_begin = 0; ///< where the next line begins
    int m_end = 0;   ///< behind the last byte that was read
};
