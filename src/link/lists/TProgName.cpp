#include "link/lists/TProgName.h"

int TProgName::count() const
{
    return m_names.size();
}

QString TProgName::name(int row) const
{
    return m_names.value(row);
}

TProgRecord TProgName::record(const QString& name) const
{
    return m_records.value(name);
}

TProgRecord TProgName::record(int row) const
{
    if (row < 0 || row >= m_names.size())
        return {};
    return m_records.value(m_names.at(row));
}

bool TProgName::contains(const QString& name) const
{
    return m_records.contains(name);
}

void TProgName::append(const QString& name, bool enabled, const QString& port, const QString& type)
{
    if (!contains(name))
        m_names.append(name);
    m_records.insert(name, {enabled, port, type});
}

void TProgName::clear()
{
    m_names.clear();
    m_records.clear();
}
