#pragma once

#include "forms/generated/IFormDevCfgBase.h"

struct TFormItem;

/// A button that gives the register a value of its own. It shows nothing of the value.
class TFormDevCfgButton : public IFormDevCfgBase
{
    Q_OBJECT

public:
    TFormDevCfgButton(const TFormItem& item, QWidget* parent);

    QByteArray data() const override;
    void setData(const QByteArray& value) override;

private:
    const QByteArray m_data;
};
