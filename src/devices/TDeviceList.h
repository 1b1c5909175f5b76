#pragma once

#include "base/types.h"
#include "core/model/IDeviceCatalogue.h"

#include <QHash>
#include <QStringList>

#include <functional>

class IDevice;

/// The device catalogue: which class serves a chip, from the text files in the folder of devices.
class TDeviceList : public IDeviceCatalogue
{
public:
    /// Makes a device of a class, owned by the caller.
    using Factory = std::function<IDevice*(const QString& name, const TData& data)>;

    TDeviceList();

    /// The factory for a chip, and its description in data; an empty function when there is none.
    Factory factory(const QString& name, const QString& file, TData& data) const;
    IDevice* create(const QString& name, const QString& file) override;
    bool isClassWord(const QString& word) const override;
    /// devices.lst: chip name to description file.
    static QHash<QString, QString> deviceFiles();
    /// Number of a family in types.lst, 0 when it is missing.
    static int typeNumber(const QString& word);

private:
    QHash<QString, Factory> m_factories;
};

/// The device catalogue. Never changes.
TDeviceList& deviceList();
