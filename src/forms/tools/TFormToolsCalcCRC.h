#pragma once

#include "base/texts.h"
#include "forms/TFormCommand.h"

class QFormLayout;
class TComboBox;
class TWgtEditFileName;
class TWgtEditHexDec;
class TWgtEditHexDec64;

/// A checksum over a range of a data file.
class TFormToolsCalcCRC : public TFormCommand
{
    Q_OBJECT

public:
    explicit TFormToolsCalcCRC(const TData& params);

public slots:
    void slotChanged();

private:
    void showParams() override;
    TComboBox* addBox(QFormLayout* layout, Text label, const QString& key, const QStringList& choice);
    TWgtEditFileName* addFile(QFormLayout* layout);
    TWgtEditHexDec64* addNumber(QFormLayout* layout, Text label, const QString& key);
    TWgtEditHexDec* addFill(QFormLayout* layout);
    void enter(const QString& key, const QVariant& value);
    void showText(TComboBox* box, const QString& key);

    TComboBox* m_name;
    TComboBox* m_format;
    TWgtEditFileName* m_file;
    TWgtEditHexDec64* m_addr;
    TWgtEditHexDec64* m_count;
    TWgtEditHexDec* m_fill;
};
