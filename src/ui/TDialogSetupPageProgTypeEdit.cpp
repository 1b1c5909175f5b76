#include "ui/TDialogSetupPageProgTypeEdit.h"

#include "core/TAppData.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "ui/dialog_parts.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

TDialogSetupPageProgTypeEdit::TDialogSetupPageProgTypeEdit(const QString& title, const QString& type,
                                                           const QString& file, const QStringList& taken,
                                                           QWidget* parent)
    : TDialogBase({&appData().WindowSettingsProgTypeLeft, &appData().WindowSettingsProgTypeTop,
                   &appData().WindowSettingsProgTypeWidth},
                  parent)
    , m_type(new QLineEdit(type, this))
{
    setWindowTitle(title);
    setMinimumWidth(350);
    auto* layout = new QVBoxLayout(this);
    auto* rows = new QFormLayout;
    const TBrowseLine parts = makeBrowseLine(file, this);
    m_file = parts.line;
    rows->addRow(langText(209), m_type);
    rows->addRow(langText(210), parts.layout);
    layout->addLayout(rows);
    QPushButton* accept = addDialogButtons(this, layout, 80, 81);
    const auto update = [this, accept, taken] {
        accept->setEnabled(!this->type().isEmpty() && !taken.contains(this->type()) &&
                           !this->file().isEmpty());
    };
    connect(m_type, &QLineEdit::textChanged, this, update);
    connect(m_file, &QLineEdit::textChanged, this, update);
    connect(parts.button, &QPushButton::clicked, this, &TDialogSetupPageProgTypeEdit::browse);
    update();
    m_type->selectAll();
}

void TDialogSetupPageProgTypeEdit::browse()
{
    const QString& folder = appData().PathProgs;
    const QString start = file().isEmpty() ? folder : absFile(folder, file());
    const QString picked = QFileDialog::getOpenFileName(this, langText(212), start, QStringLiteral("*.cfg"));
    if (picked.isEmpty())
        return;
    m_file->setText(relToDir(folder, picked));
    if (type().isEmpty())
        m_type->setText(QFileInfo(picked).completeBaseName());
}

QString TDialogSetupPageProgTypeEdit::type() const
{
    return m_type->text().trimmed();
}

QString TDialogSetupPageProgTypeEdit::file() const
{
    return m_file->text().trimmed();
}
