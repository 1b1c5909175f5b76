#include "core/model/references.h"

#include "base/keys.h"
#include "link/lists/TPairStringList.h"

#include <limits>

namespace {

enum class Kind { None, Cfg, Command, Route };

/// A parameter and what it names.
struct Target
{
    QLatin1String key;
    Kind kind;
};

constexpr Target noReference{QLatin1String(), Kind::None};

constexpr Target ofCfg(QLatin1String key)
{
    return {key, Kind::Cfg};
}

constexpr Target ofCommand(QLatin1String key)
{
    return {key, Kind::Command};
}

struct Reference
{
    QLatin1String cmd;
    Target target;
};

constexpr Reference references[] = {
#define VM_TOOL(word, Name, title, reference) {cmd::word, reference},
#include "base/tools.def"
    {cmd::auto_detect, {key::route, Kind::Route}},
};

QString mapped(const QVariant& id, const TIdMap& map)
{
    const int number = referenceId(id);
    return QString::number(number >= 0 ? map(number) : -1);
}

QString mappedRoute(const QString& text, const TIdMap& map)
{
    TPairStringList routes = TPairStringList::fromText(text);
    for (int row = 0; row < routes.count(); ++row) {
        // Text in place of an id is marked as wrong for as long as it stands there; -1 would not be.
        bool isNumber = false;
        routes.value(row).toInt(&isNumber);
        if (isNumber)
            routes.setValue(row, mapped(routes.value(row), map));
    }
    return routes.toText();
}

} // namespace

int referenceId(const QVariant& value)
{
    bool isNumber = false;
    const qint64 id = value.toLongLong(&isNumber);
    return isNumber && id >= 0 && id <= std::numeric_limits<int>::max() ? static_cast<int>(id) : -1;
}

QString mappedReference(const QString& cmd, const QString& key, const QVariant& value, const TIdMap& cfg,
                        const TIdMap& command)
{
    for (const Reference& reference : references) {
        const Target& target = reference.target;
        if (target.kind == Kind::None || reference.cmd != cmd || target.key != key)
            continue;
        if (target.kind == Kind::Route)
            return mappedRoute(value.toString(), cfg);
        return mapped(value, target.kind == Kind::Cfg ? cfg : command);
    }
    return value.toString();
}

void dropReferences(TData& data)
{
    const QString word = data.value(key::cmd).toString();
    for (const Reference& reference : references) {
        const Target& target = reference.target;
        if (target.kind != Kind::None && reference.cmd == word && data.contains(target.key))
            data.insert(target.key, target.kind == Kind::Route ? QVariant(QString()) : QVariant(-1));
    }
}
