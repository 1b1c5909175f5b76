#include "ui/dialogs/TDialogPrjListEdit.h"

#include "core/files/TPrjListFile.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"

namespace {

TNameFile rows(const QString& title, const QString& name, const QString& file)
{
    TNameFile rows{title,
                   name,
                   file,
                   Text::LabelListName,
                   Text::LabelListFile,
                   appData().PathProjects,
                   suffixFilter(prjListSuffix),
                   title};
    rows.mustExist = false;
    return rows;
}

} // namespace

TDialogPrjListEdit::TDialogPrjListEdit(const QString& title, const QString& name, const QString& file,
                                       QWidget* parent)
    : TDialogNameFile({&appData().WindowPrjListEditLeft, &appData().WindowPrjListEditTop,
                       &appData().WindowPrjListEditWidth},
                      rows(title, name, file), parent)
{
}

QString TDialogPrjListEdit::pathOf(const QString& file) const
{
    return TPrjListFile::path(file);
}
