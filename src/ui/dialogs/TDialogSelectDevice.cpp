#include "ui/dialogs/TDialogSelectDevice.h"

#include "base/TLang.h"
#include "core/model/shared_settings.h"
#include "devices/TDeviceList.h"
#include "devices/shared/description.h"
#include "devices/shared/deviceWarnings.h"
#include "forms/edits/colors.h"
#include "forms/edits/line_height.h"
#include "link/lists/AutoList.h"
#include "link/lists/line_rules.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"
#include "ui/window_helpers.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMultiMap>
#include <QPushButton>
#include <QRegularExpression>

namespace {

/// A text to be found anywhere, in which a set such as "[a-f58]" stands for one of its signs, too.
QRegularExpression filterPattern(const QString& text)
{
    QString pattern = wildcardPattern(text);
    static const QRegularExpression set(QStringLiteral(R"(\\\[((?:\w|\\-)+)\\\])"));
    pattern.replace(set, QStringLiteral("[\\1]"));
    return QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption);
}

/// Numbers padded to one width, so that "24C8" comes before "24C16" in any locale.
QString sortKey(const QString& name)
{
    QString padded;
    QString digits;
    for (const QChar sign : name.toLower() + QLatin1Char(' ')) {
        if (sign.isDigit()) {
            digits += sign;
            continue;
        }
        if (!digits.isEmpty())
            padded += digits.rightJustified(10, QLatin1Char('0'));
        digits.clear();
        padded += sign;
    }
    return padded;
}

QStringList sortedNaturally(const QStringList& names)
{
    QMultiMap<QString, QString> nameOfKey;
    for (const QString& name : names)
        nameOfKey.insert(sortKey(name), name);
    return nameOfKey.values();
}

bool isListKey(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

QString choose(TDialogSelectDevice& dialog)
{
    return dialog.exec() == QDialog::Accepted ? dialog.selected() : QString();
}

} // namespace

