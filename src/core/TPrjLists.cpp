#include "core/TPrjLists.h"

#include "core/json_file.h"
#include "core/keys.h"

#include <QJsonArray>
#include <QJsonObject>

bool TPrjLists::read(const QString& file)
{
    m_entries.clear();
    m_errorText.clear();
    QByteArray bytes;
    if (!readWholeFile(file, bytes, m_errorText))
        return false;
    QJsonObject top;
    if (!bytes.isEmpty() && !parseJsonObject(bytes, top, m_errorText))
        return false;
    const QJsonArray list = top.value(key::list).toArray();
    for (const QJsonValue& value : list) {
        const QJsonObject object = value.toObject();
        m_entries.append(
            {object.value(key::name).toVariant().toString(), object.value(key::file).toVariant().toString()});
    }
    return true;
}

bool TPrjLists::write(const QString& file)
{
    m_errorText.clear();
    return writeFileIfChanged(file, toBytes(), m_errorText);
}

QByteArray TPrjLists::toBytes() const
{
    QStringList lines;
    for (const TPrjListEntry& entry : m_entries) {
        lines.append(QStringLiteral("        {%1, %2}")
                         .arg(jsonPair(key::name, entry.name), jsonPair(key::file, entry.file)));
    }
    QString text = QStringLiteral("{\n    \"version\": 1,\n    \"list\":\n    [\n");
    text += lines.join(QLatin1String(",\n"));
    if (!lines.isEmpty())
        text += QLatin1Char('\n');
    text += QLatin1String("    ]\n}\n");
    return text.toUtf8();
}

QList<TPrjListEntry> TPrjLists::entries() const
{
    return m_entries;
}

void TPrjLists::setEntries(const QList<TPrjListEntry>& entries)
{
    m_entries = entries;
}

QString TPrjLists::errorText() const
{
    return m_errorText;
}
