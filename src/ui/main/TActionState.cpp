#include "ui/main/TActionState.h"

#include "core/model/IDevice.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "ui/main/TCmdClipboard.h"
#include "ui/main/TMainPanels.h"
#include "ui/panels/TWgtCmdList.h"
#include "ui/panels/TWgtPrj.h"
#include "ui/panels/TWgtPrjList.h"

namespace {

using Row = TMainActionRow;

} // namespace

TActionState::TActionState(const TMainPanels& panels, const TCmdClipboard& clipboard, bool isFree)
{
    addIf(Row::ListLoaded, panels.prjList()->isLoaded());
    addIf(Row::HasNode, panels.prjList()->hasNode());
    addIf(Row::HasSubNodes, panels.prjList()->nodeHasChildren());
    addIf(Row::PrjOpen, project().isOpen());
    addIf(Row::PrjCopied, !clipboard.prjName().isEmpty());
    addIf(Row::CfgCopied, !clipboard.cfgName().isEmpty());
    addIf(Row::CmdsCopied, clipboard.hasCmds());
    addIf(Row::SeveralCfgs, panels.prj()->count() > 1);
    addIf(Row::Free, isFree);
    addCmd(panels);
    addRuns(panels);
}

void TActionState::addIf(TMainActionRow::Condition condition, bool holds)
{
    if (holds)
        m_holding |= condition;
}

void TActionState::addCmd(const TMainPanels& panels)
{
    const TWgtConfig* tab = panels.prj()->current();
    if (!tab)
        return;
    const int row = panels.prj()->currentRow();
    const int count = tab->cmdList()->rowCount();
    addIf(Row::HasCfg, true);
    addIf(Row::HasCmd, panels.prj()->currentCmd() >= 0);
    addIf(Row::HasCmds, count > 0);
    addIf(Row::NotFirst, row != 0);
    addIf(Row::NotLast, row < count - 1);
}

void TActionState::addRuns(const TMainPanels& panels)
{
    const TBinding bound = project().binding(panels.prj()->currentCmd());
    if (!bound)
        return;
    const IDevice* family = bound.family;
    addIf(Row::CanAsk, bound.prog && !isActive(project().cfgStatus(panels.prj()->currentCfg())));
    addIf(Row::CanReset,
          family && family->hasReset() && !isActive(project().cfgStatus(bound.command->cfgId())));
}
