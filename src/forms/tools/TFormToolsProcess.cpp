#include "forms/tools/TFormToolsProcess.h"

#include "base/TLang.h"
#include "base/keys.h"
#include "forms/edits/TWgtEditFileName.h"
#include "forms/edits/file_filters.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QSignalBlocker>

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
    : TFormCommand(params, {key::file, key::must_succeed})
    , m_edit(new CommandLineEdit(textParam(key::file), this))
    , m_mustSucceed(new QCheckBox(langText(Text::LabelProcessMustSucceed), this))
{
    // A command of an older project has no such flag, and an edit of its line must store a number.
    if (!param(key::must_succeed).isValid())
        setParam(key::must_succeed, 0);
    m_edit->setTitle(langText(Text::SelectProgram));
    m_edit->setFilter(QStringLiteral("%1 (%2)").arg(langText(Text::AllFiles), allFilesPattern()));
    m_edit->setButtonTip(langText(Text::TipBrowse));
    QFormLayout* layout = formRows(this);
    layout->addRow(langText(Text::LabelProcessLine), m_edit);
    layout->addRow(QString(), m_mustSucceed);
    layout->addRow(formHint(langText(Text::HintProcess), this));
    layout->addRow(formHint(langText(Text::HintProcessMustSucceed), this));
    TFormToolsProcess::showParams();
    connect(m_edit, &TWgtEditFileName::signalChanged, this, &TFormToolsProcess::slotChanged);
    connect(m_mustSucceed, &QCheckBox::toggled, this, [this](bool isOn) {
        setParam(key::must_succeed, isOn ? 1 : 0);
        report();
    });
}

void TFormToolsProcess::showParams()
{
    if (m_edit->value() != textParam(key::file))
        m_edit->setValue(textParam(key::file));
    const QSignalBlocker silent(m_mustSucceed);
    m_mustSucceed->setChecked(isFlagSet(param(key::must_succeed)));
}

void TFormToolsProcess::slotChanged(const QString& text)
{
    setParam(key::file, text);
    report();
}
