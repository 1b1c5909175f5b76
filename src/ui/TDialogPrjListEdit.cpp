#include "ui/TDialogPrjListEdit.h"

#include "core/TAppData.h"
#include "core/TPrjListFile.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "ui/dialog_parts.h"

#include <QFileInfo>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

TDialogPrjListEdit::TDialogPrjListEdit(const QString& title, const QString& name, const QString& file,
                                       QWidget* parent)
    : TDialogBase({&appData().WindowPrjListEditLeft, &appData().WindowPrjListEditTop,
                   &appData().WindowPrjListEditWidth},
                  parent)
    , m_name(new QLineEdit(name, this))
{
    setWindowTitle(title);
    setMinimumWidth(400);
    auto* layout = new QVBoxLayout(this);
    auto* rows = new QFormLayout;
    const TBrowseLine parts = makeBrowseLine(file, this);
    m_file = parts.line;
    rows->addRow(langText(169), m_name);
    rows->addRow(langText(170), parts.layout);
    layout->addLayout(rows);
    QPushButton* accept = addDialogButtons(this, layout, 80, 81);
    const auto update = [this, accept] {
        accept->setEnabled(!this->name().isEmpty() && !this->file().isEmpty());
    };
    connect(m_name, &QLineEdit::textChanged, this, update);
    connect(m_file, &QLineEdit::textChanged, this, update);
    connect(parts.button, &QPushButton::clicked, this, &TDialogPrjListEdit::browse);
    update();
    m_name->selectAll();
}

void TDialogPrjListEdit::browse()
{
    const QString start = file().isEmpty() ? appData().PathProjects : TPrjListFile::path(file());
    const QString picked = askFile(this, windowTitle(), start, QStringLiteral("*.lst"));
    if (picked.isEmpty())
        return;
    m_file->setText(relToDir(appData().PathProjects, picked));
    if (name().isEmpty())
        m_name->setText(QFileInfo(picked).completeBaseName());
}

QString TDialogPrjListEdit::name() const
{
    return m_name->text().trimmed();
}

QString TDialogPrjListEdit::file() const
{
    return m_file->text().trimmed();
}
