#include "ui/setup/TDialogSetupPageInterface.h"

#include "base/keys.h"

#include <QCheckBox>

namespace {

/// The colours of the commands in the list, the one that chooses the chip behind the one that chooses the
/// programmer.
std::vector<TSetupRow> commandColors()
{
    using Data = TAppData;
    constexpr TSetupKind color = TSetupKind::Color;
    std::vector<TSetupRow> rows{
#define VM_TOOL(word, Name, title, reference)                                                                \
    {color, Text::None, &Data::CmdColor##Name, &Data::CmdEnableColor##Name, cmd::word},
#include "base/tools.def"
        {color, Text::None, &Data::CmdColorLeave, &Data::CmdEnableColorLeave, cmd::leave},
    };
    rows.insert(rows.begin() + 1, {color, Text::None, &Data::CmdColorSetDevice,
                                   &Data::CmdEnableColorSetDevice, cmd::set_device});
    return rows;
}

const std::vector<TSetupGroup>& interfaceGroups()
{
    using Data = TAppData;
    constexpr TSetupKind check = TSetupKind::Check;
    constexpr TSetupKind color = TSetupKind::Color;
    static const std::vector<TSetupGroup> groups{
        {Text::MenuPrjList,
         {{TSetupKind::Expand, Text::SettingPrjListExpand, &Data::PrjListExpand},
          {check, Text::SettingPrjListDragDrop, &Data::PrjListDragDrop},
          {check, Text::SettingPrjListShowName, &Data::PrjListShowName},
          {check, Text::SettingPrjListShowFilter, &Data::PrjListShowFilter},
          {color, Text::SettingPrjListNameColorText, &Data::PrjListNameColorText},
          {color, Text::SettingPrjListNameColorBack, &Data::PrjListNameColorBack}}},
        {Text::MenuCfg, {{check, Text::SettingPrjHideTabCfg, &Data::PrjHideTabCfg}}},
        {Text::MenuCmd,
         {{check, Text::SettingHideUncheckCmd, &Data::HideUncheckCmd},
          {check, Text::SettingCmdDelCmdDev, &Data::CmdDelCmdDev},
          {check, Text::SettingCmdAddState, &Data::CmdAddState},
          {check, Text::SettingCmdEnableHLJamp, &Data::CmdEnableHLJamp}}},
        {Text::GroupCmdColors, commandColors()},
        {Text::MenuRun,
         {{check, Text::SettingExecClearWindow, &Data::ExecClearWindow},
          {check, Text::SettingExecShowProgExec, &Data::ExecShowProgExec},
          {check, Text::SettingExecShowProgIDProg, &Data::ExecShowProgIDProg},
          {check, Text::SettingExecShowProgReset, &Data::ExecShowProgReset}}},
        {Text::GroupTabColors,
         {{color, Text::SettingExecTabColorExecute, &Data::ExecTabColorExecute},
          {color, Text::SettingExecTabColorPause, &Data::ExecTabColorPause},
          {color, Text::SettingExecTabColorSuccess, &Data::ExecTabColorSuccess},
          {color, Text::SettingExecTabColorFailed, &Data::ExecTabColorFailed},
          {color, Text::SettingColorStopped, &Data::ExecTabColorStopped}}},
        {Text::GroupButtonColors,
         {{color, Text::SettingExecBtnColorExecute, &Data::ExecBtnColorExecute},
          {color, Text::SettingExecBtnColorPause, &Data::ExecBtnColorPause}}},
        {Text::GroupLog,
         {{check, Text::SettingExecLogShowTime, &Data::ExecLogShowTime},
          {check, Text::SettingExecLogShowTimeMs, &Data::ExecLogShowTime_ms},
          {color, Text::SettingExecLogColorBackground, &Data::ExecLogColorBackground},
          {color, Text::SettingExecLogColorTime, &Data::ExecLogColorTime},
          {color, Text::SettingExecLogColorCmd, &Data::ExecLogColorCmd},
          {color, Text::SettingExecLogColorParam, &Data::ExecLogColorParam},
          {color, Text::SettingExecLogColorText, &Data::ExecLogColorText},
          {color, Text::SettingExecLogColorWork, &Data::ExecLogColorWork},
          {color, Text::SettingExecLogColorResult, &Data::ExecLogColorResult},
          {color, Text::SettingExecLogColorSuccess, &Data::ExecLogColorSuccess},
          {color, Text::SettingExecLogColorFailed, &Data::ExecLogColorFailed},
          {color, Text::SettingColorStopped, &Data::ExecLogColorStopped}}},
    };
    return groups;
}

} // namespace

TDialogSetupPageInterface::TDialogSetupPageInterface(QWidget* parent)
    : IDialogSetupPage(Text::SetupInterface, parent)
{
    addGroups(interfaceGroups());
    connect(static_cast<QCheckBox*>(editor(&TAppData::ExecLogShowTime)), &QCheckBox::toggled, this,
            &TDialogSetupPageInterface::slotShowTime_ms);
    slotShowTime_ms();
}

void TDialogSetupPageInterface::slotShowTime_ms()
{
    const auto* time = static_cast<QCheckBox*>(editor(&TAppData::ExecLogShowTime));
    editor(&TAppData::ExecLogShowTime_ms)->setEnabled(time->isChecked());
}
