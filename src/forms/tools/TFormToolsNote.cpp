#include "forms/tools/TFormToolsNote.h"

#include "base/TCmdCode.h"
#include "base/keys.h"

#include <QLabel>
#include <QVBoxLayout>

TFormToolsNote::TFormToolsNote(const TData& params)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel(cmdCode().name(params.value(key::cmd).toString()), this));
    layout->addStretch(1);
}
