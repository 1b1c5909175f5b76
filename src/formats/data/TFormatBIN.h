#pragma once

#include "formats/data/IFormat.h"

/// Raw binary. "bin" writes a new file, "bin+" changes only the written range of the one that is there.
/// Address 0 is the first byte of the file.
class TFormatBIN : public IFormat
{
public:
    TFormatBIN(const QString& format, const QString& file, qint64 addrFile, qint64 addrDevice, qint64 addrEnd,
               qint64 chunk);

    [[nodiscard]] bool open(int mode) override;
    [[nodiscard]] bool write(qint64 addr, const QByteArray& data) override;
    /// Leaves addr as it is. The bytes come from the file one after the other, beginning at addr_file.
    [[nodiscard]] bool read(qint64& addr, QByteArray& data) override;
    [[nodiscard]] bool close() override;
    qint64 lastWanted() const override { return m_addrEnd; }
    qint64 leftOut() const override;
    bool mayBeCut() const override { return true; }

private:
    bool seekTo(qint64 place);

    const QString m_format;
    const qint64 m_addrFile;
    const qint64 m_addrEnd;
    const qint64 m_chunk;
    qint64 m_curFile;
    qint64 m_curDevice;
    qint64 m_place = 0; ///< where the file stands, which a device or pipe does not tell
    qint64 m_taken = 0; ///< bytes handed out
};
