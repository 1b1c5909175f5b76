#include "core/model/TCfgList.h"

#include "core/model/TDataCfg.h"

#include <algorithm>

TCfgList::~TCfgList()
{
    freeAll();
}

void TCfgList::freeAll()
{
    qDeleteAll(m_configurations);
    qDeleteAll(m_parked);
    m_configurations.clear();
    m_parked.clear();
    TDataCfg::resetCounter();
}

int TCfgList::indexOf(int id_cfg) const
{
    const auto it = std::find_if(m_configurations.cbegin(), m_configurations.cend(),
                                 [id_cfg](const TDataCfg* cfg) { return cfg->id() == id_cfg; });
    return it == m_configurations.cend() ? -1 : static_cast<int>(it - m_configurations.cbegin());
}

int TCfgList::idAt(int index) const
{
    const TDataCfg* configuration = value(index);
    return configuration ? configuration->id() : -1;
}

QStringList TCfgList::names() const
{
    QStringList names;
    for (const TDataCfg* configuration : m_configurations)
        names.append(configuration->name());
    return names;
}

int TCfgList::add(const QString& name, const QString& description, int index)
{
    auto* configuration = new TDataCfg(name, description);
    const int size = m_configurations.size();
    m_configurations.insert(index < 0 || index > size ? size : index, configuration);
    return configuration->id();
}

bool TCfgList::canMove(int from, int to) const
{
    const int size = m_configurations.size();
    return from >= 0 && to >= 0 && from < size && to < size;
}
