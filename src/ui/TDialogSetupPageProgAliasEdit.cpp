#include "ui/TDialogSetupPageProgAliasEdit.h"

#include "core/TAppData.h"
#include "core/globals.h"
#include "link/TSerialPort.h"
#include "ui/dialog_parts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

TDialogSetupPageProgAliasEdit::TDialogSetupPageProgAliasEdit(const QString& title, const QString& alias,
                                                             const TProgRecord& record,
                                                             const QStringList& types,
                                                             const QStringList& taken, QWidget* parent)
    : TDialogBase({&appData().WindowSettingsProgNameLeft, &appData().WindowSettingsProgNameTop,
                   &appData().WindowSettingsProgNameWidth},
                  parent)
    , m_enabled(new QCheckBox(langText(205), this))
    , m_alias(new QLineEdit(alias, this))
    , m_port(new QComboBox(this))
    , m_type(new QComboBox(this))
{
    setWindowTitle(title);
    setMinimumWidth(350);
    m_enabled->setChecked(record.enabled);
    fillPorts(record.port);
    fillTypes(types, record.type);
    auto* layout = new QVBoxLayout(this);
    auto* rows = new QFormLayout;
    rows->addRow(m_enabled);
    rows->addRow(langText(206), m_alias);
    rows->addRow(langText(207), m_port);
    rows->addRow(langText(208), m_type);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    layout->addLayout(rows);
    QPushButton* accept = addDialogButtons(this, layout, 80, 81);
    const auto update = [this, accept, taken] {
        accept->setEnabled(!this->alias().isEmpty() && !taken.contains(this->alias()) &&
                           m_type->currentIndex() >= 0);
    };
    connect(m_alias, &QLineEdit::textChanged, this, update);
    connect(m_type, QOverload<int>::of(&QComboBox::currentIndexChanged), this, update);
    update();
    m_alias->setFocus();
    m_alias->selectAll();
}

void TDialogSetupPageProgAliasEdit::fillPorts(const QString& port)
{
    m_port->setEditable(true);
    m_port->setInsertPolicy(QComboBox::NoInsert);
    m_port->addItems(TSerialPort::portList());
    for (int i = 0; i < m_port->count(); ++i) {
        if (TSerialPort::portNameOf(m_port->itemText(i)) == port) {
            m_port->setCurrentIndex(i);
            return;
        }
    }
    m_port->setCurrentIndex(-1);
    m_port->setEditText(port);
}

void TDialogSetupPageProgAliasEdit::fillTypes(const QStringList& types, const QString& type)
{
    m_type->addItems(types);
    if (!type.isEmpty() && !types.contains(type))
        m_type->addItem(type);
    if (!type.isEmpty())
        m_type->setCurrentText(type);
}

QString TDialogSetupPageProgAliasEdit::alias() const
{
    return m_alias->text().trimmed();
}

TProgRecord TDialogSetupPageProgAliasEdit::record() const
{
    // A bracket in what was typed belongs to the name; only the texts of the list have a description.
    const QString text = m_port->currentText().trimmed();
    const bool isListed = m_port->findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive) >= 0;
    return {m_enabled->isChecked(), isListed ? TSerialPort::portNameOf(text) : text, m_type->currentText()};
}
