#include "ui/dialogs/TDialogCfgEdit.h"

#include "base/TLang.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"

#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

TDialogCfgEdit::TDialogCfgEdit(const QString& title, const QString& name, QWidget* parent)
    : TDialogBase({&appData().WindowCfgEditLeft, &appData().WindowCfgEditTop, &appData().WindowCfgEditWidth},
                  parent)
    , m_name(new QLineEdit(name, this))
{
    setWindowTitle(title);
    setMinimumWidth(300);
    auto* layout = new QVBoxLayout(this);
    auto* rows = new QFormLayout;
    rows->addRow(langText(Text::LabelCfgName), m_name);
    layout->addLayout(rows);
    QPushButton* accept = addDialogButtons(this, layout, Text::ButtonOk, Text::ButtonCancel);
    const auto update = [this, accept] { accept->setEnabled(!this->name().isEmpty()); };
    connect(m_name, &QLineEdit::textChanged, this, update);
    update();
    m_name->selectAll();
}

QString TDialogCfgEdit::name() const
{
    return m_name->text().trimmed();
}
