#pragma once

class IDevice;
class QString;

/// Where the project model gets its devices from, without knowing any chip family.
class IDeviceCatalogue
{
public:
    virtual ~IDeviceCatalogue() = default;

    /// A new device for a chip name and its description file, owned by the caller; null when there is
    /// no class for it. An empty file takes the name itself as class word ("Prog", "Tools").
    virtual IDevice* create(const QString& name, const QString& file) = 0;
    /// The word is that of a class, so that it can be no name of a chip. Any thread.
    virtual bool isClassWord(const QString& word) const = 0;
};
