#pragma once

#include "forms/TFormCommand.h"

#include <QVector>

class QCheckBox;
class TWgtEditDoubleDef;

/// One value of a supply.
struct TSupplyValue
{
    QString key;
    QString label;
    QString unit;
    int decimals = 1;
    double min = 0;
    double max = 0;
    double defaultValue = 0;
};

/// A supply of the programmer: its voltage, and where the programmer limits the current, that and
/// whether it switches off above it. The named forms say which supply.
class TFormProgSupply : public TFormCommand
{
    Q_OBJECT

public slots:
    void slotChanged();

protected:
    /// With a current there are two values, and the switch-off as third row.
    TFormProgSupply(const TData& params, const QVector<TSupplyValue>& values);

private:
    void showParams() override;
    void addValue(QFormLayout* layout, const TSupplyValue& value);
    void addProtection(QFormLayout* layout);

    QVector<QPair<QString, TWgtEditDoubleDef*>> m_edits;
    QCheckBox* m_protection = nullptr;
};

// The limits and defaults are those of the programmer, in volts and milliamperes.

class TFormProgSetVCC : public TFormProgSupply
{
    Q_OBJECT

public:
    TFormProgSetVCC(const TData& params, double min, double max, double defaultValue);
};

class TFormProgSetVPP : public TFormProgSupply
{
    Q_OBJECT

public:
    TFormProgSetVPP(const TData& params, double min, double max, double defaultValue);
};

class TFormProgSetVICC : public TFormProgSupply
{
    Q_OBJECT

public:
    TFormProgSetVICC(const TData& params, double vccMin, double vccMax, double vccDefault, double iccMin,
                     double iccMax, double iccDefault);
};

class TFormProgSetVIPP : public TFormProgSupply
{
    Q_OBJECT

public:
    TFormProgSetVIPP(const TData& params, double vppMin, double vppMax, double vppDefault, double ippMin,
                     double ippMax, double ippDefault);
};
