#pragma once

#include "forms/TFormCommand.h"

#include <QVector>

#include <functional>

class QFormLayout;
class TComboBox;
class TProg;
class TWgtEditDecDef;

/// Frequency and duty cycle of the programmer's generator, each as a field or, where the programmer has
/// only certain values, as a choice among them.
class TFormProgSetFreq : public TFormCommand
{
    Q_OBJECT

public:
    TFormProgSetFreq(const TData& params, const TProg& prog);

public slots:
    void slotChanged();

private:
    struct TValue
    {
        QString key;
        QString label;
        QString rangeText;
        QString defaultText;
        int min = 0;
        int max = 0;
        int defaultValue = 0;
    };
    /// One of the two is null.
    struct TRow
    {
        QString key;
        TWgtEditDecDef* edit;
        TComboBox* box;
    };

    void showParams() override;
    void addEdit(QFormLayout* layout, const TValue& value);
    void addBox(QFormLayout* layout, const TValue& value, const QVector<int>& choice,
                const std::function<QString(int)>& text);
    void enter(const QString& key, int value);

    QVector<TRow> m_rows;
    bool m_showsDuty = false;
};
