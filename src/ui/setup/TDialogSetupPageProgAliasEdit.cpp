#include "ui/setup/TDialogSetupPageProgAliasEdit.h"

#include "base/TLang.h"
#include "forms/edits/TComboBox.h"
#include "forms/edits/TPortBox.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"

#include <QCheckBox>
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
    , m_enabled(new QCheckBox(langText(Text::LabelAliasEnabled), this))
    , m_alias(new QLineEdit(alias, this))
    , m_port(new TPortBox(this))
    , m_type(new TComboBox(this))
{
    setWindowTitle(title);
    setMinimumWidth(350);
    m_enabled->setChecked(record.enabled);
    m_port->setPort(record.port);
    fillTypes(types, record.type);
    auto* layout = new QVBoxLayout(this);
    auto* rows = new QFormLayout;
    rows->addRow(m_enabled);
    rows->addRow(langText(Text::LabelAlias), m_alias);
    rows->addRow(langText(Text::LabelAliasPort), m_port);
    rows->addRow(langText(Text::LabelAliasType), m_type);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    layout->addLayout(rows);
    QPushButton* accept = addDialogButtons(this, layout, Text::ButtonOk, Text::ButtonCancel);
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

void TDialogSetupPageProgAliasEdit::fillTypes(const QStringList& types, const QString& type)
{
    m_type->allowNarrow();
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
    return {m_enabled->isChecked(), m_port->currentText().trimmed(), m_type->currentText()};
}
