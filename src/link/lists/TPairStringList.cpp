#include "link/lists/TPairStringList.h"

#include "link/lists/line_rules.h"

#include <QStringList>

TPairStringList TPairStringList::fromText(const QString& text)
{
    TPairStringList list;
    QString key;
    QString value;
    for (const QString& part : text.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
        if (splitPair(part, key, value))
            list.append(key, value);
    }
    return list;
}

TPairStringList TPairStringList::fromFile(const QString& file)
{
    TPairStringList list;
    readPairs(file, [&list](const QString& key, const QString& value) {
        list.append(key, value);
        return true;
    });
    return list;
}

QString TPairStringList::toText() const
{
    QStringList parts;
    for (const auto& pair : m_pairs)
        parts.append(pair.first + QLatin1Char('=') + pair.second);
    return parts.join(QLatin1Char('|'));
}

int TPairStringList::count() const
{
    return m_pairs.size();
}

QString TPairStringList::key(int row) const
{
    return m_pairs.value(row).first;
}

QString TPairStringList::value(int row) const
{
    return m_pairs.value(row).second;
}

int TPairStringList::find(const QString& key) const
{
    for (int row = 0; row < m_pairs.size(); ++row) {
        if (m_pairs.at(row).first == key)
            return row;
    }
    return -1;
}

bool TPairStringList::contains(const QString& key) const
{
    return find(key) >= 0;
}

QString TPairStringList::value(const QString& key) const
{
    return value(find(key));
}

void TPairStringList::append(const QString& key, const QString& value)
{
    m_pairs.append({key, value});
}

void TPairStringList::setValue(int row, const QString& value)
{
    if (row >= 0 && row < m_pairs.size())
        m_pairs[row].second = value;
}

void TPairStringList::clear()
{
    m_pairs.clear();
}
