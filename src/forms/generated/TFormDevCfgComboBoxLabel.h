#pragma once

#include "forms/generated/IFormDevCfgBase.h"

#include <QList>

class TComboBox;
class TWgtLabelComboBox;
struct TFormItem;

/// Bits as a list of choices; a value that is none of them shows no choice, in the colour of faults.
class TFormDevCfgComboBoxLabel : public IFormDevCfgBase
{
    Q_OBJECT

public:
    TFormDevCfgComboBoxLabel(const TFormItem& item, QWidget* parent);

    void addChoice(const TFormItem& item);
    QByteArray data() const override;
    void setData(const QByteArray& value) override;

private:
    void choose(int index);

    QByteArray m_data;
    QList<QByteArray> m_choices;
    TWgtLabelComboBox* m_row;
    TComboBox* m_box;
};
