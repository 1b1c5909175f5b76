#include "ui/setup/TDialogSetupPageConfirm.h"

namespace {

const std::vector<TSetupGroup>& confirmGroups()
{
    using Data = TAppData;
    constexpr TSetupKind check = TSetupKind::Check;
    static const std::vector<TSetupGroup> groups{
        {Text::MenuPrjList,
         {{check, Text::ConfirmProjectsListReload, &Data::ConfirmProjectsListReload},
          {check, Text::ConfirmProjectsListDelete, &Data::ConfirmProjectsListDelete}}},
        {Text::MenuPrj,
         {{check, Text::ConfirmProjectSave, &Data::ConfirmProjectSave},
          {check, Text::ConfirmProjectDeleteCur, &Data::ConfirmProjectDeleteCur},
          {check, Text::ConfirmProjectDeleteSubAll, &Data::ConfirmProjectDeleteSubAll}}},
        {Text::MenuCfg, {{check, Text::ConfirmConfigDeleteCur, &Data::ConfirmConfigDeleteCur}}},
        {Text::MenuCmd,
         {{check, Text::ConfirmCmdInsertProgDevice, &Data::ConfirmCmdInsertProgDevice},
          {check, Text::ConfirmCmdInsertProg, &Data::ConfirmCmdInsertProg},
          {check, Text::ConfirmCmdInsertDevice, &Data::ConfirmCmdInsertDevice},
          {check, Text::ConfirmCmdPaste, &Data::ConfirmCmdPaste},
          {check, Text::ConfirmCmdDeleteCur, &Data::ConfirmCmdDeleteCur},
          {check, Text::ConfirmCmdDeleteSelected, &Data::ConfirmCmdDeleteSelected},
          {check, Text::ConfirmCmdDeleteError, &Data::ConfirmCmdDeleteError},
          {check, Text::ConfirmCmdDeleteDev, &Data::ConfirmCmdDeleteDev},
          {check, Text::ConfirmCmdDeleteAll, &Data::ConfirmCmdDeleteAll}}},
        {Text::MenuRun,
         {{check, Text::ConfirmExecConfig, &Data::ConfirmExecConfig},
          {check, Text::ConfirmExecReset, &Data::ConfirmExecReset}}},
        {Text::MenuFile, {{check, Text::ConfirmQuit, &Data::ConfirmQuit}}},
    };
    return groups;
}

} // namespace

TDialogSetupPageConfirm::TDialogSetupPageConfirm(QWidget* parent)
    : IDialogSetupPage(Text::SetupConfirmations, parent)
{
    addGroups(confirmGroups());
}
