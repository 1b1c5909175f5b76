#pragma once

#include "devices/shared/TFamilyExec.h"

/// Runs the commands of serial NOR flash. The payload of a frame is the chip's own command; the programmer
/// adds write enable and waits until the chip is ready.
class TDev25Exec : public TFamilyExec
{
    Q_OBJECT

public:
    explicit TDev25Exec(const TData& data);

    [[nodiscard]] bool readChipId(TSerialPort* port, QString& id) override;

protected:
    TMemory memory(Area area) override;
    [[nodiscard]] bool runOwn(const TCommandRow& row) override;
    [[nodiscard]] bool readSignature(QByteArray& bytes) override;

private:
    // Chip primitives: one exchange each, one a status register. Addresses wrap at 24 bits.
    [[nodiscard]] bool chipRead(qint64 addr, int n, QByteArray& bytes);
    [[nodiscard]] bool chipErase(quint8 op, qint64 addr);
    [[nodiscard]] bool chipWrite(qint64 addr, const QByteArray& bytes);
    [[nodiscard]] bool chipStatusRead(QByteArray& bytes);
    [[nodiscard]] bool chipStatusWrite(const QByteArray& bytes);
    [[nodiscard]] bool chipSfdpRead(qint64 addr, int n, QByteArray& bytes);
    [[nodiscard]] bool chipSecurityErase(int index);
    [[nodiscard]] bool chipSecurityRead(qint64 addr, int n, QByteArray& bytes);
    [[nodiscard]] bool chipSecurityWrite(qint64 addr, const QByteArray& bytes);
    [[nodiscard]] bool chipUniqueId(QByteArray& bytes);

    // Routines.
    [[nodiscard]] bool erase();
    [[nodiscard]] bool eraseBlocks();
    [[nodiscard]] bool testEmptyBlocks();
    [[nodiscard]] bool statusRead();
    [[nodiscard]] bool statusWrite();
    [[nodiscard]] bool statusVerify();
    [[nodiscard]] bool securityErase();
    [[nodiscard]] bool securityTestEmpty();
    [[nodiscard]] bool uniqueIdRead();

    [[nodiscard]] bool eraseLoop(quint8 op, qint64 size, qint64 begin, qint64 count);
    [[nodiscard]] bool transfer(int n, const QByteArray& command, QByteArray& reply);
    /// Status registers of the chip, by the description's number or else by their default; -1 when they are
    /// too many.
    int statusCount() const;
    /// How many of them are read and written: all three where the description gives no number.
    int statusServed() const;
    [[nodiscard]] bool statusBytes(QByteArray& bytes);
    /// Mask of the selected registers that the chip has.
    quint8 selectedRegisters() const;
    /// The command's blocks; false with the reason stored when they do not lie in the chip.
    [[nodiscard]] bool blockRange(qint64& size, qint64& begin, qint64& count);
};
