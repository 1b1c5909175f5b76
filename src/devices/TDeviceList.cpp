#include "devices/TDeviceList.h"

#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/shared_settings.h"
#include "devices/prog/TDevProg.h"
#include "devices/shared/TFamily.h"
#include "devices/shared/description.h"
#include "devices/tools/TDevTools.h"
#include "link/lists/line_rules.h"

namespace {

template <class Device> IDevice* make(const QString& name, const TData& data)
{
    return new Device(name, data);
}

} // namespace

TDeviceList::TDeviceList()
    : m_factories{{dev_class::tools, make<TDevTools>}, {dev_class::prog, make<TDevProg>}}
{
    for (const TFamily& family : families())
        m_factories.insert(family.word, family.make);
}

TDeviceList::Factory TDeviceList::factory(const QString& name, const QString& file, TData& data) const
{
    if (file.isEmpty())
        return m_factories.value(name);
    const QString path = deviceFolderFile(devicesFolder(), file);
    data = readDescription(path);
    data[key::dev_file] = path;
    return m_factories.value(data.value(key::gui_type).toString());
}

IDevice* TDeviceList::create(const QString& name, const QString& file)
{
    TData data;
    const Factory make = factory(name, file, data);
    return make ? make(name, data) : nullptr;
}

bool TDeviceList::isClassWord(const QString& word) const
{
    return m_factories.contains(word);
}

QHash<QString, QString> TDeviceList::deviceFiles()
{
    QHash<QString, QString> files;
    readPairs(deviceFolderFile(devicesFolder(), QStringLiteral("devices.lst")),
              [&files](const QString& name, const QString& file) {
                  files[name] = file;
                  return true;
              });
    return files;
}

int TDeviceList::typeNumber(const QString& word)
{
    return ::typeNumber(word);
}
