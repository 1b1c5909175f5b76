#include "ui/main/TMainActionRow.h"

#include "ui/main/TMainWindow.h"

#include <cstddef>

namespace {

template <size_t Count> constexpr bool isInOrder(const TMainActionRow (&rows)[Count])
{
    for (size_t i = 0; i < Count; ++i) {
        if (rows[i].id != static_cast<int>(i))
            return false;
    }
    return Count == maCount;
}

} // namespace

const TMainActionRow& TMainActionRow::of(TMainAction id)
{
    using W = TMainWindow;
    // clang-format off
    static constexpr TMainActionRow rows[] = {
        {maPrjListNew, Text::ActionPrjListNew, &W::slotPrjListNew, "PrjListNew", Free, Plain},
        {maPrjListLoad, Text::ActionPrjListLoad, &W::slotPrjListLoad, "PrjListLoad", Free, Plain},
        {maPrjListSelect, Text::ActionPrjListSelect, &W::slotPrjListSelect, "PrjListSelect", Free, Plain},
        {maPrjListReload, Text::ActionPrjListReload, &W::slotPrjListReload, "PrjListReload", ListLoaded | Free, Plain},
        {maPrjListSaveAs, Text::ActionPrjListSaveAs, &W::slotPrjListSaveAs, "PrjListSaveAs", ListLoaded, Plain},
        {maPrjListOpenFolder, Text::ActionPrjListOpenFolder, &W::slotPrjListOpenFolder, "PrjListOpenFolder", ListLoaded, Plain},
        {maPrjListDragDrop, Text::ActionPrjListDragDrop, &W::slotPrjListDragDrop, "PrjListDragDrop", ListLoaded, Check},
        {maPrjNew, Text::ActionPrjNew, &W::slotPrjNew, "PrjNew", ListLoaded | Free, Plain},
        {maPrjNewSub, Text::ActionPrjNewSub, &W::slotPrjNewSub, "PrjNewSub", HasNode | Free, Plain},
        {maPrjAdd, Text::ActionPrjAdd, &W::slotPrjAdd, "PrjAdd", ListLoaded | Free, Plain},
        {maPrjAddSub, Text::ActionPrjAddSub, &W::slotPrjAddSub, "PrjAddSub", HasNode | Free, Plain},
        {maPrjCopy, Text::ActionPrjCopy, &W::slotPrjCopy, "PrjCopy", PrjOpen | Free, Plain},
        {maPrjPasteNew, Text::ActionPrjPasteNew, &W::slotPrjPasteNew, "PrjPasteNew", ListLoaded | PrjCopied | Free, Plain},
        {maPrjPasteNewSub, Text::ActionPrjPasteNewSub, &W::slotPrjPasteNewSub, "PrjPasteNewSub", ListLoaded | PrjCopied | Free, Plain},
        {maPrjEdit, Text::ActionPrjEdit, &W::slotPrjEdit, "PrjEdit", HasNode | Free, Plain},
        {maPrjSave, Text::ActionPrjSave, &W::slotPrjSave, "PrjSave", HasNode | PrjOpen | Free, Plain},
        {maPrjSaveAs, Text::ActionPrjSaveAs, &W::slotPrjSaveAs, "PrjSaveAs", PrjOpen | Free, Plain},
        {maPrjDelete, Text::ActionPrjDelete, &W::slotPrjDelete, "PrjDeleteCur", HasNode | Free, Plain},
        {maPrjDeleteSubAll, Text::ActionPrjDeleteSubAll, &W::slotPrjDeleteSubAll, "PrjDeleteSubAll", HasSubNodes | Free, Plain},
        {maPrjOpenFolder, Text::ActionPrjOpenFolder, &W::slotPrjOpenFolder, "PrjOpenFolder", HasNode | PrjOpen, Plain},
        {maCfgNew, Text::ActionCfgNew, &W::slotCfgNew, "CfgNew", PrjOpen | Free, Focus},
        {maCfgCopy, Text::ActionCfgCopy, &W::slotCfgCopy, "CfgCopy", PrjOpen | Free, Focus},
        {maCfgPaste, Text::ActionCfgPaste, &W::slotCfgPaste, "CfgPasteNew", PrjOpen | CfgCopied | Free, Focus},
        {maCfgEdit, Text::ActionCfgEdit, &W::slotCfgEdit, "CfgEdit", PrjOpen | Free, Focus},
        {maCfgDelete, Text::ActionCfgDelete, &W::slotCfgDelete, "CfgDelete", PrjOpen | SeveralCfgs | Free, Focus},
        {maCmdSelector, Text::ActionCmdSelector, &W::slotCmdSelector, "CmdSelector", PrjOpen | Free, Check},
        {maCmdNewSetProgDevice, Text::ActionCmdNewSetProgDevice, &W::slotCmdNewSetProgDevice, "CmdNewSetProgDevice", PrjOpen | Free, Focus},
        {maCmdNewSetProg, Text::ActionCmdNewSet, &W::slotCmdNewSetProg, "CmdNewSetProg", PrjOpen | Free, Focus},
        {maCmdNewSetDevice, Text::ActionCmdNewSet, &W::slotCmdNewSetDevice, "CmdNewSetDevice", PrjOpen | Free, Focus},
        {maCmdCopy, Text::ActionCmdCopy, &W::slotCmdCopy, "CmdCopyOne", PrjOpen | HasCmd | Free, Focus},
        {maCmdCopySelected, Text::ActionCmdCopySelected, &W::slotCmdCopySelected, "CmdCopySelected", PrjOpen | HasCmds | Free, Focus},
        {maCmdPaste, Text::ActionCmdPaste, &W::slotCmdPaste, "CmdPaste", PrjOpen | CmdsCopied | Free, Focus},
        {maCmdDeleteCur, Text::ActionCmdDeleteCur, &W::slotCmdDeleteCur, "CmdDeleteCur", PrjOpen | HasCmd | Free, Focus},
        {maCmdDeleteSelected, Text::ActionCmdDeleteSelected, &W::slotCmdDeleteSelected, "CmdDeleteSelected", PrjOpen | HasCmds | Free, Focus},
        {maCmdDeleteError, Text::ActionCmdDeleteError, &W::slotCmdDeleteError, "CmdDeleteError", PrjOpen | HasCmds | Free, Focus},
        {maCmdDeleteDev, Text::ActionCmdDeleteDev, &W::slotCmdDeleteDev, "CmdDeleteDev", PrjOpen | HasCmds | Free, Focus},
        {maCmdDeleteAll, Text::ActionCmdDeleteAll, &W::slotCmdDeleteAll, "CmdDeleteAll", PrjOpen | HasCmds | Free, Focus},
        {maCmdCheckAll, Text::ActionCmdCheckAll, &W::slotCmdCheckAll, "CmdCheckAll", PrjOpen | HasCmds | Free, Plain},
        {maCmdUncheckAll, Text::ActionCmdUncheckAll, &W::slotCmdUcheckAll, "CmdUncheckAll", PrjOpen | HasCmds | Free, Plain},
        {maCmdMoveUp, Text::ActionCmdMoveUp, &W::slotCmdMoveUp, "CmdMoveUp", PrjOpen | HasCmd | NotFirst | Free, Focus},
        {maCmdMoveDown, Text::ActionCmdMoveDown, &W::slotCmdMoveDown, "CmdMoveDown", PrjOpen | HasCmd | NotLast | Free, Focus},
        {maCmdUncheckHide, Text::ActionCmdUncheckHide, &W::slotCmdUncheckHide, "CmdUncheckHide", Always, Check},
        {maExecIDProg, Text::ActionExecIDProg, &W::slotExecIDProg, "ExecIDProg", PrjOpen | CanAsk | Free, NoRepeat},
        {maExecReset, Text::ActionExecReset, &W::slotExecReset, "ExecReset", PrjOpen | CanReset | Free, NoRepeat},
        {maExecCfg, Text::ActionExecCfg, &W::slotExecCfg, "ExecCfg1", PrjOpen | HasCfg | Free, NoRepeat},
        {maExecClearState, Text::ActionExecClearState, &W::slotExecClearState, "ExecClearCfgState", PrjOpen, Plain},
        {maExecClearAllState, Text::ActionExecClearAllState, &W::slotExecClearAllState, "ExecClearAllState", PrjOpen, Plain},
        {maQuit, Text::ActionQuit, &W::slotQuit, "Quit", Always, NoRepeat},
        {maSettings, Text::ActionSettings, &W::slotSettings, "Setup", Free, Plain},
        {maSetLanguage, Text::None, &W::slotSetLanguage, "Language", Always, Plain},
        {maSaveSettings, Text::ActionSaveSettings, &W::slotSaveSettings, "SaveSettings", Always, Plain},
        {maHelp, Text::ActionHelp, &W::slotHelp, "Help", Always, Plain},
        {maAbout, Text::ActionAbout, &W::slotAbout, nullptr, Always, Plain},
        {maAboutQt, Text::None, &W::slotAboutQt, nullptr, Always, Plain},
        {maSetViewParamPrj, Text::ActionSetViewParamPrj, &W::slotSetViewParamPrj, "ViewParamPrj", PrjOpen, Check},
        {maSetViewParamCmd, Text::ActionSetViewParamCmd, &W::slotSetViewParamCmd, "ViewParamCmd", PrjOpen, Check},
        {maSetViewParamExec, Text::ActionSetViewParamExec, &W::slotSetViewParamExec, "ViewParamExec", PrjOpen, Check},
    };
    // clang-format on
    static_assert(isInOrder(rows), "a row an action");
    return rows[id];
}
