#include "link/lists/AutoList.h"

#include "link/lists/line_rules.h"

namespace {

TAutoEntry entryOf(const QString& name)
{
    for (const TAutoEntry& entry : autoEntries()) {
        if (entry.name == name)
            return entry;
    }
    return {};
}

} // namespace

QList<TAutoEntry> autoEntries()
{
    QList<TAutoEntry> entries;
    readPairs(deviceFolderFile(QStringLiteral("auto.lst")),
              [&entries](const QString& name, const QString& value) {
                  const QStringList parts = value.split(QLatin1Char('|'), Qt::SkipEmptyParts);
                  if (parts.size() == 2)
                      entries.append({name, parts.at(0), parts.at(1)});
                  return true;
              });
    return entries;
}

QStringList autoNames()
{
    QStringList names;
    for (const TAutoEntry& entry : autoEntries())
        names.append(entry.name);
    return names;
}

QString autoDeviceFile(const QString& name)
{
    return entryOf(name).device;
}

QString autoSignatureFile(const QString& name)
{
    return entryOf(name).signatures;
}

TPairStringList autoSignatures(const QString& name)
{
    const QString file = autoSignatureFile(name);
    return file.isEmpty() ? TPairStringList() : TPairStringList::fromFile(deviceFolderFile(file));
}
