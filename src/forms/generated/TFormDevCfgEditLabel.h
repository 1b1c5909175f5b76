#pragma once

#include "forms/generated/IFormDevCfgBase.h"

class QLineEdit;
struct TFormItem;

/// Shows the masked value as hexadecimal text and never changes it.
class TFormDevCfgEditLabel : public IFormDevCfgBase
{
    Q_OBJECT

public:
    TFormDevCfgEditLabel(const TFormItem& item, QWidget* parent);

    QByteArray data() const override;
    void setData(const QByteArray& value) override;

private:
    QByteArray m_data;
    QLineEdit* m_edit;
};
