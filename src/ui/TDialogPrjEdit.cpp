#include "ui/TDialogPrjEdit.h"

#include "core/TAppData.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "ui/dialog_parts.h"

#include <QFileInfo>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

TDialogPrjEdit::TDialogPrjEdit(const QString& title, const QString& name, const QString& file,
                               const QString& folder, QWidget* parent)
    : TDialogBase({&appData().WindowPrjEditLeft, &appData().WindowPrjEditTop, &appData().WindowPrjEditWidth},
                  parent)
    , m_name(new QLineEdit(name, this))
    , m_folder(folder)
{
    setWindowTitle(title);
    setMinimumWidth(400);
    auto* layout = new QVBoxLayout(this);
    auto* rows = new QFormLayout;
    const TBrowseLine parts = makeBrowseLine(file, this);
    m_file = parts.line;
    rows->addRow(langText(105), m_name);
    rows->addRow(langText(106), parts.layout);
    layout->addLayout(rows);
    QPushButton* accept = addDialogButtons(this, layout, 80, 81);
    // A node without a name could not be seen in the tree.
    const auto update = [this, accept] { accept->setEnabled(!this->name().isEmpty()); };
    connect(m_name, &QLineEdit::textChanged, this, update);
    connect(parts.button, &QPushButton::clicked, this, &TDialogPrjEdit::browse);
    update();
    m_name->selectAll();
}

void TDialogPrjEdit::browse()
{
    const QString file =
        askFile(this, langText(107), absFile(m_folder, this->file()), QStringLiteral("*.prj"));
    if (file.isEmpty())
        return;
    m_file->setText(relToDir(m_folder, file));
    if (name().isEmpty())
        m_name->setText(QFileInfo(file).completeBaseName());
}

QString TDialogPrjEdit::name() const
{
    return m_name->text().trimmed();
}

QString TDialogPrjEdit::file() const
{
    return m_file->text().trimmed();
}
