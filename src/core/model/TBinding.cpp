#include "core/model/TBinding.h"

#include "base/TCmdCode.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "link/lists/TProg.h"

#include <algorithm>

QStringList TBinding::familyCommands() const
{
    return family ? family->commandKeys() : QStringList();
}

QStringList TBinding::progCommands() const
{
    if (!prog)
        return {};
    QStringList list = TCmdCode::progKeys();
    const auto end = std::remove_if(list.begin(), list.end(), [this](const QString& word) {
        // Choosing a chip asks nothing of the programmer's description.
        return word != cmd::set_device && word != cmd::auto_detect && !prog->supportsCommand(word);
    });
    list.erase(end, list.end());
    return list;
}
