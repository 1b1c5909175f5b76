#include "devices/shared/signatureName.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "link/lists/TPairStringList.h"

QString signatureName(const QString& folder, const QString& id)
{
    const TPairStringList chips = TPairStringList::fromFile(absFile(folder, QStringLiteral("signature.lst")));
    return chips.contains(id) ? chips.value(id) : langText(Text::DeviceUnknown);
}
