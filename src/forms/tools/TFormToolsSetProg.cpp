#include "forms/tools/TFormToolsSetProg.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "forms/edits/TComboBox.h"
#include "forms/edits/TPortBox.h"
#include "settings/TAppData.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QSignalBlocker>

namespace {

constexpr int listLines = 10;

QLabel* plainLabel(QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

TFormToolsSetProg::TFormToolsSetProg(const TData& params)
    : TFormCommand(params, {key::prog, key::alt_enabled, key::alt_port})
    , m_alias(new TComboBox(this))
    , m_port(plainLabel(this))
    , m_type(plainLabel(this))
    , m_altEnabled(new QCheckBox(langText(Text::LabelAltEnabled), this))
    , m_altPort(new TPortBox(this))
{
    m_alias->setMaxVisibleItems(listLines);
    m_alias->allowNarrow();
    fillAliases();
    QFormLayout* layout = formRows(this);
    layout->addRow(langText(Text::LabelProgAlias), m_alias);
    layout->addRow(langText(Text::LabelProgPort), m_port);
    layout->addRow(langText(Text::LabelProgType), m_type);
    layout->addRow(QString(), m_altEnabled);
    layout->addRow(langText(Text::LabelAltPort), m_altPort);
    TFormToolsSetProg::showParams();
    connect(m_alias, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this](int index) {
        setParam(key::prog, m_alias->itemData(index));
        slotChanged();
    });
    connect(m_altEnabled, &QCheckBox::toggled, this, [this](bool isOn) {
        setParam(key::alt_enabled, isOn);
        slotChanged();
    });
    connect(m_altPort, &TPortBox::signalChanged, this, [this](const QString& port) {
        setParam(key::alt_port, port);
        slotChanged();
    });
}

TFormToolsSetProg::~TFormToolsSetProg()
{
    // A line that loses the focus takes its text over, and the form that listens is gone by then.
    m_altPort->blockSignals(true);
}

void TFormToolsSetProg::fillAliases()
{
    const TProgName& names = appData().progNames;
    for (int row = 0; row < names.count(); ++row) {
        const TProgRecord record = names.record(row);
        m_alias->addItem(names.name(row), names.name(row));
        m_alias->setItemData(row, QStringLiteral("%1, %2").arg(record.port, record.type), Qt::ToolTipRole);
        if (!record.enabled)
            m_alias->setItemData(row, palette().brush(QPalette::Disabled, QPalette::Text),
                                 Qt::ForegroundRole);
    }
}

void TFormToolsSetProg::showParams()
{
    const QSignalBlocker aliasBlocker(m_alias);
    const QSignalBlocker enabledBlocker(m_altEnabled);
    m_alias->setCurrentIndex(m_alias->findData(textParam(key::prog)));
    m_alias->slotChanged();
    m_altEnabled->setChecked(param(key::alt_enabled).toBool());
    m_altPort->setPort(textParam(key::alt_port));
    showRecord();
}

/// Port and type of the alias, and whether its port counts.
void TFormToolsSetProg::showRecord()
{
    const TProgRecord record = appData().progNames.record(textParam(key::prog));
    m_port->setText(record.port);
    m_type->setText(record.type);
    m_altPort->setEnabled(m_altEnabled->isChecked());
}

void TFormToolsSetProg::slotChanged()
{
    showRecord();
    // The page may build its form anew.
    report();
}
