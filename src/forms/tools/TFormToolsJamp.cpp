#include "forms/tools/TFormToolsJamp.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/TDataPrj.h"
#include "core/model/references.h"
#include "forms/tools/project_entries.h"

#include <QFormLayout>

TFormToolsJamp::TFormToolsJamp(const TData& params)
    : TFormCommand(params, {key::to_cmd})
    , m_cfg(new TIdBox(cfgEntries, this))
    , m_cmd(new TIdBox([this] { return cmdEntries(m_cfg->id()); }, this))
{
    QFormLayout* layout = formRows(this);
    layout->addRow(langText(Text::LabelJampCfg), m_cfg);
    layout->addRow(langText(Text::LabelJampCmd), m_cmd);
    TFormToolsJamp::showParams();
    const auto changed = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(m_cfg, changed, this, &TFormToolsJamp::slotChangedCfg);
    connect(m_cmd, changed, this, &TFormToolsJamp::slotChangedCmd);
}

void TFormToolsJamp::showParams()
{
    const int target = referenceId(param(key::to_cmd));
    m_cfg->showId(project().cfgOfCmd(target));
    m_cmd->showId(target);
}

void TFormToolsJamp::slotChangedCfg()
{
    const TIdBox::Entries commands = cmdEntries(m_cfg->id());
    m_cmd->showId(commands.isEmpty() ? -1 : commands.first().first);
    slotChangedCmd();
}

void TFormToolsJamp::slotChangedCmd()
{
    if (m_cmd->currentIndex() < 0)
        return;
    setParam(key::to_cmd, m_cmd->id());
    report();
}
