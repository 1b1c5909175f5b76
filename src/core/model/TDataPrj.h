#pragma once

#include "base/TFileStamp.h"
#include "base/types.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QRecursiveMutex>
#include <QSet>
#include <QStringList>

#include <functional>

class IDevice;
class IDeviceCatalogue;
class TDataCfg;
class TDataCmd;
class TProg;

/// What a worker needs of its next command, taken in one step under the project's lock.
struct TRunStep
{
    /// Whether there is a next command; Gone: the command before it, or the configuration, was deleted
    /// meanwhile, so that nobody knows what comes next.
    enum class State { End, Found, Gone };

    State state = State::End;
    TData data;                ///< the whole command
    IDevice* device = nullptr; ///< class that implements it; null without a chip before it
    bool validDev = false;
    bool validParam = false;
};

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
    /// What a place in the list inherits from the commands before it.
    struct TInForce
    {
        IDevice* owner = nullptr;  ///< class of the chip's own commands
        IDevice* family = nullptr; ///< the chip in force
        TProg* prog = nullptr;     ///< the programmer in force
    };
    struct TPlace
    {
        int index = -1; ///< in the list of all commands
        int row = -1;   ///< within the configuration
    };

    void freeAll();
    TDataCmd* cmdInList(int index) const;
    TPlace placeOf(int id_cmd) const;
    int indexForNew(int id_cfg, int index) const;
    int firstPlaceFor(int id_cfg) const;
    template <typename Predicate> void takeOutIf(const Predicate& leaves);
    /// Index of the nearest command at or before index in its configuration for which stops is true.
    template <typename Predicate> int walkBack(int id_cfg, int index, const Predicate& stops) const;
    /// End of the commands behind index that hang on the chip set there.
    int endOfChip(int index) const;

    TInForce inForceAt(int index);
    void bindTo(TDataCmd& command, const TInForce& inForce);
    IDevice* lookUp(const QString& cacheKey, const QString& name, const QString& file);
    IDevice* chip(const QString& name, const QString& file);
    IDevice* autoFamily(const QString& name);
    bool isUsable(const QString& prog) const;
    bool renew(TDataCmd& command);
    void setDeviceParam(TDataCmd& command, const TData& data);
    void setAutoDetectParam(TDataCmd& command, const TData& data);
    void mergeParam(TDataCmd& command, const TData& data);

    mutable QRecursiveMutex m_mutex;
    bool m_changed = false;
    quint64 m_revision = 0;
    TFileStamp m_stamp;
    QString m_name;
    QString m_prjFile;
    QString m_workPath;
    QList<TDataCfg*> m_configurations;
    QList<TDataCmd*> m_commands;
    QHash<int, TDataCmd*> m_cmdById;
    QHash<int, int> m_cmdCountOfCfg;
    /// Filled at the first question after the list has changed.
    mutable QHash<int, TPlace> m_places;
    QHash<QString, IDevice*> m_devices;
    QHash<QString, TProg*> m_progs;
    IDeviceCatalogue* m_catalogue = nullptr;
    /// Lookups that led nowhere, while bindAll is under way: each reads a file.
    QSet<QString> m_failedLookups;
    bool m_isSweep = false;
    // Taken out of the project while a worker may still use it; deleted when the project is cleared.
    QList<TDataCfg*> m_parkedCfgs;
    QList<TDataCmd*> m_parkedCmds;
    QList<IDevice*> m_parkedDevices;
    QList<TProg*> m_parkedProgs;
};

/// The one open project.
TDataPrj& project();