TDialogSelectDevice::TDialogSelectDevice(const QString& title, const TWindowKeys& keys,
                                         const QStringList& names, const QString& current, QWidget* parent)
    : TDialogBase(keys, parent)
    , m_filter(new QLineEdit(this))
    , m_list(new QListWidget(this))
    , m_warning(warningLabel(this))
{
    setWindowTitle(title);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(3, 3, 3, 0);
    layout->setSpacing(3);
    buildFilter(layout);
    layout->addWidget(m_list);
    layout->addWidget(m_warning);
    m_accept = addDialogButtons(this, layout, Text::ButtonOk, Text::ButtonCancel);
    m_list->setUniformItemSizes(true);
    m_list->addItems(names);
    m_list->setCurrentRow(names.indexOf(current));
    slotFilterString(QString());
    connect(m_list, &QListWidget::itemSelectionChanged, this, &TDialogSelectDevice::updateAccept);
    connect(m_list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    updateAccept();
}

void TDialogSelectDevice::buildFilter(QBoxLayout* layout)
{
    m_clear = new QPushButton(QStringLiteral("*"), this);
    m_clear->setFixedSize(fieldHeight(m_filter), fieldHeight(m_filter));
    m_clear->setAutoDefault(false);
    m_clear->setFocusPolicy(Qt::NoFocus);
    m_clear->setToolTip(langText(Text::TipDeviceFilterClear));
    m_filter->setFixedHeight(fieldHeight(m_filter));
    m_filter->setToolTip(langText(Text::TipDeviceFilter));
    m_filter->installEventFilter(this);
    auto* row = new QHBoxLayout;
    row->setSpacing(3);
    row->addWidget(m_filter);
    row->addWidget(m_clear);
    layout->addLayout(row);
    connect(m_filter, &QLineEdit::textChanged, this, &TDialogSelectDevice::slotFilterString);
    connect(m_clear, &QPushButton::clicked, this, &TDialogSelectDevice::slotClearFilter);
}

QString TDialogSelectDevice::selectChip(const QString& current, QWidget* parent)
{
    const QHash<QString, QString> files = TDeviceList::deviceFiles();
    const QStringList names = sortedNaturally(files.keys());
    TAppData& data = appData();
    TDialogSelectDevice dialog(langText(Text::TitleSelectDevice),
                               {&data.WindowSelectDeviceLeft, &data.WindowSelectDeviceTop,
                                &data.WindowSelectDeviceWidth, &data.WindowSelectDeviceHeight},
                               names, current, parent);
    dialog.showWarnings(files);
    return choose(dialog);
}

QString TDialogSelectDevice::selectFamily(const QString& current, QWidget* parent)
{
    TAppData& data = appData();
    TDialogSelectDevice dialog(langText(Text::SelectFamily),
                               {&data.WindowSelectFamilyLeft, &data.WindowSelectFamilyTop,
                                &data.WindowSelectFamilyWidth, &data.WindowSelectFamilyHeight},
                               autoNames(devicesFolder()), current, parent);
    return choose(dialog);
}

void TDialogSelectDevice::showWarnings(const QHash<QString, QString>& files)
{
    const auto show = [this, files] {
        const QString file = files.value(selected());
        const TData chip =
            file.isEmpty() ? TData() : readDescription(deviceFolderFile(devicesFolder(), file));
        showWarning(m_warning, deviceWarnings(chip));
        fitWarning();
    };
    m_warning->installEventFilter(this);
    connect(m_list, &QListWidget::itemSelectionChanged, this, show);
    show();
}

/// A layout gives wrapped lines the height that they need only where there is room.
void TDialogSelectDevice::fitWarning()
{
    if (isVisible() && !m_warning->isHidden())
        m_warning->setMinimumHeight(m_warning->heightForWidth(m_list->width()));
}

QString TDialogSelectDevice::selected() const
{
    const QList<QListWidgetItem*> items = m_list->selectedItems();
    return items.isEmpty() || items.first()->isHidden() ? QString() : items.first()->text();
}

bool TDialogSelectDevice::eventFilter(QObject* object, QEvent* event)
{
    if (object == m_warning && event->type() == QEvent::Resize)
        fitWarning();
    if (event->type() != QEvent::KeyPress || !isListKey(static_cast<QKeyEvent*>(event)->key()))
        return TDialogBase::eventFilter(object, event);
    // From a name that the filter hides the first that is shown comes next.
    if (selected().isEmpty())
        m_list->setCurrentRow(-1);
    QCoreApplication::sendEvent(m_list, event);
    return true;
}

void TDialogSelectDevice::slotFilterString(const QString& text)
{
    const QString wanted = text.trimmed();
    const QRegularExpression pattern = filterPattern(wanted);
    QListWidgetItem* last = nullptr;
    QListWidgetItem* exact = nullptr;
    int shown = 0;
    m_list->setUpdatesEnabled(false);
    for (int row = 0; row < m_list->count(); ++row) {
        QListWidgetItem* item = m_list->item(row);
        const bool isMatch = pattern.match(item->text()).hasMatch();
        if (item->isHidden() == isMatch)
            item->setHidden(!isMatch);
        if (isMatch) {
            last = item;
            ++shown;
        }
        if (item->text().compare(wanted, Qt::CaseInsensitive) == 0 && (!exact || item->text() == wanted))
            exact = item;
    }
    m_list->setUpdatesEnabled(true);
    selectOnly(exact || shown != 1 ? exact : last);
    m_clear->setEnabled(!text.isEmpty());
    updateAccept();
}

/// What is named in full, or is the only one left, is what was meant; of several others none is chosen by
/// itself.
void TDialogSelectDevice::selectOnly(QListWidgetItem* only)
{
    if (only)
        m_list->setCurrentItem(only);
    if (!selected().isEmpty())
        m_list->scrollToItem(m_list->currentItem());
}

void TDialogSelectDevice::slotClearFilter()
{
    m_filter->clear();
    m_filter->setFocus();
}

void TDialogSelectDevice::updateAccept()
{
    m_accept->setEnabled(!selected().isEmpty());
}
