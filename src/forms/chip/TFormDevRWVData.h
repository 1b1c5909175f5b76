#pragma once

#include "forms/TFormCommand.h"
#include "misc/TNormCmdParam.h"

class QLabel;
class QPlainTextEdit;
class TWgtEditHexDec64;
class TWgtEditStrHex;

/// An address and bytes. For a read command the number of bytes tells how much is read, and a view
/// shows what was read.
class TFormDevRWVData : public TFormCommand
{
    Q_OBJECT

public:
    /// The command's word tells whether it reads.
    explicit TFormDevRWVData(const TData& params);

    void setRegion(const TRegion& region);
    /// What "*" at the address gives.
    void setDefault(qint64 addr);

    bool isRead() const { return m_result != nullptr; }
    /// The bytes as they are stored.
    QString text() const;

public slots:
    void slotEditing();
    void slotChanged();
    void editingFinished();

private:
    void showParams() override;
    void showBytes();
    void showResult();

    TRegion m_region;
    TWgtEditHexDec64* m_addr;
    TWgtEditStrHex* m_bytes;
    QPlainTextEdit* m_result = nullptr; ///< of a read command
};
