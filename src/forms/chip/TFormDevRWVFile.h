#pragma once

#include "forms/TFormCommand.h"
#include "misc/TNormCmdParam.h"

class TComboBox;
class TWgtEditFileName;
class TWgtEditHexDec64;

/// A data file and the range of a memory that it is read into, written from or compared with.
class TFormDevRWVFile : public TFormCommand
{
    Q_OBJECT

public:
    /// The command's word tells whether the file has to be there already.
    explicit TFormDevRWVFile(const TData& params);

    /// The folder that relative names count from.
    void setBaseFolder(const QString& folder);
    void setRegion(const TRegion& region);

    QVariant kept() const override;
    void takeKept(const QVariant& kept) override;

public slots:
    void slotChanged();

private:
    void showParams() override;
    void addRows();
    void changedAddr();
    void changedFormat();
    void showFileRange();

    TRegion m_region;
    TWgtEditFileName* m_file;
    TComboBox* m_format;
    TWgtEditHexDec64* m_addrFile;
    TWgtEditHexDec64* m_addrDevice;
    TWgtEditHexDec64* m_count;
};
