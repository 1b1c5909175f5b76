#include "core/model/TDeviceCache.h"

#include "core/model/IDevice.h"
#include "core/model/IDeviceCatalogue.h"
#include "core/model/shared_settings.h"
#include "link/lists/AutoList.h"

namespace {

// Entries of the list of families share the cache with the chips and may be named like one.
const QLatin1String autoPrefix("auto.lst|");

} // namespace

TDeviceCache::~TDeviceCache()
{
    freeAll();
}

void TDeviceCache::setCatalogue(IDeviceCatalogue* catalogue)
{
    m_catalogue = catalogue;
}

IDevice* TDeviceCache::device(const QString& name, const QString& file)
{
    return lookUp(name, name, file);
}

IDevice* TDeviceCache::lookUp(const QString& cacheKey, const QString& name, const QString& file)
{
    if (name.isEmpty())
        return nullptr;
    const auto hit = m_devices.constFind(cacheKey);
    if (hit != m_devices.cend())
        return hit.value();
    const QString question = cacheKey + QLatin1Char('\n') + file;
    if (!m_catalogue || (m_isSweep && m_failedLookups.contains(question)))
        return nullptr;
    IDevice* device = m_catalogue->create(name, file);
    if (device)
        m_devices.insert(cacheKey, device);
    else if (m_isSweep)
        m_failedLookups.insert(question);
    return device;
}

/// A class word is no chip: without a file it would make the class itself, empty.
IDevice* TDeviceCache::chip(const QString& name, const QString& file)
{
    return m_catalogue && m_catalogue->isClassWord(name) ? nullptr : lookUp(name, name, file);
}

IDevice* TDeviceCache::autoFamily(const QString& name)
{
    const QString cacheKey = autoPrefix + name;
    const auto hit = m_devices.constFind(cacheKey);
    if (hit != m_devices.cend())
        return hit.value();
    if (name.isEmpty() || (m_isSweep && m_failedLookups.contains(cacheKey)))
        return nullptr;
    const QString file = autoDeviceFile(devicesFolder(), name);
    IDevice* device = file.isEmpty() ? nullptr : lookUp(cacheKey, name, file);
    if (!device && m_isSweep)
        m_failedLookups.insert(cacheKey);
    return device;
}

void TDeviceCache::beginSweep()
{
    m_isSweep = true;
}

void TDeviceCache::endSweep()
{
    m_isSweep = false;
    m_failedLookups.clear();
}

void TDeviceCache::park()
{
    m_parked.append(m_devices.values());
    m_devices.clear();
}

void TDeviceCache::freeAll()
{
    park();
    qDeleteAll(m_parked);
    m_parked.clear();
}
