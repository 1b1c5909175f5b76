#pragma once

#include "base/types.h"
#include "link/lists/TProgName.h"
#include "link/lists/TProgType.h"

#include <QColor>
#include <QString>

/// Every persistent setting as a plain field, named after its key, with the default as initial value.
/// Written on the main thread only; workers read without a lock what does not change during a run.
class TAppData
{
public:
    virtual ~TAppData() = default;

    /// Reads both lists and every key of the settings file into the fields; a missing key gives the
    /// default, a missing file leaves all defaults. Once, at the start.
    void load();
    /// Writes the keys of the application settings and the two lists. Lines of the file that are none of
    /// them stay. False when the file cannot be written; a line in the diagnostic log says so.
    bool saveApp() const;
    /// Writes the keys of the window settings. False as above.
    bool saveWindow() const;

    // Group Main.
    int Debug = 0;
    QString Language = QStringLiteral("eng.lng");
    QString Style = QStringLiteral("Fusion");
    QString FontAppName;
    int FontAppSize = 0;
    QString FontMonoName;
    int FontMonoSize = 0;
    int IconsSet = 0;
    bool SaveSettingsWindow = true;
    bool SaveSettingsApp = true;
    bool WindowMainCenter = true;
    bool WindowOtherCenter = true;
    int WindowCmdSelector = 5;
    int CfgOrientation = 0;
    bool AutoSavePrj = false;
    bool OpenLastPrj = false;
    bool HexLinear = false;
    QString SelectPrjListFile = QStringLiteral("vm.lpl");
    QString PrjListName;
    QString PrjListFile;
    int LastPrj = -1;
    int LastCfg = -1;
    int LastCmd = -1;
    QString PathLanguage = QStringLiteral("language");
    QString PathProjects = QStringLiteral("projects");
    QString PathDevices = QStringLiteral("devices");
    QString PathProgs = QStringLiteral("progs");

    // Group Prog.
    int ProgDefault = 0;

    // Group Interface.
    int PrjListExpand = 0;
    bool PrjListDragDrop = true;
    bool PrjListShowName = true;
    bool PrjListShowFilter = true;
    QColor PrjListNameColorText = QColor(255, 255, 0);
    QColor PrjListNameColorBack = QColor(90, 90, 90);
    bool PrjHideTabCfg = true;
    bool HideUncheckCmd = false;
    bool CmdDelCmdDev = false;
    bool CmdAddState = true;
    bool CmdEnableColorSetProg = true;
    bool CmdEnableColorSetDevice = true;
    bool CmdEnableColorAutoDetect = true;
    bool CmdEnableColorProcess = false;
    bool CmdEnableColorJamp = false;
    bool CmdEnableColorCounter = false;
    bool CmdEnableColorDelay = false;
    bool CmdEnableColorPause = false;
    bool CmdEnableColorStop = false;
    bool CmdEnableColorExecute = false;
    bool CmdEnableColorCalcCRC = false;
    bool CmdEnableColorLeave = false;
    QColor CmdColorSetProg = QColor(200, 255, 200);
    QColor CmdColorSetDevice = QColor(200, 255, 255);
    QColor CmdColorAutoDetect = QColor(200, 255, 255);
    QColor CmdColorExecute = QColor(255, 230, 200);
    QColor CmdColorJamp = QColor(255, 255, 255);
    QColor CmdColorCounter = QColor(255, 255, 255);
    QColor CmdColorDelay = QColor(255, 255, 255);
    QColor CmdColorPause = QColor(255, 255, 200);
    QColor CmdColorStop = QColor(255, 200, 200);
    QColor CmdColorCalcCRC = QColor(255, 255, 255);
    QColor CmdColorProcess = QColor(255, 255, 255);
    QColor CmdColorLeave = QColor(235, 231, 208);
    bool CmdEnableHLJamp = true;
    QColor SelectorColorChar = QColor(240, 240, 240);
    QColor SelectorColorData = QColor(210, 210, 210);
    QColor SelectorColorFile = QColor(180, 180, 180);
    bool ExecClearWindow = true;
    bool ExecShowProgExec = true;
    bool ExecShowProgIDProg = true;
    bool ExecShowProgReset = true;
    QColor ExecTabColorExecute = QColor(0, 0, 255);
    QColor ExecTabColorPause = QColor(128, 128, 0);
    QColor ExecTabColorSuccess = QColor(0, 128, 0);
    QColor ExecTabColorFailed = QColor(255, 0, 0);
    QColor ExecTabColorStopped = QColor(200, 110, 0);
    QColor ExecBtnColorExecute = QColor(130, 150, 255);
    QColor ExecBtnColorPause = QColor(255, 255, 100);
    bool ExecLogShowTime = true;
    bool ExecLogShowTime_ms = true;
    QColor ExecLogColorBackground = QColor(255, 255, 255);
    QColor ExecLogColorTime = QColor(180, 180, 180);
    QColor ExecLogColorCmd = QColor(0, 0, 0);
    QColor ExecLogColorParam = QColor(100, 100, 100);
    QColor ExecLogColorText = QColor(100, 100, 100);
    QColor ExecLogColorWork = QColor(0, 0, 255);
    QColor ExecLogColorResult = QColor(0, 0, 128);
    QColor ExecLogColorSuccess = QColor(0, 100, 0);
    QColor ExecLogColorFailed = QColor(200, 0, 0);
    QColor ExecLogColorStopped = QColor(200, 110, 0);

