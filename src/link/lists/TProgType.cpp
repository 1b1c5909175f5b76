#include "link/lists/TProgType.h"

int TProgType::count() const
{
    return m_names.size();
}

QString TProgType::name(int row) const
{
    return m_names.value(row);
}

QString TProgType::file(int row) const
{
    if (row < 0 || row >= m_names.size())
        return QString();
    return m_files.value(m_names.at(row));
}

QString TProgType::file(const QString& type) const
{
    return m_files.value(type);
}

bool TProgType::contains(const QString& type) const
{
    return m_files.contains(type);
}

void TProgType::append(const QString& type, const QString& file)
{
    if (!contains(type))
        m_names.append(type);
    m_files.insert(type, file);
}

void TProgType::clear()
{
    m_names.clear();
    m_files.clear();
}
