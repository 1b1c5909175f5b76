#include "ui/setup/TDialogSetupPageInterface.h"

#include "base/keys.h"

#include <QCheckBox>

namespace {

const std::vector<TSetupGroup>& interfaceGroups()
{
    using Data = TAppData;
    constexpr TSetupKind check = TSetupKind::Check;
    constexpr TSetupKind color = TSetupKind::Color;
    // clang-format off
    static const std::vector<TSetupGroup> groups{
        {4, {{TSetupKind::Expand, 232, &Data::PrjListExpand},
             {check, 236, &Data::PrjListDragDrop},
             {check, 237, &Data::PrjListShowName},
             {check, 238, &Data::PrjListShowFilter},
             {color, 239, &Data::PrjListNameColorText},
             {color, 240, &Data::PrjListNameColorBack}}},
        {25, {{check, 241, &Data::PrjHideTabCfg}}},
        {31, {{check, 242, &Data::HideUncheckCmd},
              {check, 243, &Data::CmdDelCmdDev},
              {check, 244, &Data::CmdAddState},
              {check, 246, &Data::CmdEnableHLJamp}}},
        {245, {{color, -1, &Data::CmdColorSetProg, &Data::CmdEnableColorSetProg, cmd::set_prog},
               {color, -1, &Data::CmdColorSetDevice, &Data::CmdEnableColorSetDevice, cmd::set_device},
               {color, -1, &Data::CmdColorExecute, &Data::CmdEnableColorExecute, cmd::execute},
               {color, -1, &Data::CmdColorDelay, &Data::CmdEnableColorDelay, cmd::delay},
               {color, -1, &Data::CmdColorCounter, &Data::CmdEnableColorCounter, cmd::counter},
               {color, -1, &Data::CmdColorJamp, &Data::CmdEnableColorJamp, cmd::jamp},
               {color, -1, &Data::CmdColorPause, &Data::CmdEnableColorPause, cmd::pause},
               {color, -1, &Data::CmdColorStop, &Data::CmdEnableColorStop, cmd::stop},
               {color, -1, &Data::CmdColorCalcCRC, &Data::CmdEnableColorCalcCRC, cmd::calc_crc},
               {color, -1, &Data::CmdColorProcess, &Data::CmdEnableColorProcess, cmd::process},
               {color, -1, &Data::CmdColorLeave, &Data::CmdEnableColorLeave, cmd::leave}}},
        {50, {{check, 247, &Data::ExecClearWindow},
              {check, 248, &Data::ExecShowProgExec},
              {check, 249, &Data::ExecShowProgIDProg},
              {check, 250, &Data::ExecShowProgReset}}},
        {251, {{color, 252, &Data::ExecTabColorExecute},
               {color, 253, &Data::ExecTabColorPause},
               {color, 254, &Data::ExecTabColorSuccess},
               {color, 255, &Data::ExecTabColorFailed},
               {color, 469, &Data::ExecTabColorStopped}}},
        {256, {{color, 257, &Data::ExecBtnColorExecute},
               {color, 258, &Data::ExecBtnColorPause}}},
        {259, {{check, 260, &Data::ExecLogShowTime},
               {check, 261, &Data::ExecLogShowTime_ms},
               {color, 262, &Data::ExecLogColorBackground},
               {color, 263, &Data::ExecLogColorTime},
               {color, 264, &Data::ExecLogColorCmd},
               {color, 265, &Data::ExecLogColorParam},
               {color, 266, &Data::ExecLogColorText},
               {color, 267, &Data::ExecLogColorWork},
               {color, 268, &Data::ExecLogColorResult},
               {color, 269, &Data::ExecLogColorSuccess},
               {color, 270, &Data::ExecLogColorFailed},
              {color, 469, &Data::ExecLogColorStopped}}},
    };
    // clang-format on
    return groups;
}

} // namespace

TDialogSetupPageInterface::TDialogSetupPageInterface(QWidget* parent)
    : IDialogSetupPage(178, parent)
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
