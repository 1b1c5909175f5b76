#pragma once

#include "forms/generated/IFormDevCfgBase.h"

class QCheckBox;
struct TFormItem;

/// Bits as a check box: it reads any bit of its mask, and sets or clears all of them.
class TFormDevCfgCheckBox : public IFormDevCfgBase
{
    Q_OBJECT

public:
    TFormDevCfgCheckBox(const TFormItem& item, QWidget* parent);

    QByteArray data() const override;
    void setData(const QByteArray& value) override;

private:
    const QByteArray m_whenChecked;
    const QByteArray m_whenUnchecked;
    QCheckBox* m_box;
};
