#include "forms/edits/TWgtDeviceView.h"

#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/TDataCmd.h"
#include "devices/shared/deviceWarnings.h"
#include "forms/edits/TTextKeys.h"
#include "forms/edits/colors.h"
#include "forms/edits/mono_font.h"
#include "link/lists/TProg.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace {

constexpr int paneHeight = 70;
constexpr int positionWidth = 3;

QString pinLines(const IDevice& device, const TProg* prog, int rule)
{
    QStringList lines;
    if (prog) {
        const QStringList pins = prog->pinList(device.section(), false);
        for (int i = 0; i < pins.size(); ++i)
            lines << QStringLiteral("%1 >- %2")
                         .arg(QString::number(i + 1).rightJustified(positionWidth), pins.at(i));
    }
    const QStringList comment = device.deviceValue(key::comment).toStringList();
    if (!comment.isEmpty())
        lines << QString(rule, QLatin1Char('-')) << comment;
    return lines.join(QLatin1Char('\n'));
}

/// What Tab goes through in a form, in this order.
QList<QWidget*> focusChain(QWidget* form)
{
    QList<QWidget*> chain;
    for (QWidget* w = form->nextInFocusChain(); w != form; w = w->nextInFocusChain()) {
        if (form->isAncestorOf(w) && !w->focusProxy() && (w->focusPolicy() & Qt::TabFocus) != 0)
            chain << w;
    }
    return chain;
}

/// Where Shift+Tab leads from a field.
QWidget* stopBefore(QWidget* field)
{
    do
        field = field->previousInFocusChain();
    while ((field->focusPolicy() & Qt::TabFocus) == 0);
    return field;
}

} // namespace

TWgtDeviceView::TWgtDeviceView(const QString& infoLabel, const QString& pinsLabel, int rule, QWidget* parent)
    : QWidget(parent)
    , m_rule(rule)
    , m_layout(new QVBoxLayout(this))
    , m_warning(warningLabel(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(2);
    m_layout->addWidget(m_warning);
    m_info = addPane(infoLabel);
    m_pins = addPane(pinsLabel);
}

QPlainTextEdit* TWgtDeviceView::addPane(const QString& label)
{
    auto* pane = new QPlainTextEdit(this);
    pane->setReadOnly(true);
    new TTextKeys(pane);
    pane->setTabChangesFocus(true);
    pane->setFont(monoFont());
    pane->setMinimumHeight(paneHeight);
    auto* title = new QLabel(label, this);
    title->setBuddy(pane);
    m_layout->addWidget(title);
    m_layout->addWidget(pane, 1);
    return pane;
}

void TWgtDeviceView::showDevice(const TBinding& bound)
{
    const IDevice* family = bound.family;
    showWarning(m_warning, family ? deviceWarnings(family->deviceData()) : QStringList());
    m_info->setPlainText(family ? family->info().join(QLatin1Char('\n')) : QString());
    m_pins->setPlainText(family ? pinLines(*family, bound.prog, m_rule) : QString());
    showFamilyForm(bound);
}

void TWgtDeviceView::showFamilyForm(const TBinding& bound)
{
    if (m_form) {
        // Perhaps the change that leads here is its own.
        m_form->disconnect(this);
        m_form->blockSignals(true);
        m_form->hide();
        m_form->deleteLater();
        m_layout->removeWidget(m_form);
        m_form.clear();
    }
    if (bound.family)
        m_form = bound.family->createDeviceForm(bound.command->toData());
    if (!m_form)
        return;
    // The page scrolls, not the form in it.
    m_form->setMinimumHeight(m_form->sizeHint().height());
    m_layout->insertWidget(0, m_form);
    // It was made after the panes that it stands above.
    for (QWidget* field : focusChain(m_form))
        setTabOrder(stopBefore(m_info), field);
    connect(m_form, SIGNAL(signalChangedCmdParam(TData)), this, SIGNAL(signalChangedCmdParam(TData)));
}
