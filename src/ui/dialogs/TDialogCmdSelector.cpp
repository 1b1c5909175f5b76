#include "ui/dialogs/TDialogCmdSelector.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/TDataPrj.h"
#include "devices/TDeviceList.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"
#include "ui/dialogs/TCmdGroup.h"
#include "ui/window_helpers.h"

#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace {

QString columnTitle(Text text)
{
    return QStringLiteral(" %1 ").arg(langText(text));
}

/// The column of a class that needs no chip.
TCmdGroup* fixedGroup(Text title, const QString& classWord, QWidget* parent)
{
    auto* group = new TCmdGroup(columnTitle(title), parent);
    const std::unique_ptr<IDevice> device(deviceList().create(classWord, QString()));
    group->setDevice(device.get());
    return group;
}

QRect heldInside(const QRect& screen, QRect place)
{
    place.setSize(place.size().boundedTo(screen.size()));
    place.moveLeft(qBound(screen.left(), place.left(), screen.right() + 1 - place.width()));
    place.moveTop(qBound(screen.top(), place.top(), screen.bottom() + 1 - place.height()));
    return place;
}

/// A place on the screen that leaves the button free: below it, cut as far as the least height, else at
/// another side. The place itself where there is no such side.
QRect clearOf(const QRect& button, const QRect& place, const QRect& screen, int leastHeight)
{
    if (!place.intersects(button))
        return place;
    QRect below = place;
    below.moveTop(button.bottom() + 1);
    below.setBottom(qMin(below.bottom(), screen.bottom()));
    if (below.height() >= leastHeight)
        return below;
    QRect left = place;
    left.moveRight(button.left() - 1);
    QRect right = place;
    right.moveLeft(button.right() + 1);
    QRect above = place;
    above.moveBottom(button.top() - 1);
    for (const QRect& other : {above, left, right}) {
        if (screen.contains(other))
            return other;
    }
    return place;
}

} // namespace

TDialogCmdSelector::TDialogCmdSelector(int id_cfg, int id_cmd, const QWidget* start)
    : m_start(start)
    , m_beside(start ? start->window() : QApplication::activeWindow())
    , m_device(new TCmdGroup(columnTitle(Text::SelectorDevice), this))
    , m_splitter(new QSplitter(Qt::Horizontal, this))
    , m_state(new QCheckBox(langText(Text::SettingCmdAddState), this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(langText(Text::ActionCmdSelector));
    m_splitter->addWidget(fixedGroup(Text::SelectorTools, dev_class::tools, this));
    m_splitter->addWidget(fixedGroup(Text::SelectorProg, dev_class::prog, this));
    m_splitter->addWidget(m_device);
    m_splitter->setChildrenCollapsible(false);
    for (TCmdGroup* group : findChildren<TCmdGroup*>())
        connect(group, &TCmdGroup::signalAddCmd, this, &TDialogCmdSelector::slotAddCmd);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(3, 3, 3, 0);
    layout->setSpacing(0);
    layout->addWidget(m_splitter, 1);
    QBoxLayout* frame = addDialogFrame(this, layout);
    frame->insertWidget(0, m_state);
    QPushButton* close = dialogButton(langText(Text::ButtonClose), this);
    frame->addWidget(close);
    connect(close, &QPushButton::clicked, this, &TDialogCmdSelector::slotClose);
    auto* escape = new QShortcut(Qt::Key_Escape, this);
    connect(escape, &QShortcut::activated, this, &TDialogCmdSelector::slotClose);
    m_state->setChecked(appData().CmdAddState);
    slotSelectCmd(id_cfg, id_cmd);
    m_splitter->setSizes(appData().WindowCmdSelectorSplitter);
    place();
}

TDialogCmdSelector::~TDialogCmdSelector()
{
    TAppData& settings = appData();
    settings.WindowCmdSelectorLeft = geometry().left();
    settings.WindowCmdSelectorTop = geometry().top();
    settings.WindowCmdSelectorWidth = width();
    settings.WindowCmdSelectorHeight = height();
    settings.WindowCmdSelectorSplitter = m_splitter->sizes();
}

void TDialogCmdSelector::setAdding(bool can)
{
    m_splitter->setEnabled(can);
}

bool TDialogCmdSelector::standsBeside() const
{
    return m_beside && appData().WindowOtherCenter;
}

void TDialogCmdSelector::place()
{
    const TAppData& settings = appData();
    layout()->activate();
    const QSize size = QSize(settings.WindowCmdSelectorWidth, settings.WindowCmdSelectorHeight)
                           .expandedTo(minimumSizeHint());
    if (standsBeside()) {
        settleBeside(size);
        return;
    }
    placeOnWindow(this, false, settings.WindowCmdSelectorLeft, settings.WindowCmdSelectorTop, size.width(),
                  size.height());
    settle({pos(), size}, *screenOf(geometry()));
}

/// The least size of the window has changed with what stands in it. Where the user has put it, it stays if
/// it can.
void TDialogCmdSelector::placeAnew()
{
    m_splitter->updateGeometry();
    layout()->activate();
    const QSize wanted = size().expandedTo(minimumSizeHint());
    if (standsBeside() && pos() == m_placedAt)
        settleBeside(wanted);
    else
        settle({pos(), wanted}, *screenOf(frameGeometry()));
}

/// In the middle of the main window it would hide the commands, so there it stands to the right.
void TDialogCmdSelector::settleBeside(const QSize& size)
{
    const QRect beside = m_beside->frameGeometry();
    const QRect screen = m_beside->screen()->availableGeometry();
    const qint64 left = qint64(beside.right()) + 1 + appData().WindowCmdSelector;
    const QPoint corner(static_cast<int>(std::clamp<qint64>(left, screen.left(), screen.right())),
                        beside.top());
    settle({corner, size}, *m_beside->screen());
}

/// Takes a place, told without the frame around it, as far as it is on the screen and off the start button.
void TDialogCmdSelector::settle(const QRect& wanted, const QScreen& on)
{
    // Its own frame is there once it is shown; the window's is alike.
    const QWidget* framed = isVisible() || !m_beside ? this : m_beside.data();
    const QSize frame = framed->frameGeometry().size() - framed->size();
    const QRect whole(wanted.topLeft(), wanted.size() + frame);
    const QRect screen = on.availableGeometry();
    const bool isShown = m_start && m_start->isVisible();
    const QRect start = isShown ? QRect(m_start->mapToGlobal(QPoint()), m_start->size()) : QRect();
    const QRect place =
        clearOf(start, heldInside(screen, whole), screen, minimumSizeHint().height() + frame.height());
    // A stored place is that of the inside: moved to where it is, the window would go on by its frame.
    if (!testAttribute(Qt::WA_Moved) || place.topLeft() != pos())
        move(place.topLeft());
    resize(place.size() - frame);
    m_placedAt = pos();
    m_isPlaced = true;
}

void TDialogCmdSelector::slotSelectCmd(int id_cfg, int id_cmd)
{
    Q_UNUSED(id_cfg)
    const IDevice* family = project().binding(id_cmd).family;
    // A set_prog has the tools in force, which stand in a column of their own.
    const bool isChip = family && family->name() != dev_class::tools && family->name() != dev_class::prog;
    if (m_device->setDevice(isChip ? family : nullptr) && m_isPlaced)
        placeAnew();
}

void TDialogCmdSelector::slotAddCmd(const QString& cmd_code)
{
    emit signalAddCmd(cmd_code, m_state->isChecked());
}

void TDialogCmdSelector::slotClose()
{
    close();
}
