#include "ui/main/TMainActions.h"

#include "base/TCmdCode.h"
#include "base/TLang.h"
#include "base/TSettings.h"
#include "base/helpers.h"
#include "base/keys.h"
#include "exec/TLineGate.h"
#include "forms/edits/colors.h"
#include "settings/TAppData.h"
#include "ui/main/TActionState.h"
#include "ui/main/TCmdClipboard.h"
#include "ui/main/TMainPanels.h"
#include "ui/main/TMainWindow.h"
#include "ui/panels/TWgtPrj.h"

#include <QAction>
#include <QActionGroup>

namespace {

/// By TWgtConfig::Page.
constexpr TMainAction pageActions[] = {maSetViewParamPrj, maSetViewParamCmd, maSetViewParamExec};

/// A text that is no language text: names of actions that every user must find, in any language.
QString ownText(TMainAction id)
{
    return id == maSetLanguage ? QStringLiteral("Language") : QStringLiteral("About Qt...");
}

QString insertText(TMainAction id, Text text)
{
    const QString prog = cmdCode().name(cmd::set_prog);
    const QString device = cmdCode().name(cmd::set_device);
    if (id == maCmdNewSetProgDevice)
        return langText(text).arg(prog, device);
    return langText(text).arg(id == maCmdNewSetProg ? prog : device);
}

QString actionText(TMainAction id, Text text)
{
    switch (id) {
    case maCmdNewSetProgDevice:
    case maCmdNewSetProg:
    case maCmdNewSetDevice:
        return insertText(id, text);
    default:
        return text == Text::None ? ownText(id) : langText(text);
    }
}

QList<QKeySequence> hotKeys(const TSettings& file, TMainAction id, const char* name)
{
    QStringList names{QLatin1String(name)};
    if (id == maExecCfg)
        names.append(QStringLiteral("ExecCfg2"));
    QList<QKeySequence> keys;
    for (const QString& key : names) {
        const QKeySequence sequence = file.readKeySequence(QStringLiteral("HotKeyMain/") + key);
        if (!sequence.isEmpty())
            keys.append(sequence);
    }
    return keys;
}

} // namespace

TMainActions::TMainActions(TMainWindow& window, TMainPanels& panels, TLineGate& gate)
    : m_window(window)
    , m_panels(panels)
    , m_gate(gate)
{
    for (int id = 0; id < maCount; ++id)
        m_actions.at(id) = create(static_cast<TMainAction>(id));

    auto* pages = new QActionGroup(this);
    for (TMainAction id : pageActions)
        pages->addAction(at(id));
    at(maSetViewParamPrj)->setChecked(true);
    takeSettings();
    connect(&panels, &TMainPanels::signalPage, this,
            [this](int page) { at(pageActions[page])->setChecked(true); });
}

TMainActions::~TMainActions() = default;

QAction* TMainActions::create(TMainAction id)
{
    const TMainActionRow& row = TMainActionRow::of(id);
    auto* action = new QAction(actionText(row.id, row.text), &m_window);
    action->setCheckable(row.flags & TMainActionRow::Check);
    action->setAutoRepeat(!(row.flags & TMainActionRow::NoRepeat));
    if (row.hotKey)
        action->setShortcuts(hotKeys(TSettings(fileInAppDir(QStringLiteral("hk"))), row.id, row.hotKey));
    connect(action, &QAction::triggered, this,
            [this, id] { m_gate.betweenLines(this, [this, id] { trigger(id); }); });
    // Some actions stand in no menu, and their hot keys work all the same.
    m_window.addAction(action);
    return action;
}

void TMainActions::trigger(TMainAction id)
{
    const TMainActionRow& row = TMainActionRow::of(id);
    // Some operations show boxes: none of them may begin again, or another one, underneath.
    if (m_panels.isActing() || !at(id)->isEnabled() ||
        ((row.flags & TMainActionRow::Focus) && !m_panels.prj()->tableHasFocus()))
        return;
    // Neither a tool button nor a hot key takes the focus from a field whose value is not stored yet.
    m_panels.act([this, &row] { (m_window.*row.slot)(); });
}

void TMainActions::takeSettings()
{
    at(maPrjListDragDrop)->setChecked(appData().PrjListDragDrop);
    at(maCmdUncheckHide)->setChecked(appData().HideUncheckCmd);
}

void TMainActions::refresh(const TActionState& state, const TCmdClipboard& clipboard)
{
    for (int id = 0; id < maCount; ++id)
        m_actions.at(id)->setEnabled(state.isOn(static_cast<TMainAction>(id)));
    refreshPasteTexts(clipboard);
    if (state.holds(TMainActionRow::PrjOpen))
        refreshDeleteTexts();
}

void TMainActions::refreshDeleteTexts()
{
    const bool isOne = m_panels.isOneCfg();
    at(maCmdDeleteError)
        ->setText(langText(isOne ? Text::ActionCmdDeleteError : Text::ActionCmdDeleteErrorOfCfg));
    at(maCmdDeleteAll)->setText(langText(isOne ? Text::ActionCmdDeleteAll : Text::ActionCmdDeleteAllOfCfg));
}

void TMainActions::refreshPasteTexts(const TCmdClipboard& clipboard)
{
    setPasteText(maCmdPaste, Text::ActionCmdPaste, clipboard.cmdTitle());
    setPasteText(maCfgPaste, Text::ActionCfgPaste, clipboard.cfgName());
    setPasteText(maPrjPasteNew, Text::ActionPrjPasteNew, clipboard.prjName());
    setPasteText(maPrjPasteNewSub, Text::ActionPrjPasteNewSub, clipboard.prjName());
}

void TMainActions::setPasteText(TMainAction id, Text text, const QString& name)
{
    if (name.isEmpty())
        return;
    const QString own = langText(text).section(QLatin1Char('['), 0, 0).trimmed();
    at(id)->setText(QStringLiteral("%1 [%2]").arg(own, literalLabel(name)));
}
