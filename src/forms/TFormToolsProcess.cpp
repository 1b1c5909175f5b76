#include "forms/TFormToolsProcess.h"

#include "core/globals.h"
#include "core/keys.h"
#include "forms/TWgtEditFileName.h"
#include "forms/all_files.h"

#include <QFormLayout>
#include <QLineEdit>

#include <algorithm>

namespace {

/// A command line: a program that is chosen in the dialog becomes one word of it.
class CommandLineEdit : public TWgtEditFileName
{
public:
    using TWgtEditFileName::TWgtEditFileName;

    void choose(const QString& file) override
    {
        const bool hasBlank = std::any_of(file.begin(), file.end(), [](QChar c) { return c.isSpace(); });
        if (!file.isEmpty())
            lineEdit()->setText(hasBlank ? QStringLiteral("\"%1\"").arg(file) : file);
    }
};

} // namespace

TFormToolsProcess::TFormToolsProcess(const TData& params)
    : TFormCommand(params, {key::file})
    , m_edit(new CommandLineEdit(textParam(key::file), this))
{
    m_edit->setTitle(langText(330));
    m_edit->setFilter(QStringLiteral("%1 (%2)").arg(langText(331), allFilesPattern()));
    m_edit->setButtonTip(langText(332));
    QFormLayout* layout = formRows(this);
    layout->addRow(langText(329), m_edit);
    layout->addRow(formHint(langText(333), this));
    connect(m_edit, &TWgtEditFileName::signalChanged, this, &TFormToolsProcess::slotChanged);
}

void TFormToolsProcess::showParams()
{
    if (m_edit->value() != textParam(key::file))
        m_edit->setValue(textParam(key::file));
}

void TFormToolsProcess::slotChanged(const QString& text)
{
    setParam(key::file, text);
    report();
}
