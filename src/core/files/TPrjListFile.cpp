#include "core/files/TPrjListFile.h"

#include "base/helpers.h"
#include "base/json_file.h"
#include "base/keys.h"
#include "core/files/TCtrlProject.h"
#include "settings/TAppData.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <cerrno>

namespace {

QString entryOf(const TPrjListItem& item)
{
    const QString numbers = QStringLiteral("\"%1\": %2, \"%3\": %4")
                                .arg(key::parent, QString::number(item.parent), key::expand,
                                     QString::number(item.expand ? 1 : 0));
    const QStringList members{numbers, jsonPair(key::name, item.name), jsonPair(key::file, item.file)};
    return (members + jsonMembers(item.others)).join(QLatin1String(", "));
}

TPrjListItem itemOf(const QJsonObject& object, int itemsBefore)
{
    TPrjListItem item;
    const int parent = object.value(key::parent).toVariant().toInt();
    item.parent = parent > 0 && parent <= itemsBefore ? parent : 0;
    item.expand = object.value(key::expand).toVariant().toInt() != 0;
    item.name = object.value(key::name).toVariant().toString();
    item.file = object.value(key::file).toVariant().toString();
    item.others = otherMembers(object, {key::parent, key::expand, key::name, key::file});
    return item;
}

} // namespace

bool operator==(const TPrjListItem& a, const TPrjListItem& b)
{
    return a.parent == b.parent && a.expand == b.expand && a.name == b.name && a.file == b.file &&
           a.others == b.others;
}

TPrjListFile::TPrjListFile()
    : TJsonListFile(QLatin1Char('\r'))
{
}

TPrjListFile::Result TPrjListFile::read(const QString& file)
{
    m_items.clear();
    QJsonArray list;
    const Result result = readList(file, list);
    for (const QJsonValue& value : qAsConst(list))
        m_items.append(itemOf(value.toObject(), m_items.size()));
    return result;
}

bool TPrjListFile::write(const QString& file)
{
    return writeList(file, entries());
}

QByteArray TPrjListFile::toBytes() const
{
    return bytesOf(entries());
}

QStringList TPrjListFile::entries() const
{
    QStringList list;
    for (const TPrjListItem& item : m_items)
        list.append(entryOf(item));
    return list;
}

QList<TPrjListItem> TPrjListFile::items() const
{
    return m_items;
}

void TPrjListFile::setItems(const QList<TPrjListItem>& items)
{
    m_items = items;
}

void TPrjListFile::changeFolder(const QString& from, const QString& to)
{
    for (TPrjListItem& item : m_items) {
        if (!item.file.isEmpty())
            item.file = relToDir(to, absFile(from, item.file));
    }
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

bool copyPrjList(const QString& from, const QString& to)
{
    if (QFileInfo::exists(to))
        return false;
    if (absDir(from) == absDir(to))
        return QFile::copy(from, to);
    TPrjListFile list;
    const TPrjListFile::Result result = list.read(from);
    if (result == TPrjListFile::Failed)
        return false;
    if (result == TPrjListFile::Empty)
        return QFile::copy(from, to);
    list.changeFolder(absDir(from), absDir(to));
    return list.write(to);
}

bool joinPrjList(const QString& folder, TPrjFileMode mode, const QByteArray& content, QString& file,
                 QString& error)
{
    if (file.isEmpty())
        return true;
    const QString path = absFile(folder, withSuffix(file, prjSuffix));
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
