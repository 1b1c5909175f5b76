#include "core/files/TJsonListFile.h"

#include "base/TLang.h"
#include "base/json_file.h"
#include "base/keys.h"

#include <QJsonArray>

TJsonListFile::TJsonListFile(QLatin1Char lineEnd)
    : m_lineEnd(lineEnd)
{
}

QString TJsonListFile::errorText() const
{
    return m_errorText;
}

bool TJsonListFile::isOutdated() const
{
    return m_stamp.isOutdated();
}

TJsonListFile::Result TJsonListFile::readList(const QString& file, QJsonArray& list)
{
    m_others = {};
    m_stamp = {};
    m_errorText.clear();
    QByteArray bytes;
    if (!readWholeFile(file, bytes, m_errorText))
        return Failed;
    m_stamp.take(file, bytes);
    if (bytes.isEmpty())
        return Empty;
    QJsonObject top;
    if (!parseJsonObject(bytes, top, m_errorText))
        return Failed;
    // A project, for instance: an empty list must not take its place.
    if (!top.value(key::list).isArray()) {
        m_errorText = langText(Text::NoPrjList);
        return Failed;
    }
    list = top.value(key::list).toArray();
    m_others = otherMembers(top, {key::list});
    return Ok;
}

bool TJsonListFile::writeList(const QString& file, const QStringList& entries)
{
    m_errorText.clear();
    const QByteArray bytes = bytesOf(entries);
    if (!writeFileIfChanged(file, bytes, m_errorText))
        return false;
    m_stamp.take(file, bytes);
    return true;
}

QByteArray TJsonListFile::bytesOf(const QStringList& entries) const
{
    QJsonObject others = m_others;
    const QJsonValue version = others.contains(key::version) ? others.take(key::version) : QJsonValue(1);
    QStringList lines{QStringLiteral("{")};
    const QStringList members = jsonMembers({{key::version, version}}) + jsonMembers(others);
    for (const QString& member : members)
        lines.append(QStringLiteral("    %1,").arg(member));
    lines.append(QStringLiteral("    \"%1\":").arg(key::list));
    lines.append(QStringLiteral("    ["));
    for (const QString& entry : entries)
        lines.append(QStringLiteral("        {%1},").arg(entry));
    if (!entries.isEmpty())
        lines.last().chop(1);
    lines.append(QStringLiteral("    ]"));
    lines.append(QStringLiteral("}"));
    return (lines.join(m_lineEnd) + m_lineEnd).toUtf8();
}
