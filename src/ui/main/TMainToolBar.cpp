#include "ui/main/TMainToolBar.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "core/model/TDataPrj.h"
#include "settings/TAppData.h"
#include "ui/TButtonAction.h"
#include "ui/main/TActionState.h"
#include "ui/main/TMainActions.h"
#include "ui/main/TMainPanels.h"
#include "ui/panels/TWgtPrj.h"

#include <QAction>
#include <QButtonGroup>
#include <QHBoxLayout>

struct TMainToolBar::ButtonRow
{
    TMainButton id;
    TMainAction action;
    const char* icon;
    bool isRight;   ///< in the group that is shown with a project only
    int gap;        ///< in front of it, in pixels
    int width[2];   ///< with icon set 0 and 1, in pixels
    QSize icons[2]; ///< the same
};

namespace {

constexpr int buttonHeight[] = {30, 45};
constexpr int barHeight[] = {37, 50};
constexpr int lastLeftGap = 32;

/// Index into what depends on the set of icons.
int iconSet()
{
    return appData().IconsSet == 1 ? 1 : 0;
}

QIcon icon(const char* name)
{
    return iconPath(iconSet(), QLatin1String(name));
}

} // namespace

TMainToolBar::TMainToolBar(const TMainActions& actions, const TMainPanels& panels)
    : m_actions(actions)
    , m_panels(panels)
{
    static const QSize small[] = {{16, 16}, {32, 32}};
    static const QSize wide[] = {{28, 16}, {46, 32}};
    // clang-format off
    const ButtonRow rows[] = {
        {mbSelectList, maPrjListSelect, "prj_list", false, 0, {30, 45}, {small[0], small[1]}},
        {mbOpen, maPrjListLoad, "open", false, 0, {30, 45}, {small[0], small[1]}},
        {mbSave, maPrjSave, "save", false, 0, {30, 45}, {small[0], small[1]}},
        {mbSettings, maSettings, "settings", false, 16, {30, 45}, {small[0], small[1]}},
        {mbCmdSelector, maCmdSelector, "cmd_select", true, 0, {30, 45}, {small[0], small[1]}},
        {mbHide, maCmdUncheckHide, "hide", true, 16, {30, 45}, {small[0], small[1]}},
        {mbPageDescription, maSetViewParamPrj, "page_desc", true, 16, {30, 45}, {small[0], small[1]}},
        {mbPageParam, maSetViewParamCmd, "page_param", true, 0, {30, 45}, {small[0], small[1]}},
        {mbPageExec, maSetViewParamExec, "page_exec", true, 0, {30, 45}, {small[0], small[1]}},
        {mbIdProg, maExecIDProg, "id_prog", true, 16, {45, 45}, {small[0], small[1]}},
        {mbReset, maExecReset, "reset", true, 0, {45, 45}, {small[0], small[1]}},
        {mbExecute, maExecCfg, "exec_start", true, 0, {60, 60}, {wide[0], wide[1]}},
    };
    // clang-format on
    static_assert(std::size(rows) == mbCount, "a row a button");

    setFrameStyle(QFrame::Box | QFrame::Sunken);
    setFixedHeight(barHeight[iconSet()]);
    m_right = new QWidget;
    auto* left = new QHBoxLayout;
    auto* right = new QHBoxLayout(m_right);
    for (QHBoxLayout* group : {left, right}) {
        group->setContentsMargins(0, 0, 0, 0);
        group->setSpacing(0);
    }
    for (const ButtonRow& row : rows) {
        QHBoxLayout* group = row.isRight ? right : left;
        group->addSpacing(row.gap);
        group->addWidget(createButton(row), 0, Qt::AlignTop);
    }
    left->addSpacing(lastLeftGap);

    auto* pages = new QButtonGroup(this);
    for (TMainButton id : {mbPageDescription, mbPageParam, mbPageExec})
        pages->addButton(button(id));

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(5, 0, 5, 0);
    layout->setSpacing(0);
    layout->addLayout(left);
    layout->addStretch(1);
    layout->addWidget(m_right);
}

TMainToolBar::~TMainToolBar() = default;

TButtonAction* TMainToolBar::createButton(const ButtonRow& row)
{
    auto* button = new TButtonAction(this);
    m_buttons.at(row.id) = button;
    button->setFixedSize(row.width[iconSet()], buttonHeight[iconSet()]);
    button->setIconSize(row.icons[iconSet()]);
    button->setIcon(icon(row.icon));
    button->setCheckable(m_actions.at(row.action)->isCheckable());
    button->setAction(m_actions.at(row.action));
    return button;
}

void TMainToolBar::refresh(const TActionState& state)
{
    const bool isOpen = state.holds(TMainActionRow::PrjOpen);
    m_right->setVisible(isOpen);
    if (isOpen)
        refreshExecute();
}

void TMainToolBar::refreshExecute()
{
    TButtonAction* execute = button(mbExecute);
    const int status = project().cfgStatus(m_panels.prj()->currentCfg());
    const bool runs = status == csRun;
    const bool pauses = status == csPause;
    execute->setIcon(icon(runs ? "exec_stop" : pauses ? "exec_pause" : "exec_start"));
    m_actions.at(maExecCfg)->setToolTip(langText(runs     ? Text::TipStop
                                                 : pauses ? Text::TipContinue
                                                          : Text::TipExecute));
    QPalette palette;
    if (runs)
        palette.setColor(QPalette::Button, appData().ExecBtnColorExecute);
    else if (pauses)
        palette.setColor(QPalette::Button, appData().ExecBtnColorPause);
    execute->setPalette(palette);
}

void TMainToolBar::setChanged(bool changed)
{
    // Told for every command of a load; an icon is read from its files each time.
    if (m_showsChange == changed)
        return;
    m_showsChange = changed;
    button(mbSave)->setIcon(icon(changed ? "save_change" : "save"));
}
