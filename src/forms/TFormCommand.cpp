#include "forms/TFormCommand.h"

#include "base/keys.h"

#include <QFormLayout>
#include <QLabel>

#include <algorithm>
#include <limits>

TFormCommand::TFormCommand(const TData& params, const QStringList& keys)
    : m_idCmd(params.value(key::id_cmd, -1).toInt())
    , m_keys(keys)
{
    for (const QString& word : m_keys)
        m_params[word] = params.value(word);
}

TFormCommand::~TFormCommand()
{
    TWgtEditBase::silence(*this);
}

bool TFormCommand::updateParams(const TData& params)
{
    if (params.value(key::id_cmd, -1).toInt() != m_idCmd)
        return false;
    for (const QString& word : qAsConst(m_keys)) {
        if (params.contains(word))
            m_params[word] = params.value(word);
    }
    showParams();
    return true;
}

QVariant TFormCommand::kept() const
{
    return {};
}

void TFormCommand::takeKept(const QVariant&) {}

int TFormCommand::intParam(const QString& key) const
{
    return static_cast<int>(std::clamp<qint64>(param(key).toLongLong(), std::numeric_limits<int>::min(),
                                               std::numeric_limits<int>::max()));
}

void TFormCommand::report()
{
    TData params = m_params;
    params[key::id_cmd] = m_idCmd;
    emit signalChangedCmdParam(params);
}

bool TFormCommand::isEdited(const QWidget* field)
{
    const auto edits = field->findChildren<TWgtEditBase*>();
    return std::any_of(edits.begin(), edits.end(),
                       [](const TWgtEditBase* edit) { return edit->isEditing(); });
}

QFormLayout* formRows(QWidget* form)
{
    auto* layout = new QFormLayout(form);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    return layout;
}

QWidget* formHint(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}
