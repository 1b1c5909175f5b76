#pragma once

#include "formats/data/IFormat.h"
#include "formats/data/TLineReader.h"

struct THexRecord;

/// Intel HEX. The addresses in the file are device addresses: in reading, addr_file can only raise the last
/// address that is taken; in writing it is the address of the first record.
/// A written file ends no higher than 0xFFFF, or has extended-address records: type 02 up to 0xFFFFF, else
/// or with the setting HexLinear type 04, both with bits 31..16 of the address. A read record of type 02 is
/// taken the same way, but for a value that only makes sense as a segment.
class TFormatHEX : public IFormat
{
public:
    TFormatHEX(const QString& file, qint64 addrFile, qint64 addrDevice, qint64 addrEnd, qint64 chunk);

    [[nodiscard]] bool open(int mode) override;
    [[nodiscard]] bool write(qint64 addr, const QByteArray& data) override;
    /// A gap in the file is a jump of addr. Records wholly below or above the range are skipped; one that
    /// goes back behind bytes already taken fails, since those bytes could only be lost.
    [[nodiscard]] bool read(qint64& addr, QByteArray& data) override;
    [[nodiscard]] bool close() override;
    qint64 lastWanted() const override { return m_lastWanted; }
    qint64 leftOut() const override { return m_leftOut; }
    bool mayBeCut() const override { return !m_ended; }
    void setLinear(bool linear) override { m_isLinear = linear; }
    bool hasSegments() const override;

private:
    enum Step { Next, Stop, Wrong };

    [[nodiscard]] bool openRead();
    [[nodiscard]] bool openWrite();

    void appendAddress(QByteArray& out);
    int appendRecords(QByteArray& out, const QByteArray& data, int atLeast, qint64 grid);
    void appendPending(QByteArray& out);

    bool failLine();
    bool gather(qint64 want);
    Step takeRecord(const THexRecord& record, qint64 want);
    Step takeUpper(const THexRecord& record);
    Step takeData(const THexRecord& record, qint64 want);
    Step leave(int bytes);
    /// Counts the data behind the end record. Whatever else stands there is no fault of the file.
    void leaveRest();
    Step putBack();

    const qint64 m_addrFile;
    const qint64 m_addrDevice;
    const qint64 m_lastWritten; ///< last address of the range in the file's address space
    const qint64 m_lastWanted;  ///< last address to take, by the file's or the chip's count of it
    const qint64 m_chunk;
    int m_mode = -1;
    qint64 m_curAddr;     ///< address of the first byte of m_pending
    qint64 m_reached;     ///< address behind the last byte taken in reading
    quint8 m_extType = 0; ///< record type of an extended address in writing; 0: none is needed
    bool m_isLinear = false;
    quint16 m_upper = 0;  ///< bits 31..16 of the address in force
    qint64 m_leftOut = 0; ///< bytes of records outside the range or behind the end record
    int m_most = 0;       ///< bytes to make room for, for one piece
    bool m_ended = false; ///< the end-of-file record was read
    QByteArray m_pending; ///< bytes taken in, not yet written out or handed out
    TLineReader m_lines;
};
