#pragma once

#include "base/types.h"
#include "core/model/TBinding.h"

#include <QMutex>

class IDevice;
class TProg;

/// One command of the open project. Owned by TDataPrj; every method locks the object and may be
/// called from any thread. Lock order is project, then command: nothing here calls a device or the
/// project with the lock held.
class TDataCmd
{
public:
    /// Takes status, id_cfg and cmd from data and the other keys, but the reserved ones, as parameters.
    /// Gives the command the next id.
    explicit TDataCmd(const TData& data);
    virtual ~TDataCmd();
    TDataCmd(const TDataCmd&) = delete;
    TDataCmd& operator=(const TDataCmd&) = delete;

    /// The parameters plus id_cmd, id_cfg, status, cmd, valid_dev, valid_param.
    TData toData() const;
    void fromData(const TData& data);
    /// Merges all keys of data but the reserved ones.
    void setParam(const TData& data);
    void clearParam();
    QVariant param(const QString& key) const;

    /// Lets the device bring the parameters up to date; true when they changed.
    bool normalize();
    /// Asks the device for the check of the parameters, stores and returns it; false without a device.
    bool validate();

    int id() const;
    int cfgId() const;
    QString cmd() const;
    bool status() const;
    void setStatus(bool status);
    bool validDev() const;
    bool validParam() const;
    void setValidParam(bool valid);

    /// The class that implements the command: tools, programmer or family; borrowed, may be null.
    /// Stays a valid object until the project is cleared, as do the two below.
    IDevice* device() const;
    /// The chip in force; borrowed, may be null.
    IDevice* family() const;
    /// The programmer in force; borrowed, may be null.
    TProg* prog() const;
    /// The command with the three of them, taken at once.
    TBinding binding();
    void bind(IDevice* device, IDevice* family, TProg* prog, bool validDev);

    /// Name of the chip that the parameters were made for: the first one that the command was bound to,
    /// until setMadeFor. Empty as long as there was none.
    QString madeFor() const;
    void setMadeFor(const QString& family);

    /// Takes the keys of a whole command that are no parameters out of data.
    static void removeReserved(TData& data);
    /// The next command gets id 0. Only after all commands are gone.
    static void resetCounter();

private:
    void take(const TData& data);

    mutable QMutex m_mutex;
    const int m_idCmd;
    int m_idCfg = -1;
    bool m_status = false;
    bool m_validDev = false;
    bool m_validParam = false;
    QString m_cmd;
    TData m_param;
    IDevice* m_device = nullptr;
    IDevice* m_family = nullptr;
    TProg* m_prog = nullptr;
    QString m_madeFor;
};
