#pragma once

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

class IDevice;
class IDeviceCatalogue;

/// The devices that the commands of the open project are bound to: each is made once and shared. Owns
/// them. Not locked: part of the project and used under its lock.
class TDeviceCache
{
public:
    TDeviceCache() = default;
    ~TDeviceCache();
    TDeviceCache(const TDeviceCache&) = delete;
    TDeviceCache& operator=(const TDeviceCache&) = delete;

    /// Where devices come from; borrowed. Without one only what is here already is found.
    void setCatalogue(IDeviceCatalogue* catalogue);

    /// The device of that name, made from the description file if it is not here yet; null when there is
    /// none. An empty file takes the name itself for a class word.
    IDevice* device(const QString& name, const QString& file);
    /// The same for a chip: a class word is none.
    IDevice* chip(const QString& name, const QString& file);
    /// The family of that name in the list for automatic detection; null when there is none.
    IDevice* autoFamily(const QString& name);

    /// From beginSweep() to endSweep() a question that led nowhere is not asked again: each reads a file.
    void beginSweep();
    void endSweep();

    /// Takes all devices out of use; they stay valid objects until freeAll(), since a worker may use them.
    void park();
    void freeAll();

private:
    IDevice* lookUp(const QString& cacheKey, const QString& name, const QString& file);

    QHash<QString, IDevice*> m_devices;
    QList<IDevice*> m_parked;
    IDeviceCatalogue* m_catalogue = nullptr;
    QSet<QString> m_failedLookups;
    bool m_isSweep = false;
};
