#include "forms/tools/tools_forms.h"

#include "base/keys.h"
#include "forms/tools/TFormToolsCalcCRC.h"
#include "forms/tools/TFormToolsCounter.h"
#include "forms/tools/TFormToolsDelay.h"
#include "forms/tools/TFormToolsExecute.h"
#include "forms/tools/TFormToolsJamp.h"
#include "forms/tools/TFormToolsNote.h"
#include "forms/tools/TFormToolsProcess.h"
#include "forms/tools/TFormToolsSetProg.h"

namespace {

template <typename Form> QWidget* create(const TData& data)
{
    return new Form(data);
}

constexpr struct
{
    QLatin1String word;
    QWidget* (*create)(const TData&);
} rows[] = {
#define VM_TOOL(word, Name, title, reference) {cmd::word, create<TFormTools##Name>},
#include "base/tools.def"
};

} // namespace

QWidget* createToolsForm(const IDevice&, const TData& data)
{
    const QString word = data.value(key::cmd).toString();
    for (const auto& row : rows) {
        if (word == row.word)
            return row.create(data);
    }
    return nullptr;
}
