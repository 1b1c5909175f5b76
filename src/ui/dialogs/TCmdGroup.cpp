#include "ui/dialogs/TCmdGroup.h"

#include "base/keys.h"
#include "core/model/IDevice.h"
#include "forms/edits/colors.h"
#include "forms/edits/line_height.h"
#include "settings/TAppData.h"

#include <QGroupBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

struct SourceColor
{
    QLatin1String word; ///< part of the command's key
    QColor TAppData::*color;
};

constexpr SourceColor sourceColors[] = {
    {QLatin1String("char", 4), &TAppData::SelectorColorChar},
    {QLatin1String("data", 4), &TAppData::SelectorColorData},
    {QLatin1String("file", 4), &TAppData::SelectorColorFile},
};

void paint(QPushButton* button, const QString& key)
{
    for (const SourceColor& row : sourceColors) {
        if (!key.contains(row.word))
            continue;
        const QColor color = appData().*row.color;
        QPalette palette = button->palette();
        palette.setColor(QPalette::Button, color);
        // Readable also where the style's own buttons are dark.
        palette.setColor(QPalette::ButtonText, color.lightness() > 127 ? Qt::black : Qt::white);
        button->setPalette(palette);
    }
}

} // namespace

TCmdGroup::TCmdGroup(const QString& title, QWidget* parent)
    : QWidget(parent)
    , m_scroll(new QScrollArea(this))
{
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(2, 2, 2, 2);
    auto* box = new QGroupBox(title, this);
    outer->addWidget(box);
    auto* inner = new QVBoxLayout(box);
    inner->setContentsMargins(2, 2, 2, 2);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    inner->addWidget(m_scroll);
    build({}, {});
}

bool TCmdGroup::setDevice(const IDevice* device)
{
    QStringList keys;
    QStringList titles;
    if (device) {
        keys = device->commandKeys();
        for (const QString& key : qAsConst(keys))
            titles.append(key == cmd::separator ? QString() : device->commandTitle({{key::cmd, key}}));
    }
    if (keys == m_keys && titles == m_titles)
        return false;
    build(keys, titles);
    return true;
}

void TCmdGroup::build(const QStringList& keys, const QStringList& titles)
{
    m_keys = keys;
    m_titles = titles;
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(1);
    for (int i = 0; i < keys.size(); ++i) {
        if (keys.at(i) == cmd::separator) {
            column->addSpacing(appData().WindowCmdSelectorButtonSeparatorHeight);
            continue;
        }
        auto* button = new QPushButton(literalLabel(titles.at(i)), content);
        button->setFixedHeight(lineHeight(button, appData().WindowCmdSelectorButtonHeight, 6));
        button->setObjectName(keys.at(i));
        paint(button, keys.at(i));
        connect(button, &QPushButton::clicked, this, &TCmdGroup::slotAddCmd);
        column->addWidget(button);
    }
    column->addStretch();
    // A click may have led here: the button that was clicked must not die below it.
    if (QWidget* old = m_scroll->takeWidget())
        old->deleteLater();
    m_scroll->setWidget(content);
    // Three of them stand side by side, with their frames.
    constexpr int frames = 30;
    m_scroll->setMinimumWidth(
        qMin(content->sizeHint().width() + m_scroll->verticalScrollBar()->sizeHint().width(),
             screen()->availableSize().width() / 3 - frames));
    // Whoever places the window before it is shown asks how wide this has become.
    m_scroll->parentWidget()->layout()->activate();
    layout()->activate();
}

void TCmdGroup::slotAddCmd()
{
    emit signalAddCmd(sender()->objectName());
}
