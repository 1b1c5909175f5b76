#include "ui/TDialogCmdSelector.h"

#include "core/IDevice.h"
#include "core/TAppData.h"
#include "core/TDataCmd.h"
#include "core/TDataPrj.h"
#include "core/globals.h"
#include "core/keys.h"
#include "devices/TDeviceList.h"
#include "ui/TCmdGroup.h"
#include "ui/dialog_parts.h"
#include "ui/window_helpers.h"

#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

#include <memory>

namespace {

/// The column of a class that needs no chip.
TCmdGroup* fixedGroup(const char* title, const QString& classWord, QWidget* parent)
{
    auto* group = new TCmdGroup(QLatin1String(title), parent);
    const std::unique_ptr<IDevice> device(deviceList().create(classWord, QString()));
    group->setDevice(device.get());
    return group;
}

} // namespace

TDialogCmdSelector::TDialogCmdSelector(int id_cfg, int id_cmd)
    : m_device(new TCmdGroup(QStringLiteral(" Device "), this))
    , m_splitter(new QSplitter(Qt::Horizontal, this))
    , m_state(new QCheckBox(langText(244), this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(langText(32));
    m_splitter->addWidget(fixedGroup(" Tools ", dev_class::tools, this));
    m_splitter->addWidget(fixedGroup(" Prog ", dev_class::prog, this));
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
    QPushButton* close = dialogButton(langText(82), this);
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

/// In the middle of the main window it would hide the commands, so there it stands to the right.
void TDialogCmdSelector::place()
{
    const TAppData& settings = appData();
    layout()->activate();
    const QSize size = QSize(settings.WindowCmdSelectorWidth, settings.WindowCmdSelectorHeight)
                           .expandedTo(minimumSizeHint());
    const QWidget* window = QApplication::activeWindow();
    if (!settings.WindowOtherCenter || !window) {
        placeOnWindow(this, false, settings.WindowCmdSelectorLeft, settings.WindowCmdSelectorTop,
                      size.width(), size.height());
        return;
    }
    const QRect beside = window->frameGeometry();
    const QRect screen = window->screen()->availableGeometry();
    const qint64 left = qint64(beside.right()) + 1 + settings.WindowCmdSelector;
    // Its own frame is there once it is shown; the window's is alike.
    const QSize whole = size + window->frameGeometry().size() - window->size();
    const qint64 last = screen.right() + 1 - whole.width();
    const int lowest = screen.bottom() + 1 - whole.height();
    move(static_cast<int>(qBound<qint64>(screen.left(), left, qMax<qint64>(screen.left(), last))),
         qBound(screen.top(), beside.top(), qMax(screen.top(), lowest)));
    resize(size);
}

void TDialogCmdSelector::slotSelectCmd(int id_cfg, int id_cmd)
{
    Q_UNUSED(id_cfg)
    const TDataCmd* command = project().cmdById(id_cmd);
    m_device->setDevice(command ? command->family() : nullptr);
}

void TDialogCmdSelector::slotAddCmd(const QString& cmd_code)
{
    emit signalAddCmd(cmd_code, m_state->isChecked());
}

void TDialogCmdSelector::slotClose()
{
    close();
}
