#include "ui/dialogs/TDialogPrjEdit.h"

#include "base/TLang.h"
#include "core/files/TPrjListFile.h"
#include "settings/TAppData.h"
#include "ui/dialog_parts.h"

namespace {

// A node without a name could not be seen in the tree; one without a file is a group.
TNameFile rows(const QString& title, const QString& name, const QString& file, const QString& folder,
               bool mustExist)
{
    TNameFile rows{title,
                   name,
                   file,
                   Text::LabelPrjName,
                   Text::LabelPrjFile,
                   folder,
                   suffixFilter(prjSuffix),
                   langText(Text::SelectPrjFile)};
    rows.mustExist = mustExist;
    rows.needsFile = false;
    return rows;
}

} // namespace

TDialogPrjEdit::TDialogPrjEdit(const QString& title, const QString& name, const QString& file,
                               const QString& folder, QWidget* parent, bool mustExist)
    : TDialogNameFile(
          {&appData().WindowPrjEditLeft, &appData().WindowPrjEditTop, &appData().WindowPrjEditWidth},
          rows(title, name, file, folder, mustExist), parent)
{
}
