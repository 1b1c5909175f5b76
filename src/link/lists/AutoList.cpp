#include "link/lists/AutoList.h"

#include "link/lists/line_rules.h"

namespace {

TAutoEntry entryOf(const QString& devices, const QString& name)
{
    for (const TAutoEntry& entry : autoEntries(devices)) {
        if (entry.name == name)
            return entry;
    }
    return {};
}

} // namespace

QList<TAutoEntry> autoEntries(const QString& devices)
{
    QList<TAutoEntry> entries;
    readPairs(deviceFolderFile(devices, QStringLiteral("auto.lst")),
              [&entries](const QString& name, const QString& value) {
                  const QStringList parts = value.split(QLatin1Char('|'), Qt::SkipEmptyParts);
                  if (parts.size() == 2)
                      entries.append({name, parts.at(0), parts.at(1)});
                  return true;
              });
    return entries;
}

QStringList autoNames(const QString& devices)
{
    QStringList names;
    for (const TAutoEntry& entry : autoEntries(devices))
        names.append(entry.name);
    return names;
}

QString autoDeviceFile(const QString& devices, const QString& name)
{
    return entryOf(devices, name).device;
}

QString autoSignatureFile(const QString& devices, const QString& name)
{
    return entryOf(devices, name).signatures;
}

TPairStringList autoSignatures(const QString& devices, const QString& name)
{
    const QString file = autoSignatureFile(devices, name);
    return file.isEmpty() ? TPairStringList() : TPairStringList::fromFile(deviceFolderFile(devices, file));
}
