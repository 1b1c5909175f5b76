#include "core/TPrjListFile.h"

#include "core/TAppData.h"
#include "core/TCtrlProject.h"
#include "core/globals.h"
#include "core/helpers.h"
#include "core/json_file.h"
#include "core/keys.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <cerrno>

namespace {

QString itemLine(const TPrjListItem& item)
{
    const QString numbers = QStringLiteral("\"%1\": %2, \"%3\": %4")
                                .arg(key::parent, QString::number(item.parent), key::expand,
                                     QString::number(item.expand ? 1 : 0));
    return QStringLiteral("        {%1, %2, %3},")
        .arg(numbers, jsonPair(key::name, item.name), jsonPair(key::file, item.file));
}

TPrjListItem itemOf(const QJsonObject& object, int itemsBefore)
{
    TPrjListItem item;
    const int parent = object.value(key::parent).toVariant().toInt();
    item.parent = parent > 0 && parent <= itemsBefore ? parent : 0;
    item.expand = object.value(key::expand).toVariant().toInt() != 0;
    item.name = object.value(key::name).toVariant().toString();
    item.file = object.value(key::file).toVariant().toString();
    return item;
}

} // namespace

TPrjListFile::Result TPrjListFile::read(const QString& file)
{
    m_items.clear();
    m_errorText.clear();
    QByteArray bytes;
    if (!readWholeFile(file, bytes, m_errorText))
        return Failed;
    if (bytes.isEmpty())
        return Empty;
    QJsonObject top;
    if (!parseJsonObject(bytes, top, m_errorText))
        return Failed;
    const QJsonArray list = top.value(key::list).toArray();
    for (const QJsonValue& value : list)
        m_items.append(itemOf(value.toObject(), m_items.size()));
    return Ok;
}

bool TPrjListFile::write(const QString& file)
{
    m_errorText.clear();
    return writeFileIfChanged(file, toBytes(), m_errorText);
}

QByteArray TPrjListFile::toBytes() const
{
    QStringList lines{QStringLiteral("{"), QStringLiteral("    \"version\": 1,"),
                      QStringLiteral("    \"list\":"), QStringLiteral("    [")};
    for (const TPrjListItem& item : m_items)
        lines.append(itemLine(item));
    if (!m_items.isEmpty())
        lines.last().chop(1);
    lines.append(QStringLiteral("    ]"));
    lines.append(QStringLiteral("}"));
    return (lines.join(QLatin1Char('\r')) + QLatin1Char('\r')).toUtf8();
}

QList<TPrjListItem> TPrjListFile::items() const
{
    return m_items;
}

void TPrjListFile::setItems(const QList<TPrjListItem>& items)
{
    m_items = items;
}

QString TPrjListFile::errorText() const
{
    return m_errorText;
}

QString TPrjListFile::path(const QString& file)
{
    QString inProjects = absFile(appData().PathProjects, file);
    if (QFileInfo::exists(inProjects))
        return inProjects;
    const QString inAppDir = absFile(QCoreApplication::applicationDirPath(), file);
    return QFileInfo::exists(inAppDir) ? inAppDir : inProjects;
}

QString withSuffix(const QString& file, const QString& suffix)
{
    const bool hasSuffix = QFileInfo(file).suffix().compare(suffix, Qt::CaseInsensitive) == 0;
    return hasSuffix ? file : QStringLiteral("%1.%2").arg(file, suffix);
}

bool joinPrjList(const QString& folder, TPrjFileMode mode, const QByteArray& content, QString& file,
                 QString& error)
{
    if (file.isEmpty())
        return true;
    const QString path = absFile(folder, withSuffix(file, QStringLiteral("prj")));
    const bool exists = QFileInfo::exists(path);
    if (mode == TPrjFileMode::Paste && exists) {
        error = qt_error_string(EEXIST);
        return false;
    }
    if (mode == TPrjFileMode::Paste && !writeFileSafely(path, content, error))
        return false;
    if (mode == TPrjFileMode::Create && !exists && !writeFileSafely(path, newProjectBytes(), error))
        return false;
    file = relToDir(folder, path);
    return true;
}
