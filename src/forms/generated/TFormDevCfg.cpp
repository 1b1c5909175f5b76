#include "forms/generated/TFormDevCfg.h"

#include "base/helpers.h"
#include "base/keys.h"
#include "devices/shared/form_items.h"
#include "forms/edits/TWgtEditStrHex.h"
#include "forms/edits/colors.h"
#include "forms/edits/form_bits.h"
#include "forms/edits/line_height.h"
#include "forms/edits/star_button.h"
#include "forms/generated/TFormDevCfgButton.h"
#include "forms/generated/TFormDevCfgCheckBox.h"
#include "forms/generated/TFormDevCfgComboBoxLabel.h"
#include "forms/generated/TFormDevCfgEditLabel.h"
#include "misc/TNormCmdParam.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTabWidget>

namespace {

QBoxLayout* boxOf(QWidget* container, QBoxLayout::Direction direction, const QMargins& margins, int spacing)
{
    auto* layout = new QBoxLayout(direction, container);
    layout->setContentsMargins(margins);
    layout->setSpacing(spacing);
    if (direction == QBoxLayout::TopToBottom)
        layout->addStretch(1); // stays the last, so that all else stands at the top
    return layout;
}

/// Appends to the layout of a container, before the stretch at its end.
void append(QWidget* container, QWidget* widget)
{
    auto* layout = static_cast<QBoxLayout*>(container->layout());
    const int count = layout->count();
    const bool hasStretch = count > 0 && layout->itemAt(count - 1)->spacerItem();
    layout->insertWidget(hasStretch ? count - 1 : count, widget);
}

QFrame* rowOf(QWidget* parent)
{
    auto* frame = new QFrame(parent);
    frame->setFrameShape(QFrame::NoFrame);
    boxOf(frame, QBoxLayout::LeftToRight, QMargins(), 2);
    return frame;
}

QFrame* panelOf(QWidget* parent)
{
    auto* frame = new QFrame(parent);
    frame->setFrameStyle(QFrame::Box | QFrame::Sunken);
    boxOf(frame, QBoxLayout::TopToBottom, QMargins(3, 3, 3, 3), 0);
    return frame;
}

QGroupBox* groupOf(const QString& title, QWidget* parent)
{
    auto* group = new QGroupBox(QLatin1Char(' ') + literalLabel(title) + QLatin1Char(' '), parent);
    boxOf(group, QBoxLayout::TopToBottom, QMargins(5, 2, 5, 2), 0);
    return group;
}

QTabWidget* tabsOf(QWidget* parent)
{
    auto* tabs = new QTabWidget(parent);
    tabs->setTabBarAutoHide(true);
    tabs->setMovable(false);
    return tabs;
}

} // namespace

TFormDevCfg::TFormDevCfg(int id_cmd, const QString& value, const QString& data_default,
                         const QStringList& items, bool show_edit, QWidget* parent)
    : TFormCommand({{key::id_cmd, id_cmd}, {key::data, value}}, {key::data})
    , m_default(hexToBytes(data_default))
    , m_layout(new QVBoxLayout(this))
{
    setParent(parent);
    m_value = resizedBytes(hexToBytes(value), m_default.size());
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(2);
    if (show_edit) {
        addEditRow(data_default);
        markLength(hexToBytes(value));
    }
    run(items);
    // What is there of a short or broken form stays at the top.
    if (m_layout->count() == (show_edit ? 1 : 0))
        m_layout->addStretch(1);
}

TFormDevCfg::~TFormDevCfg()
{
    TWgtEditBase::silence(*this);
    while (!m_owned.isEmpty())
        delete m_owned.takeLast();
}

QString TFormDevCfg::text() const
{
    return bytesToHex(m_value);
}

void TFormDevCfg::addEditRow(const QString& defaultText)
{
    m_edit = new TWgtEditStrHex(text(), this);
    m_edit->setDefaultValue(bytesToHex(m_default));
    m_defaultButton = starButton(this);
    m_defaultButton->setToolTip(QStringLiteral("Default: %1").arg(defaultText));
    m_rowLayout = new QHBoxLayout;
    m_rowLayout->setSpacing(3);
    m_rowLayout->addWidget(m_edit);
    m_rowLayout->addWidget(m_defaultButton);
    m_layout->addLayout(m_rowLayout);
    connect(m_edit, &TWgtEditStrHex::valueChanged, this, &TFormDevCfg::slotEditChanged);
    connect(m_edit, &TWgtEditStrHex::defaultTaken, this, &TFormDevCfg::slotSetDefault);
    connect(m_defaultButton, &QPushButton::clicked, this, &TFormDevCfg::slotSetDefault);
}

void TFormDevCfg::run(const QStringList& lines)
{
    const TFormItems form = parseFormItems(lines);
    for (const TFormItem& item : form.items)
        add(item);
    m_isComplete = form.isGood;
    if (form.isGood)
        showItems();
    else
        logError(QStringLiteral("error"), QStringLiteral("DevCfg: %1").arg(form.badText));
}

