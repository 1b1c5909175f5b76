#pragma once

#include "base/types.h"

#include <QString>

class IDevice;
class TCmdList;
class TDataCmd;
class TDeviceCache;
class TProg;
class TProgCache;

/// Binds the commands of the open project to the class that implements them, the chip and the programmer
/// in force at their place, and brings their parameters after it. Borrows what it works on. Not locked:
/// part of the project and used under its lock.
class TCmdBinder
{
public:
    TCmdBinder(TCmdList& commands, TDeviceCache& devices, TProgCache& progs);

    /// The command at index alone; nothing outside the list.
    void bind(int index);
    /// Every command, in one sweep over the list.
    void bindAll();
    void validateAll();
    /// Lets the devices renew stored parameters where the chip changed since they were made; whether one did.
    bool normalizeAll();
    /// Remembers for every command the chip that its parameters were made for.
    void markMadeFor();
    /// Stores changed parameters, binds and checks again as far as they reach.
    void setParam(TDataCmd& command, const TData& data);

    /// Name of the programmer in force at index; empty without one that is valid at its place.
    QString progBefore(int id_cfg, int index) const;
    /// Name of the chip in force at index.
    QString deviceBefore(int id_cfg, int index) const;
    /// Class word, or name of the chip, that a command of that word would belong to at index.
    QString classOfCmd(int id_cfg, int index, const QString& word) const;

private:
    /// What a place in the list inherits from the commands before it.
    struct TInForce
    {
        IDevice* owner = nullptr;  ///< class of the chip's own commands
        IDevice* family = nullptr; ///< the chip in force
        TProg* prog = nullptr;     ///< the programmer in force
    };

    TInForce inForceAt(int index);
    void bindTo(TDataCmd& command, const TInForce& inForce);
    void setDeviceParam(TDataCmd& command, const TData& data);
    void setAutoDetectParam(TDataCmd& command, const TData& data);

    TCmdList& m_commands;
    TDeviceCache& m_devices;
    TProgCache& m_progs;
};