    // Group Confirmation.
    bool ConfirmProjectsListReload = true;
    bool ConfirmProjectsListDelete = true;
    bool ConfirmProjectSave = true;
    bool ConfirmProjectDeleteCur = true;
    bool ConfirmProjectDeleteSubAll = true;
    bool ConfirmConfigDeleteCur = true;
    bool ConfirmCmdInsertProgDevice = true;
    bool ConfirmCmdInsertProg = true;
    bool ConfirmCmdInsertDevice = true;
    bool ConfirmCmdPaste = true;
    bool ConfirmCmdDeleteCur = true;
    bool ConfirmCmdDeleteSelected = true;
    bool ConfirmCmdDeleteError = true;
    bool ConfirmCmdDeleteDev = true;
    bool ConfirmCmdDeleteAll = true;
    bool ConfirmExecConfig = true;
    bool ConfirmExecReset = true;
    bool ConfirmQuit = true;

    // Group WindowMain.
    int WindowMainLeft = 100;
    int WindowMainTop = 100;
    int WindowMainWidth = 650;
    int WindowMainHeight = 550;
    TSplitterPos WindowMainPrjSplitter{100, 100};
    TSplitterPos WindowMainCfgSplitter{189, 192};
    int WindowMainCmdListColumnNameWidth = 130;
    int WindowMainCmdAutoColumnDeviceWidth = 150;

    // Group WindowSettings.
    int WindowSettingsLeft = 100;
    int WindowSettingsTop = 100;
    int WindowSettingsWidth = 670;
    int WindowSettingsHeight = 570;
    TSplitterPos WindowSettingsMainSplitter{100, 100};
    TSplitterPos WindowSettingsProgSplitter{100, 100};

    // Group WindowSettingsProgName.
    int WindowSettingsProgNameLeft = 100;
    int WindowSettingsProgNameTop = 100;
    int WindowSettingsProgNameWidth = 670;

    // Group WindowSettingsProgType.
    int WindowSettingsProgTypeLeft = 100;
    int WindowSettingsProgTypeTop = 100;
    int WindowSettingsProgTypeWidth = 670;

    // Group WindowSelectDevice.
    int WindowSelectDeviceLeft = 100;
    int WindowSelectDeviceTop = 100;
    int WindowSelectDeviceWidth = 200;
    int WindowSelectDeviceHeight = 400;

    // Group WindowSelectFamily.
    int WindowSelectFamilyLeft = 100;
    int WindowSelectFamilyTop = 100;
    int WindowSelectFamilyWidth = 200;
    int WindowSelectFamilyHeight = 400;

    // Group WindowRouteEdit.
    int WindowRouteEditLeft = 100;
    int WindowRouteEditTop = 100;
    int WindowRouteEditWidth = 200;

    // Group WindowSelectPrjList.
    int WindowSelectPrjListLeft = 100;
    int WindowSelectPrjListTop = 100;
    int WindowSelectPrjListWidth = 200;
    int WindowSelectPrjListHeight = 400;

    // Group WindowPrjListEdit.
    int WindowPrjListEditLeft = 100;
    int WindowPrjListEditTop = 100;
    int WindowPrjListEditWidth = 200;

    // Group WindowPrjEdit.
    int WindowPrjEditLeft = 100;
    int WindowPrjEditTop = 100;
    int WindowPrjEditWidth = 200;

    // Group WindowCfgEdit.
    int WindowCfgEditLeft = 100;
    int WindowCfgEditTop = 100;
    int WindowCfgEditWidth = 200;

    // Group WindowLanguage.
    int WindowLanguageLeft = 100;
    int WindowLanguageTop = 100;
    int WindowLanguageWidth = 200;
    int WindowLanguageHeight = 400;

    // Group WindowManual.
    int WindowManualLeft = 100;
    int WindowManualTop = 100;
    int WindowManualWidth = 760;
    int WindowManualHeight = 640;

    // Group WindowCmdSelector.
    int WindowCmdSelectorLeft = 100;
    int WindowCmdSelectorTop = 100;
    int WindowCmdSelectorWidth = 200;
    int WindowCmdSelectorHeight = 400;
    TSplitterPos WindowCmdSelectorSplitter{125, 125, 185};
    int WindowCmdSelectorButtonHeight = 23;
    int WindowCmdSelectorButtonSeparatorHeight = 10;

    // Group WindowCalcCRC.
    int WindowCalcCRCLeft = 100;
    int WindowCalcCRCTop = 100;
    int WindowCalcCRCWidth = 500;
    int WindowCalcCRCHeight = 300;
    int WindowCalcCRCLast = 0;

    /// The programmers and programmer models of the user. Replaced as a whole, under the lock of the
    /// project, because workers read them.
    TProgName progNames;
    TProgType progTypes;
};

/// All settings. Written on the main thread only.
TAppData& appData();
