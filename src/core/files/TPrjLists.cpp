#include "core/files/TPrjLists.h"

#include "base/json_file.h"
#include "base/keys.h"

#include <QJsonArray>
#include <QJsonObject>

bool operator==(const TPrjListEntry& a, const TPrjListEntry& b)
{
    return a.name == b.name && a.file == b.file && a.others == b.others;
}

TPrjLists::TPrjLists()
    : TJsonListFile(QLatin1Char('\n'))
{
}

bool TPrjLists::read(const QString& file)
{
    m_entries.clear();
    QJsonArray list;
    const Result result = readList(file, list);
    for (const QJsonValue& value : qAsConst(list)) {
        const QJsonObject object = value.toObject();
        m_entries.append({object.value(key::name).toVariant().toString(),
                          object.value(key::file).toVariant().toString(),
                          otherMembers(object, {key::name, key::file})});
    }
    return result != Failed;
}

bool TPrjLists::write(const QString& file)
{
    return writeList(file, lines());
}

QByteArray TPrjLists::toBytes() const
{
    return bytesOf(lines());
}

QStringList TPrjLists::lines() const
{
    QStringList list;
    for (const TPrjListEntry& entry : m_entries) {
        const QStringList members{jsonPair(key::name, entry.name), jsonPair(key::file, entry.file)};
        list.append((members + jsonMembers(entry.others)).join(QLatin1String(", ")));
    }
    return list;
}

QList<TPrjListEntry> TPrjLists::entries() const
{
    return m_entries;
}

void TPrjLists::setEntries(const QList<TPrjListEntry>& entries)
{
    m_entries = entries;
}
