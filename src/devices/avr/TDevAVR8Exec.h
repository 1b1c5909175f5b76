#pragma once

#include "devices/shared/TFamilyExec.h"

/// Runs the commands of 8-bit AVR microcontrollers. Flash is addressed in bytes and written in words.
class TDevAVR8Exec : public TFamilyExec
{
    Q_OBJECT

public:
    explicit TDevAVR8Exec(const TData& data);

    [[nodiscard]] bool readChipId(TSerialPort* port, QString& id) override;

protected:
    TMemory memory(Area area) override;
    [[nodiscard]] bool runOwn(const TCommandRow& row) override;
    [[nodiscard]] bool readSignature(QByteArray& bytes) override;

private:
    /// The four bytes of an instruction of the chip's serial programming.
    struct Instruction
    {
        quint8 bytes[4];
    };

    // Chip primitives.
    /// A reply that is cut short fails: what the chip was told is then not known to have been done.
    [[nodiscard]] bool instruction(quint8 pace, const Instruction& instruction, QByteArray& reply);
    /// The chip sends each byte back while the next one goes in: the first n have to come.
    [[nodiscard]] bool echoed(quint8 pace, const Instruction& instruction, int n, QByteArray& reply);
    /// An instruction that gives one byte, with the echo of its first two.
    [[nodiscard]] bool readByte(const Instruction& instruction, quint8& value);
    /// An instruction that writes, with the echo of its first three bytes.
    [[nodiscard]] bool write(quint8 pace, const Instruction& instruction);
    [[nodiscard]] bool loadExtended(qint64 addr, bool always);
    [[nodiscard]] bool flashRead(qint64 addr, int n, QByteArray& bytes);
    [[nodiscard]] bool flashWrite(qint64 addr, const QByteArray& bytes);
    [[nodiscard]] bool eepromRead(qint64 addr, int n, QByteArray& bytes);
    [[nodiscard]] bool eepromWrite(qint64 addr, const QByteArray& bytes);
    [[nodiscard]] bool chipFuseRead(int n, QByteArray& bytes);
    [[nodiscard]] bool chipFuseWrite(quint8 pace, const QByteArray& bytes);
    [[nodiscard]] bool chipLockRead(QByteArray& bytes);
    [[nodiscard]] bool chipLockWrite(quint8 pace, quint8 value);

    // Routines.
    [[nodiscard]] bool erase();
    [[nodiscard]] bool fuseRead();
    [[nodiscard]] bool fuseWrite();
    [[nodiscard]] bool fuseVerify();
    [[nodiscard]] bool lockRead();
    [[nodiscard]] bool lockWrite();
    [[nodiscard]] bool lockVerify();
    [[nodiscard]] bool osccalRead();

    TMemory flash();
    TMemory eeprom();
    quint8 pace(QLatin1String polling, QLatin1String delay) const;
    /// Bytes of a register, by its default in the description.
    int registerSize(QLatin1String defKey) const;
    /// The command's fuse bytes, when they are as many as the chip has.
    [[nodiscard]] bool fuseBytes(QByteArray& bytes);
};
