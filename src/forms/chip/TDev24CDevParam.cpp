#include "forms/chip/TDev24CDevParam.h"

#include "base/keys.h"
#include "forms/chip/TFormDevSetCLK.h"
#include "forms/chip/dev_forms.h"
#include "forms/edits/TWgtEditBase.h"
#include "forms/generated/TFormDevCfg.h"
#include "misc/TNormCmdParam.h"

#include <QVBoxLayout>

TDev24CDevParam::TDev24CDevParam(const IDevice& device, const TData& params, const TFormSpec& spec)
    : m_key(spec.numberKey)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    if (TFormDevSetCLK* clk = formClk(params, device)) {
        layout->addWidget(clk);
        connect(clk, &TFormDevSetCLK::signalChangedCmdParam, this, &TDev24CDevParam::signalChangedCmdParam);
    }
    TFormDevCfg* pins = formItems(params, spec);
    layout->addWidget(pins, 1);
    connect(pins, &TFormDevCfg::signalChangedCmdParam, this, &TDev24CDevParam::slotChangedAddr);
}

TDev24CDevParam::~TDev24CDevParam()
{
    TWgtEditBase::silence(*this);
}

void TDev24CDevParam::slotChangedAddr(const TData& params)
{
    const int value = int(fromHex(params.value(key::data).toString()));
    emit signalChangedCmdParam({{key::id_cmd, params.value(key::id_cmd)}, {m_key, value}});
}
