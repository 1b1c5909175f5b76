#include "ui/setup/TDialogSetupPageMain.h"

namespace {

const std::vector<TSetupGroup>& mainGroups()
{
    using Kind = TSetupKind;
    static const std::vector<TSetupGroup> groups{
        {Text::MenuView,
         {{Kind::Style, Text::SettingStyle, &TAppData::Style},
          {Kind::Language, Text::SettingLanguage, &TAppData::Language},
          {Kind::Check, Text::SettingWindowMainCenter, &TAppData::WindowMainCenter},
          {Kind::Check, Text::SettingWindowOtherCenter, &TAppData::WindowOtherCenter},
          {Kind::Number, Text::ActionCmdSelector, &TAppData::WindowCmdSelector},
          {Kind::Check, Text::SettingCfgOrientation, &TAppData::CfgOrientation}}},
        {Text::MenuPrj,
         {{Kind::Check, Text::SettingOpenLastPrj, &TAppData::OpenLastPrj},
          {Kind::Check, Text::SettingAutoSavePrj, &TAppData::AutoSavePrj}}},
        {Text::MenuSettings,
         {{Kind::Check, Text::SettingSaveSettingsWindow, &TAppData::SaveSettingsWindow},
          {Kind::Check, Text::SettingSaveSettingsApp, &TAppData::SaveSettingsApp}}},
        {Text::MenuFile,
         {{Kind::File, Text::SettingSelectPrjListFile, &TAppData::SelectPrjListFile},
          {Kind::Folder, Text::SettingPathLanguage, &TAppData::PathLanguage},
          {Kind::Folder, Text::SettingPathProjects, &TAppData::PathProjects},
          {Kind::Folder, Text::SettingPathDevices, &TAppData::PathDevices},
          {Kind::Folder, Text::SettingPathProgs, &TAppData::PathProgs},
          {Kind::Check, Text::SettingHexLinear, &TAppData::HexLinear}}},
    };
    return groups;
}

} // namespace

TDialogSetupPageMain::TDialogSetupPageMain(QWidget* parent)
    : IDialogSetupPage(Text::SetupMain, parent)
{
    addGroups(mainGroups());
}
