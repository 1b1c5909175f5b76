#include "ui/setting_colors.h"

#include "forms/edits/colors.h"
#include "settings/TAppData.h"

#include <algorithm>
#include <iterator>

namespace {

struct DarkColor
{
    QColor TAppData::*setting;
    QColor onDark; ///< in the place of the default
};

const DarkColor darkColors[] = {
    {&TAppData::ExecTabColorExecute, QColor(110, 165, 255)},
    {&TAppData::ExecTabColorPause, QColor(210, 210, 90)},
    {&TAppData::ExecTabColorSuccess, goodText(Qt::black)},
    {&TAppData::ExecTabColorFailed, faultText(Qt::black)},
    {&TAppData::ExecTabColorStopped, QColor(255, 175, 60)},
    {&TAppData::ExecLogColorTime, QColor(130, 130, 130)},
    {&TAppData::ExecLogColorCmd, QColor(240, 240, 240)},
    {&TAppData::ExecLogColorParam, QColor(175, 175, 175)},
    {&TAppData::ExecLogColorText, QColor(175, 175, 175)},
    {&TAppData::ExecLogColorWork, QColor(110, 165, 255)},
    {&TAppData::ExecLogColorResult, QColor(165, 210, 255)},
    {&TAppData::ExecLogColorSuccess, goodText(Qt::black)},
    {&TAppData::ExecLogColorFailed, faultText(Qt::black)},
    {&TAppData::ExecLogColorStopped, QColor(255, 175, 60)},
};

bool isDefault(QColor TAppData::*setting)
{
    static const TAppData defaults;
    return appData().*setting == defaults.*setting;
}

} // namespace

QColor shownColor(QColor TAppData::*setting, const QColor& back)
{
    const auto* row = std::find_if(std::begin(darkColors), std::end(darkColors),
                                   [setting](const DarkColor& color) { return color.setting == setting; });
    const bool givesWay = row != std::end(darkColors) && isDark(back) && isDefault(setting);
    return givesWay ? row->onDark : appData().*setting;
}

QColor logBackground(const QColor& base)
{
    return isDark(base) && isDefault(&TAppData::ExecLogColorBackground) ? base
                                                                        : appData().ExecLogColorBackground;
}
