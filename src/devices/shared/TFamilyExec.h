#pragma once

#include "devices/shared/IDeviceExec.h"
#include "devices/shared/TCommandTable.h"
#include "devices/shared/TMemory.h"

class IDevice;
class TFormat;

/// The executor side that all chip families share: the loops over ranges and files, and the commands
/// that are the same everywhere. A family gives its memories, its way to read a signature and the
/// routines of its own commands. Lives on the worker's thread, for one command.
class TFamilyExec : public IDeviceExec
{
    Q_OBJECT

public:
    [[nodiscard]] bool execute(TSerialPort* port, bool& exit, int& cur_cfg, int& cur_cmd) override;

protected:
    /// Expected or new bytes for n addresses from addr.
    using Bytes = std::function<QByteArray(qint64 addr, qint64 n)>;

    TFamilyExec(const TData& data, const TCommandTable& table);

    /// The memory of an area, for this command's chip and programmer.
    virtual TMemory memory(Area area) = 0;
    /// A command of the family that the shared part does not know.
    [[nodiscard]] virtual bool runOwn(const TCommandRow& row) = 0;
    /// Reads the chip's signature bytes.
    [[nodiscard]] virtual bool readSignature(QByteArray& bytes);

    /// Guard, chip and programmer: to be called before anything else.
    [[nodiscard]] bool begin(TSerialPort* port);
    /// The whole of readChipId for a family with a signature.
    [[nodiscard]] bool readSignatureText(TSerialPort* port, QString& id);

    /// A parameter of the command, and a key of the chip's description. A missing one is an invalid value.
    QVariant param(const QString& key, int line = __builtin_LINE()) const;
    QVariant chip(const QString& key, int line = __builtin_LINE()) const;
    /// The algorithm number of a primitive; 0 when the key is missing.
    int alg(const QString& key, int line = __builtin_LINE()) const;
    /// The primitive has algorithm number 0; otherwise false without a reason.
    [[nodiscard]] bool requireAlgZero(const QString& key, int line = __builtin_LINE());
    /// All keys of the chip's description.
    const TData& description() const { return m_chip; }
    TSerialPort* port() const { return m_port; }
    /// Most bytes of chip data in a frame.
    int maxData() const { return m_maxData; }
    /// Most bytes for which one frame may ask the programmer to work, when each takes so many ms: half of
    /// its time-out, so that a slow part or a busy machine still answers in time. At least 1; a time of 0
    /// tells nothing and limits nothing.
    qint64 bytesInTime(qint64 msPerByte) const;

    /// An exchange whose reply does not matter.
    [[nodiscard]] bool send(quint8 opcode, const QByteArray& payload);
    /// An exchange with its reply.
    [[nodiscard]] bool request(quint8 opcode, const QByteArray& payload, QByteArray& reply);

    // The loops. A stop ends them as if the range had ended.
    [[nodiscard]] bool writeRange(const TMemory& memory, qint64 first, qint64 last, const Bytes& bytes);
    [[nodiscard]] bool verifyRange(const TMemory& memory, qint64 first, qint64 last, const Bytes& bytes);
    /// Every byte of the region has the value, or gets it.
    [[nodiscard]] bool verifyAll(const TMemory& memory, quint8 value);
    [[nodiscard]] bool writeAll(const TMemory& memory, quint8 value);
    /// n bytes of that value for every place.
    static Bytes constant(quint8 value);

    /// The registers' value of a verify command against what was read; text has two places for the two.
    [[nodiscard]] bool compareRegisters(const QByteArray& read, const QString& text);
    /// A description without a size that divides, or bytes beyond the chip.
    [[nodiscard]] bool failMissingSize();
    [[nodiscard]] bool failOutside();
    /// A command that names no byte ends well without an exchange: the log must not let it look like work.
    void tellIfEmpty(qint64 first, qint64 last);

    /// A loop of more than one range: goes on with the progress that it is given.
    enum class Loop { Done, Stopped, Failed };
    Loop verifyPieces(const TMemory& memory, qint64 first, qint64 last, TProgress& progress, qint64 total,
                      const Bytes& bytes);

private:
    using Piece = std::function<bool(qint64 addr, qint64 n)>;
    using RangeLoop = Loop (TFamilyExec::*)(const TMemory& memory, qint64 first, qint64 last,
                                            TProgress& progress, qint64 total, const Bytes& bytes);
    /// The parameters of a file command.
    struct FileRange
    {
        explicit FileRange(const TData& data);

        qint64 fileAddr = 0;
        qint64 first = 0;
        qint64 last = 0;
        QString path;
        QString format;
    };

    [[nodiscard]] bool run(const TCommandRow& row);
    [[nodiscard]] bool runChar(const TMemory& memory, Action action);
    [[nodiscard]] bool runData(const TMemory& memory, Action action);
    [[nodiscard]] bool runFile(const TMemory& memory, Action action);
    [[nodiscard]] bool setClock();
    [[nodiscard]] bool leave();
    [[nodiscard]] bool ident();
    [[nodiscard]] bool readData(const TMemory& memory, qint64 first, qint64 last, const QString& pattern);
    [[nodiscard]] bool readFile(const TMemory& memory);
    /// The same for a memory of a few bytes, which the log shows too.
    [[nodiscard]] bool readFileTold(const TMemory& memory);
    /// Closes the file of a range that was read up to next, or says in what state the file is left.
    [[nodiscard]] bool closeRead(TFormat& file, const FileRange& range, qint64 next, Loop loop);
    void tell(const QStringList& remarks);
    /// Writes or verifies what the file gives; nothing behind lastAllowed.
    [[nodiscard]] bool fileToChip(const TMemory& memory, const TPieces& pieces, qint64 lastAllowed,
                                  RangeLoop work);

    Loop forPieces(const TPieces& pieces, qint64 first, qint64 last, TProgress& progress, qint64 total,
                   const Piece& use);
    Loop writePieces(const TMemory& memory, qint64 first, qint64 last, TProgress& progress, qint64 total,
                     const Bytes& bytes);
    [[nodiscard]] bool readPiece(const TMemory& memory, qint64 addr, qint64 n, QByteArray& bytes);
    [[nodiscard]] bool compare(qint64 addr, const QByteArray& expected, const QByteArray& read);
    [[nodiscard]] bool canWork(const TMemory& memory, const TPieces& pieces);

    const TCommandTable m_table;
    TSerialPort* m_port = nullptr;
    const IDevice* m_device = nullptr; ///< borrowed from the project, which keeps it while a run is on
    TData m_chip;
    int m_maxData = 0;
    int m_timeout = 0; ///< the programmer's, ms
};
