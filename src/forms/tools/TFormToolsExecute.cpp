#include "forms/tools/TFormToolsExecute.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/references.h"
#include "forms/tools/project_entries.h"

#include <QFormLayout>

TFormToolsExecute::TFormToolsExecute(const TData& params)
    : TFormCommand(params, {key::cfg})
    , m_cfg(new TIdBox(cfgEntries, this))
{
    QFormLayout* layout = formRows(this);
    layout->addRow(langText(Text::LabelExecuteCfg), m_cfg);
    layout->addRow(formHint(langText(Text::HintExecute), this));
    TFormToolsExecute::showParams();
    connect(m_cfg, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &TFormToolsExecute::slotChanged);
}

void TFormToolsExecute::showParams()
{
    m_cfg->showId(referenceId(param(key::cfg)));
}

void TFormToolsExecute::slotChanged()
{
    if (m_cfg->currentIndex() < 0)
        return;
    setParam(key::cfg, m_cfg->id());
    report();
}
