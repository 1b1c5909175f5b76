#pragma once

#include "devices/shared/TFamilyExec.h"

/// Runs the commands of I2C EEPROMs. The programmer makes the conditions on the bus, adds the state of the
/// address pins to the control byte and waits for the end of each write.
class TDev24CExec : public TFamilyExec
{
    Q_OBJECT

public:
    explicit TDev24CExec(const TData& data);

protected:
    TMemory memory(Area area) override;
    [[nodiscard]] bool runOwn(const TCommandRow& row) override;

private:
    [[nodiscard]] bool chipRead(qint64 addr, int n, QByteArray& bytes);
    [[nodiscard]] bool chipWrite(qint64 addr, const QByteArray& bytes);
    [[nodiscard]] bool setAddr();
    /// Control byte and address bytes; false when the description asks for more than there is.
    [[nodiscard]] bool addressed(qint64 addr, QByteArray& bytes);
};
