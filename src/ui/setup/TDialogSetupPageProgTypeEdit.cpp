#include "ui/setup/TDialogSetupPageProgTypeEdit.h"

#include "base/TLang.h"
#include "settings/TAppData.h"

namespace {

TNameFile rows(const QString& title, const QString& type, const QString& file, const QStringList& taken)
{
    TNameFile rows{title,
                   type,
                   file,
                   Text::LabelType,
                   Text::LabelTypeFile,
                   appData().PathProgs,
                   QStringLiteral("*.cfg"),
                   langText(Text::SelectTypeFile)};
    rows.taken = taken;
    return rows;
}

} // namespace

TDialogSetupPageProgTypeEdit::TDialogSetupPageProgTypeEdit(const QString& title, const QString& type,
                                                           const QString& file, const QStringList& taken,
                                                           QWidget* parent)
    : TDialogNameFile({&appData().WindowSettingsProgTypeLeft, &appData().WindowSettingsProgTypeTop,
                       &appData().WindowSettingsProgTypeWidth},
                      rows(title, type, file, taken), parent)
{
}
