#include "ui/setup/TDialogSetupPageMain.h"

namespace {

const std::vector<TSetupGroup>& mainGroups()
{
    using Kind = TSetupKind;
    static const std::vector<TSetupGroup> groups{
        {57,
         {{Kind::Style, 213, &TAppData::Style},
          {Kind::Language, 465, &TAppData::Language},
          {Kind::Check, 216, &TAppData::WindowMainCenter},
          {Kind::Check, 217, &TAppData::WindowOtherCenter},
          {Kind::Number, 32, &TAppData::WindowCmdSelector},
          {Kind::Check, 218, &TAppData::CfgOrientation}}},
        {12, {{Kind::Check, 220, &TAppData::OpenLastPrj}, {Kind::Check, 219, &TAppData::AutoSavePrj}}},
        {63,
         {{Kind::Check, 214, &TAppData::SaveSettingsWindow}, {Kind::Check, 215, &TAppData::SaveSettingsApp}}},
        {3,
         {{Kind::File, 221, &TAppData::SelectPrjListFile},
          {Kind::Folder, 222, &TAppData::PathLanguage},
          {Kind::Folder, 223, &TAppData::PathProjects},
          {Kind::Folder, 224, &TAppData::PathDevices},
          {Kind::Folder, 225, &TAppData::PathProgs},
          {Kind::Check, 447, &TAppData::HexLinear}}},
    };
    return groups;
}

} // namespace

TDialogSetupPageMain::TDialogSetupPageMain(QWidget* parent)
    : IDialogSetupPage(177, parent)
{
    addGroups(mainGroups());
}
