#pragma once

#include "base/TFileStamp.h"
#include "base/types.h"
#include "core/model/TBinding.h"
#include "core/model/TCfgList.h"
#include "core/model/TCmdBinder.h"
#include "core/model/TCmdList.h"
#include "core/model/TDeviceCache.h"
#include "core/model/TProgCache.h"
#include "core/model/TRunStep.h"

#include <QList>
#include <QObject>
#include <QRecursiveMutex>
#include <QStringList>

#include <functional>

class IDevice;
class IDeviceCatalogue;
class TDataCfg;
class TDataCmd;
class TProg;

/// The open project: configurations, commands, and what is in force at each command. All methods but
/// cmdAt lock the project's recursive mutex and may be called from any thread. Signals may be emitted
/// with the lock held: a receiver on another thread is queued, a receiver on the main thread must not
/// process events or show a window in a direct connection.
class TDataPrj : public QObject
{
    Q_OBJECT

public:
    TDataPrj();
    ~TDataPrj() override;

    /// Where devices come from; borrowed.
    void setCatalogue(IDeviceCatalogue* catalogue);

    bool isOpen() const;
    bool isChanged() const;
    void setChanged();
    void clearChanged();
    /// Counts the changes: a snapshot of the project is of one revision.
    quint64 revision() const;
    /// Its file holds the project of that revision, which stamp has taken: clears the flag of changes, but
    /// not for one that came later.
    void setStored(quint64 revision, const TFileStamp& stamp);
    /// Somebody else has written the project's file since it was read or saved here.
    bool isFileOutdated() const;
    /// prj_file and work_path.
    void fromData(const TData& data);
    TData toData() const;
    /// Closes the open project and frees everything that was parked; nothing when none is open.
    /// No run may be active.
    void clear();
    /// Empties the project also when no file name was set, as a load that failed leaves it.
    void reset();
    /// Forgets the cached devices and programmers, which stay valid objects until clear(); follow it
    /// with bindAll().
    void clearCaches();
    QString name() const;
    void setName(const QString& name);
    /// Absolute project file; empty when no project is open.
    QString file() const;
    void setFile(const QString& file);
    /// Base of relative data file paths.
    QString workPath() const;
    /// Runs fn under the project's lock; for the lists in TAppData that workers read.
    void locked(const std::function<void()>& fn) const;

    // Configurations. A negative index appends. An unknown id does nothing, reads empty, or is -1.
    int addCfg(const QString& name, const QString& description, int index);
    void removeCfg(int id_cfg);
    /// Moves the configuration and its commands with it.
    void moveCfg(int from, int to);
    void setCfgName(int id_cfg, const QString& name);
    void setCfgDescription(int id_cfg, const QString& text);
    void setCfgStatus(int id_cfg, int status);
    int cfgStatus(int id_cfg) const;
    TDataCfg* cfgById(int id_cfg) const;
    int indexCfg(int id_cfg) const;
    int cfgIdAt(int index) const;
    QString cfgName(int id_cfg) const;
    QString cfgDescription(int id_cfg) const;
    int cfgIdByName(const QString& name) const;
    QStringList cfgNames() const;
    QList<TDataCfg*> cfgList() const;

    // Commands. Callers of addCmd and of the removals call bindAll() afterwards.
    /// Inserts at index if that lies inside the list, else appends; returns the new id. The place is
    /// moved as far as it takes to keep the commands of a configuration together and in its turn.
    int addCmd(const TData& data, int index);
    /// Stores changed parameters, binds and checks again as far as they reach, and reports the command
    /// by signalChangeData.
    void setCmdParam(int id_cmd, const TData& data);
    void moveCmd(int id_cmd, int delta);
    void removeCmd(int id_cmd);
    void removeCmdsOfCfg(int id_cfg);
    void removeDeviceCmds(int id_cmd);
    void setCmdStatus(int id_cmd, bool status);
    void setCfgCmdStatus(int id_cfg, bool status);
    TDataCmd* cmdById(int id_cmd) const;
    /// The command with what it is bound to; all null for an unknown id.
    TBinding binding(int id_cmd) const;
    /// No lock and no bounds check.
    TDataCmd* cmdAt(int index) const;
    int cmdIdAt(int index) const;
    int cmdCount() const;
    int indexCmd(int id_cmd) const;
    int cfgOfCmd(int id_cmd) const;
    int indexCfgOfCmd(int id_cmd) const;
    /// Key words of all commands in list order.
    QStringList commandKeys() const;
    QList<TDataCmd*> cmdsOfCfg(int id_cfg) const;
    QList<TDataCmd*> cmdList() const;
    bool hasInvalidDev(int id_cfg) const;
    bool hasEnabled(int id_cfg) const;
    /// Position within the configuration; -1 if the command belongs to another one.
    int rowInCfg(int id_cfg, int id_cmd) const;

    // Binding.
    void bindCmd(int index);
    void bindAll();
    /// Lets the devices renew stored parameters where the chip changed since they were made.
    void normalizeAll();
    void validateAll();
    /// Remembers for every command the chip that its parameters were made for: after a load.
    void markMadeFor();
    /// The next checked command of the configuration behind id_cmd; from the start of the list for a
    /// negative id; null at the end and for an id that is gone.
    TDataCmd* nextCmd(int id_cfg, int id_cmd) const;
    TRunStep nextStep(int id_cfg, int id_cmd) const;
    QString classOfCmd(int id_cfg, int index, const QString& cmd) const;
    QString deviceBefore(int id_cfg, int index) const;
    QString progBefore(int id_cfg, int index) const;
    int indexProgBefore(int id_cmd) const;
    int indexProgDeviceBefore(int id_cmd) const;
    bool dependsOnDevice(int index) const;
    IDevice* deviceFor(const QString& name, const QString& file);
    TProg* prog(const QString& name);
    QStringList familyCmdList(int id_cmd) const;
    QStringList progCmdList(int id_cmd) const;

signals:
    void signalChangeData(TCodeView code, TData param);
    void signalChangePrj(bool change);

private:
    void freeAll();

    mutable QRecursiveMutex m_mutex;
    bool m_changed = false;
    quint64 m_revision = 0;
    TFileStamp m_stamp;
    QString m_name;
    QString m_prjFile;
    QString m_workPath;
    TCfgList m_configurations;
    TCmdList m_commands;
    TDeviceCache m_devices;
    TProgCache m_progs;
    TCmdBinder m_binder;
};

/// The one open project.
TDataPrj& project();