void TFormDevCfg::add(const TFormItem& item)
{
    switch (item.kind) {
    case TFormItem::Close:
        m_containers.removeLast();
        return;
    case TFormItem::CloseTabs:
        m_tabs.removeLast();
        return;
    case TFormItem::Label:
        return addLabel(item);
    case TFormItem::Display:
        return addValueItem(new TFormDevCfgEditLabel(item, this));
    case TFormItem::CheckBox:
        return addValueItem(new TFormDevCfgCheckBox(item, this));
    case TFormItem::Choice:
        return static_cast<TFormDevCfgComboBoxLabel*>(m_containers.last())->addChoice(item);
    case TFormItem::Preset: {
        auto* button = new TFormDevCfgButton(item, this);
        connect(button, &IFormDevCfgBase::signalChanged, this, &TFormDevCfg::slotChanged);
        return place(button);
    }
    default:
        return addContainer(item);
    }
}

void TFormDevCfg::addContainer(const TFormItem& item)
{
    switch (item.kind) {
    case TFormItem::Tabs:
        m_tabs.append(tabsOf(this));
        m_owned.append(m_tabs.last());
        return m_layout->addWidget(m_tabs.last());
    case TFormItem::Row:
        return open(rowOf(this));
    case TFormItem::Panel:
        return open(panelOf(this));
    case TFormItem::Group:
        return open(groupOf(item.text, this));
    case TFormItem::ComboBox: {
        auto* box = new TFormDevCfgComboBoxLabel(item, this);
        addValueItem(box);
        return m_containers.append(box);
    }
    default:
        return addScroll(item);
    }
}

void TFormDevCfg::addScroll(const TFormItem& item)
{
    const bool isTab = item.kind == TFormItem::Tab;
    const int margin = isTab ? 5 : 0;
    auto* area = new QScrollArea(this);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    // Its controls take the focus; the area itself would be one stop more on the way of the Tab key.
    area->setFocusPolicy(Qt::NoFocus);
    auto* frame = new QFrame(area);
    frame->setFrameShape(QFrame::NoFrame);
    boxOf(frame, QBoxLayout::TopToBottom, QMargins(margin, margin, margin, margin), 0);
    area->setWidget(frame);
    m_owned.append(area); // the frame goes with it
    if (isTab)
        m_tabs.last()->addTab(area, literalLabel(item.text));
    else if (m_containers.isEmpty())
        m_layout->addWidget(area);
    else
        append(m_containers.last(), area);
    m_containers.append(frame);
}

void TFormDevCfg::addValueItem(IFormDevCfgBase* widget)
{
    m_valueItems.append(widget);
    connect(widget, &IFormDevCfgBase::signalChanged, this, &TFormDevCfg::slotChanged);
    place(widget);
}

void TFormDevCfg::addLabel(const TFormItem& item)
{
    auto* label = new QLabel(item.text, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumHeight(fieldHeight(label));
    place(label);
}

void TFormDevCfg::open(QWidget* container)
{
    place(container);
    m_containers.append(container);
}

void TFormDevCfg::place(QWidget* widget)
{
    m_owned.append(widget);
    append(m_containers.last(), widget);
}

void TFormDevCfg::showItems()
{
    for (IFormDevCfgBase* item : qAsConst(m_valueItems)) {
        const QSignalBlocker blocker(item);
        item->setData(m_value);
    }
}

void TFormDevCfg::showEdit()
{
    if (!m_edit)
        return;
    const QSignalBlocker blocker(m_edit);
    m_edit->setValue(text());
    markLength(m_value);
}

/// A register of another length than the chip's cannot be written.
void TFormDevCfg::markLength(const QByteArray& stored)
{
    m_edit->setFault(stored.size() != m_default.size());
}

void TFormDevCfg::tell()
{
    setParam(key::data, text());
    report();
}

void TFormDevCfg::showParams()
{
    const QByteArray value = hexToBytes(textParam(key::data));
    const bool isEditShown = m_edit && !m_edit->isEditing();
    if (value != m_value) {
        m_value = resizedBytes(value, m_default.size());
        if (isEditShown)
            showEdit();
        if (m_isComplete)
            showItems();
    }
    // Of another length than before it may look the same.
    if (isEditShown)
        markLength(value);
}

void TFormDevCfg::slotEditChanged(const QString& hexText)
{
    m_value = hexToBytes(hexText);
    showEdit();
    showItems();
    tell();
}

void TFormDevCfg::slotChanged(const QByteArray& mask, const QByteArray& bits)
{
    m_value = mergedBits(m_value, mask, bits);
    showEdit();
    showItems();
    tell();
}

void TFormDevCfg::slotSetDefault()
{
    m_value = m_default;
    if (m_edit)
        m_edit->setValue(text());
    showItems();
    // What is stored may be longer than what is shown of it.
    if (hexToBytes(textParam(key::data)) == m_default)
        return;
    showEdit();
    tell();
}
