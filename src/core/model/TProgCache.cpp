#include "core/model/TProgCache.h"

#include "base/helpers.h"
#include "link/lists/TProg.h"
#include "settings/TAppData.h"

#include <QFileInfo>

TProgCache::~TProgCache()
{
    freeAll();
}

TProg* TProgCache::prog(const QString& name)
{
    const auto hit = m_progs.constFind(name);
    if (hit != m_progs.cend())
        return hit.value();
    const TAppData& app = appData();
    const QString type = app.progNames.record(name).type;
    if (name.isEmpty() || !app.progNames.contains(name) || !app.progTypes.contains(type))
        return nullptr;
    const QString file = absFile(app.PathProgs, app.progTypes.file(type));
    if (!QFileInfo(file).isFile())
        return nullptr;
    auto* prog = new TProg(file);
    m_progs.insert(name, prog);
    return prog;
}

bool TProgCache::isUsable(const QString& name)
{
    const TAppData& app = appData();
    const TProgRecord record = app.progNames.record(name);
    return record.enabled && app.progTypes.contains(record.type);
}

void TProgCache::park()
{
    m_parked.append(m_progs.values());
    m_progs.clear();
}

void TProgCache::freeAll()
{
    park();
    qDeleteAll(m_parked);
    m_parked.clear();
}
