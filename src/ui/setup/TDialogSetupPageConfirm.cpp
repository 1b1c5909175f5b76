#include "ui/setup/TDialogSetupPageConfirm.h"

namespace {

const std::vector<TSetupGroup>& confirmGroups()
{
    using Data = TAppData;
    constexpr TSetupKind check = TSetupKind::Check;
    // clang-format off
    static const std::vector<TSetupGroup> groups{
        {4, {{check, 271, &Data::ConfirmProjectsListReload},
             {check, 272, &Data::ConfirmProjectsListDelete}}},
        {12, {{check, 273, &Data::ConfirmProjectSave},
              {check, 274, &Data::ConfirmProjectDeleteCur},
              {check, 275, &Data::ConfirmProjectDeleteSubAll}}},
        {25, {{check, 276, &Data::ConfirmConfigDeleteCur}}},
        {31, {{check, 277, &Data::ConfirmCmdInsertProgDevice},
              {check, 278, &Data::ConfirmCmdInsertProg},
              {check, 279, &Data::ConfirmCmdInsertDevice},
              {check, 280, &Data::ConfirmCmdPaste},
              {check, 281, &Data::ConfirmCmdDeleteCur},
              {check, 282, &Data::ConfirmCmdDeleteSelected},
              {check, 283, &Data::ConfirmCmdDeleteError},
              {check, 284, &Data::ConfirmCmdDeleteDev},
              {check, 285, &Data::ConfirmCmdDeleteAll}}},
        {50, {{check, 286, &Data::ConfirmExecConfig},
              {check, 287, &Data::ConfirmExecReset}}},
        {3, {{check, 288, &Data::ConfirmQuit}}},
    };
    // clang-format on
    return groups;
}

} // namespace

TDialogSetupPageConfirm::TDialogSetupPageConfirm(QWidget* parent)
    : IDialogSetupPage(179, parent)
{
    addGroups(confirmGroups());
}
