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
        {maPrjListNew, 5, &W::slotPrjListNew, "PrjListNew", Free, Plain},
        {maPrjListLoad, 6, &W::slotPrjListLoad, "PrjListLoad", Free, Plain},
        {maPrjListSelect, 7, &W::slotPrjListSelect, "PrjListSelect", Free, Plain},
        {maPrjListReload, 8, &W::slotPrjListReload, "PrjListReload", ListLoaded | Free, Plain},
        {maPrjListSaveAs, 9, &W::slotPrjListSaveAs, "PrjListSaveAs", ListLoaded, Plain},
        {maPrjListOpenFolder, 10, &W::slotPrjListOpenFolder, "PrjListOpenFolder", ListLoaded, Plain},
        {maPrjListDragDrop, 11, &W::slotPrjListDragDrop, "PrjListDragDrop", ListLoaded, Check},
        {maPrjNew, 13, &W::slotPrjNew, "PrjNew", ListLoaded | Free, Plain},
        {maPrjNewSub, 14, &W::slotPrjNewSub, "PrjNewSub", HasNode | Free, Plain},
        {maPrjAdd, 15, &W::slotPrjAdd, "PrjAdd", ListLoaded | Free, Plain},
        {maPrjAddSub, 16, &W::slotPrjAddSub, "PrjAddSub", HasNode | Free, Plain},
        {maPrjCopy, 17, &W::slotPrjCopy, "PrjCopy", PrjOpen | Free, Plain},
        {maPrjPasteNew, 18, &W::slotPrjPasteNew, "PrjPasteNew", ListLoaded | PrjCopied | Free, Plain},
        {maPrjPasteNewSub, 19, &W::slotPrjPasteNewSub, "PrjPasteNewSub", ListLoaded | PrjCopied | Free, Plain},
        {maPrjEdit, 20, &W::slotPrjEdit, "PrjEdit", HasNode | Free, Plain},
        {maPrjSave, 21, &W::slotPrjSave, "PrjSave", HasNode | PrjOpen | Free, Plain},
        {maPrjSaveAs, 428, &W::slotPrjSaveAs, "PrjSaveAs", PrjOpen | Free, Plain},
        {maPrjDelete, 22, &W::slotPrjDelete, "PrjDeleteCur", HasNode | Free, Plain},
        {maPrjDeleteSubAll, 23, &W::slotPrjDeleteSubAll, "PrjDeleteSubAll", HasSubNodes | Free, Plain},
        {maPrjOpenFolder, 24, &W::slotPrjOpenFolder, "PrjOpenFolder", HasNode | PrjOpen, Plain},
        {maCfgNew, 26, &W::slotCfgNew, "CfgNew", PrjOpen | Free, Focus},
        {maCfgCopy, 27, &W::slotCfgCopy, "CfgCopy", PrjOpen | Free, Focus},
        {maCfgPaste, 28, &W::slotCfgPaste, "CfgPasteNew", PrjOpen | CfgCopied | Free, Focus},
        {maCfgEdit, 29, &W::slotCfgEdit, "CfgEdit", PrjOpen | Free, Focus},
        {maCfgDelete, 30, &W::slotCfgDelete, "CfgDelete", PrjOpen | SeveralCfgs | Free, Focus},
        {maCmdSelector, 32, &W::slotCmdSelector, "CmdSelector", PrjOpen | Free, Check},
        {maCmdNewSetProgDevice, 33, &W::slotCmdNewSetProgDevice, "CmdNewSetProgDevice", PrjOpen | Free, Focus},
        {maCmdNewSetProg, 34, &W::slotCmdNewSetProg, "CmdNewSetProg", PrjOpen | Free, Focus},
        {maCmdNewSetDevice, 34, &W::slotCmdNewSetDevice, "CmdNewSetDevice", PrjOpen | Free, Focus},
        {maCmdCopy, 35, &W::slotCmdCopy, "CmdCopyOne", PrjOpen | HasCmd | Free, Focus},
        {maCmdCopySelected, 36, &W::slotCmdCopySelected, "CmdCopySelected", PrjOpen | HasCmds | Free, Focus},
        {maCmdPaste, 37, &W::slotCmdPaste, "CmdPaste", PrjOpen | CmdsCopied | Free, Focus},
        {maCmdDeleteCur, 38, &W::slotCmdDeleteCur, "CmdDeleteCur", PrjOpen | HasCmd | Free, Focus},
        {maCmdDeleteSelected, 39, &W::slotCmdDeleteSelected, "CmdDeleteSelected", PrjOpen | HasCmds | Free, Focus},
        {maCmdDeleteError, 41, &W::slotCmdDeleteError, "CmdDeleteError", PrjOpen | HasCmds | Free, Focus},
        {maCmdDeleteDev, 40, &W::slotCmdDeleteDev, "CmdDeleteDev", PrjOpen | HasCmds | Free, Focus},
        {maCmdDeleteAll, 43, &W::slotCmdDeleteAll, "CmdDeleteAll", PrjOpen | HasCmds | Free, Focus},
        {maCmdCheckAll, 45, &W::slotCmdCheckAll, "CmdCheckAll", PrjOpen | HasCmds | Free, Plain},
        {maCmdUncheckAll, 46, &W::slotCmdUcheckAll, "CmdUncheckAll", PrjOpen | HasCmds | Free, Plain},
        {maCmdMoveUp, 47, &W::slotCmdMoveUp, "CmdMoveUp", PrjOpen | HasCmd | NotFirst | Free, Focus},
        {maCmdMoveDown, 48, &W::slotCmdMoveDown, "CmdMoveDown", PrjOpen | HasCmd | NotLast | Free, Focus},
        {maCmdUncheckHide, 49, &W::slotCmdUncheckHide, "CmdUncheckHide", Always, Check},
        {maExecIDProg, 51, &W::slotExecIDProg, "ExecIDProg", PrjOpen | CanAsk | Free, NoRepeat},
        {maExecReset, 52, &W::slotExecReset, "ExecReset", PrjOpen | CanReset | Free, NoRepeat},
        {maExecCfg, 53, &W::slotExecCfg, "ExecCfg1", PrjOpen | HasCfg | Free, NoRepeat},
        {maExecClearState, 54, &W::slotExecClearState, "ExecClearCfgState", PrjOpen, Plain},
        {maExecClearAllState, 55, &W::slotExecClearAllState, "ExecClearAllState", PrjOpen, Plain},
        {maQuit, 56, &W::slotQuit, "Quit", Always, NoRepeat},
        {maSettings, 64, &W::slotSettings, "Setup", Free, Plain},
        {maSetLanguage, 0, &W::slotSetLanguage, "Language", Always, Plain},
        {maSaveSettings, 65, &W::slotSaveSettings, "SaveSettings", Always, Plain},
        {maHelp, 66, &W::slotHelp, "Help", Always, Plain},
        {maAbout, 67, &W::slotAbout, nullptr, Always, Plain},
        {maAboutQt, 0, &W::slotAboutQt, nullptr, Always, Plain},
        {maSetViewParamPrj, 58, &W::slotSetViewParamPrj, "ViewParamPrj", PrjOpen, Check},
        {maSetViewParamCmd, 59, &W::slotSetViewParamCmd, "ViewParamCmd", PrjOpen, Check},
        {maSetViewParamExec, 60, &W::slotSetViewParamExec, "ViewParamExec", PrjOpen, Check},
    };
    // clang-format on
    static_assert(isInOrder(rows), "a row an action");
    return rows[id];
}
