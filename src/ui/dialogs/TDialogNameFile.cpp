#include "ui/dialogs/TDialogNameFile.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "forms/edits/TFileDrop.h"
#include "ui/dialog_parts.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

TDialogNameFile::TDialogNameFile(const TWindowKeys& keys, const TNameFile& rows, QWidget* parent)
    : TDialogBase(keys, parent)
    , m_rows(rows)
    , m_name(new QLineEdit(rows.name, this))
{
    setWindowTitle(rows.title);
    setMinimumWidth(400);
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;
    const TBrowseLine parts = makeBrowseLine(rows.file, this);
    m_file = parts.line;
    form->addRow(langText(rows.nameLabel), m_name);
    form->addRow(langText(rows.fileLabel), parts.layout);
    layout->addLayout(form);
    QPushButton* accept = addDialogButtons(this, layout, Text::ButtonOk, Text::ButtonCancel);
    const auto update = [this, accept] { accept->setEnabled(isComplete()); };
    connect(m_name, &QLineEdit::textChanged, this, update);
    connect(m_file, &QLineEdit::textChanged, this, update);
    connect(parts.button, &QPushButton::clicked, this, &TDialogNameFile::browse);
    new TFileDrop(m_file, [this](const QString& file) { take(file); });
    update();
    m_name->selectAll();
}

QString TDialogNameFile::name() const
{
    return m_name->text().trimmed();
}

QString TDialogNameFile::file() const
{
    return m_file->text().trimmed();
}

bool TDialogNameFile::isComplete() const
{
    return !name().isEmpty() && !m_rows.taken.contains(name()) && !(m_rows.needsFile && file().isEmpty());
}

QString TDialogNameFile::pathOf(const QString& file) const
{
    return absFile(m_rows.folder, file);
}

void TDialogNameFile::browse()
{
    const QString start = file().isEmpty() ? m_rows.folder : pathOf(file());
    const QString picked = m_rows.mustExist
                               ? QFileDialog::getOpenFileName(this, m_rows.browseTitle, start, m_rows.pattern)
                               : askFile(this, m_rows.browseTitle, start, m_rows.pattern);
    if (!picked.isEmpty())
        take(picked);
}

void TDialogNameFile::take(const QString& picked)
{
    m_file->setText(relToDir(m_rows.folder, picked));
    if (name().isEmpty())
        m_name->setText(QFileInfo(picked).completeBaseName());
}
