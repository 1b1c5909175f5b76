#include "forms/edits/TWgtEditFileName.h"

#include "base/helpers.h"
#include "forms/edits/TFileDrop.h"
#include "forms/edits/line_height.h"

#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

namespace {

/// file relative to the folder if it lies below it, else as it is.
QString belowFolder(const QString& folder, const QString& file)
{
    if (folder.isEmpty())
        return file;
    const QString relative = QDir(folder).relativeFilePath(file);
    const bool isBelow = QDir::isRelativePath(relative) && relative != QLatin1String("..") &&
                         !relative.startsWith(QLatin1String("../"));
    return isBelow ? relative : file;
}

} // namespace

TWgtEditFileName::TWgtEditFileName(const QString& file, QWidget* parent)
    : QWidget(parent)
    , m_edit(new QLineEdit(file, this))
    , m_button(new QPushButton(QStringLiteral("..."), this))
{
    const int height = fieldHeight(m_edit);
    m_edit->setFixedHeight(height);
    m_button->setFixedSize(height + height / 2, height);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(3);
    layout->addWidget(m_edit);
    layout->addWidget(m_button);
    setFocusProxy(m_edit);
    connect(m_edit, &QLineEdit::textChanged, this, &TWgtEditFileName::slotTextChanged);
    new TFileDrop(m_edit, [this](const QString& path) { choose(path); });
    connect(m_button, &QPushButton::clicked, this, &TWgtEditFileName::slotOpenWindowFileSelect);
}

QString TWgtEditFileName::value() const
{
    return m_edit->text();
}

void TWgtEditFileName::setValue(const QString& file)
{
    const QSignalBlocker blocker(m_edit);
    m_edit->setText(file);
}

void TWgtEditFileName::setButtonTip(const QString& text)
{
    m_button->setToolTip(text);
}

void TWgtEditFileName::slotTextChanged(const QString& text)
{
    emit signalChanged(text);
}

void TWgtEditFileName::slotOpenWindowFileSelect()
{
    // Not executed here: the form may go away while the dialog is open.
    auto* dialog = new QFileDialog(this, m_title, dirOf(m_base, value()), m_filter);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setFileMode(m_purpose == Save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog->setAcceptMode(m_purpose == Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    // Naming a file writes nothing yet.
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    if (!value().isEmpty())
        dialog->selectFile(absFile(m_base, value()));
    connect(dialog, &QFileDialog::fileSelected, this, &TWgtEditFileName::choose);
    dialog->open();
}

void TWgtEditFileName::choose(const QString& file)
{
    if (!file.isEmpty())
        m_edit->setText(belowFolder(m_base, file));
}
