#pragma once

#include "base/types.h"
#include "devices/shared/TFileTally.h"
#include "formats/data/TFormat.h"

#include <functional>
#include <memory>

class ICRC;

/// The checksum over a range of a data file. Addresses that the file does not cover count as the fill byte,
/// so that exactly as many bytes are taken as the command asks for. One object serves one run on one thread.
class CalcCrc
{
public:
    /// Is told the position and the last address, often enough for a run over any range to be stopped soon.
    /// True ends the run there.
    using Report = std::function<bool(qint64 pos, qint64 last)>;

    /// data are the parameters of a command calc_crc.
    explicit CalcCrc(const TData& data);
    ~CalcCrc();

    /// Opens the file and finds the algorithm. False with the reason, or with none for an unknown name.
    [[nodiscard]] bool open();
    /// Takes the range. A stop is no failure.
    [[nodiscard]] bool run(const Report& report);
    /// "name: checksum" of what has been taken, also after a failure or a stop. Call it once, last.
    QString resultText();
    /// What of the file the range does not cover, or of the range the file, for the log.
    QStringList remarks() const;
    /// False when the file cannot be closed.
    [[nodiscard]] bool close();

    QString errorText() const { return m_errorText; }

private:
    /// Both take n bytes from the position on; true when the run has to end.
    bool take(const char* bytes, qint64 n, const Report& report);
    bool takeFill(qint64 n, const Report& report);
    /// Reads what the file has behind the range.
    bool readRest();

    const QString m_name;
    const QString m_file; ///< as the command names it
    const qint64 m_addr;
    const qint64 m_last;
    const char m_fill;
    qint64 m_pos;
    TFormat m_format;
    TFileTally m_tally;
    bool m_isStopped = false;
    std::unique_ptr<ICRC> m_crc;
    QByteArray m_padding; ///< one block of fill bytes, made when it is needed
    QString m_errorText;
};
