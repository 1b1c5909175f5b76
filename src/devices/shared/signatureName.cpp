#include "devices/signatureName.h"

#include "core/globals.h"
#include "core/helpers.h"
#include "link/TPairStringList.h"

QString signatureName(const QString& folder, const QString& id)
{
    constexpr int textUnknown = 400;
    const TPairStringList chips = TPairStringList::fromFile(absFile(folder, QStringLiteral("signature.lst")));
    return chips.contains(id) ? chips.value(id) : langText(textUnknown);
}
