#include "link/wire/TPortUsers.h"

#include <QHash>
#include <QMutex>
#include <QMutexLocker>

namespace {

struct Users
{
    QMutex mutex; ///< nothing else is locked while it is held
    QHash<QString, QString> byPath;
};

Users& users()
{
    static Users table;
    return table;
}

} // namespace

bool TPortUsers::take(const QString& path, const QString& user, QString& holder)
{
    const QMutexLocker lock(&users().mutex);
    const auto found = users().byPath.constFind(path);
    if (found != users().byPath.constEnd()) {
        holder = *found;
        return false;
    }
    users().byPath.insert(path, user);
    return true;
}

void TPortUsers::release(const QString& path)
{
    const QMutexLocker lock(&users().mutex);
    users().byPath.remove(path);
}
