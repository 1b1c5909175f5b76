#pragma once

#include "core/model/TRunStep.h"

#include <QHash>
#include <QList>
#include <QStringList>

#include <functional>

class TDataCfg;
class TDataCmd;

/// The commands of the open project in their order, those of a configuration in one block, and the walks
/// over them. Owns them, also those taken out, which a worker may still use. Not locked: part of the
/// project and used under its lock.
class TCmdList
{
public:
    /// Which commands are meant: the index in the list and the command there.
    using TWhich = std::function<bool(int, const TDataCmd*)>;

    TCmdList() = default;
    ~TCmdList();
    TCmdList(const TCmdList&) = delete;
    TCmdList& operator=(const TCmdList&) = delete;

    const QList<TDataCmd*>& all() const { return m_commands; }
    int size() const { return m_commands.size(); }
    /// No bounds check.
    TDataCmd* at(int index) const { return m_commands.at(index); }
    /// Null outside the list.
    TDataCmd* value(int index) const { return m_commands.value(index); }
    TDataCmd* byId(int id_cmd) const { return m_byId.value(id_cmd); }
    /// -1 for an unknown id.
    int indexOf(int id_cmd) const { return placeOf(id_cmd).index; }
    /// Position within the configuration; -1 for an unknown id.
    int rowOf(int id_cmd) const { return placeOf(id_cmd).row; }
    QList<TDataCmd*> ofCfg(int id_cfg) const;
    /// Key words of all commands in list order.
    QStringList keys() const;
    bool hasInvalidDev(int id_cfg) const;
    bool hasEnabled(int id_cfg) const;

    /// Takes the command over. Inserts at index, appends for one outside the list; moved as far as it takes
    /// to keep the blocks together and in the turn of the project's configurations.
    void insert(TDataCmd* command, int index, const QList<TDataCfg*>& configurations);
    /// False, and nothing moves, when the way leads out of the configuration or the list.
    bool move(int id_cmd, int delta);
    /// Brings the blocks into the turn of the configurations; what belongs to none of them comes last.
    void sort(const QList<TDataCfg*>& configurations);
    /// False for an unknown id.
    bool remove(int id_cmd);
    void removeIf(const TWhich& leaves);
    /// Removes the chip's own commands that hang on what is in force at index; before is called if there is
    /// something for them to hang on, before anything is removed.
    void removeOfChip(int index, const std::function<void()>& before);

    /// Index of the nearest set_prog at or before index in the configuration; -1 without one.
    int progBefore(int id_cfg, int index) const;
    /// The same for set_prog or set_device, whichever is nearer.
    int progOrChipBefore(int id_cfg, int index) const;
    /// The same for the nearest set_device that is valid at its place.
    int validChipBefore(int id_cfg, int index) const;
    /// End of the commands behind index that hang on the chip set there.
    int endOfChip(int index) const;
    /// A chip's own command hangs on the chip set at index; false outside the list.
    bool dependsOnDevice(int index) const;
    /// The next checked command of the configuration behind id_cmd; from the start of the list for a
    /// negative id; null at the end and for an id that is gone.
    TDataCmd* next(int id_cfg, int id_cmd) const;
    /// The same as a snapshot, which tells the end from an id that is gone.
    TRunStep nextStep(int id_cfg, int id_cmd) const;
    /// The word is that of a chip's own command.
    static bool isOfChip(const QString& word);

    /// Deletes all, also what was taken out; ids begin again.
    void freeAll();

private:
    struct TPlace
    {
        int index = -1; ///< in the list of all commands
        int row = -1;   ///< within the configuration
    };

    TPlace placeOf(int id_cmd) const;
    int indexForNew(int id_cfg, int index, const QList<TDataCfg*>& configurations) const;
    /// Index of the nearest command at or before index in its configuration for which stops is true.
    template <typename Predicate> int walkBack(int id_cfg, int index, const Predicate& stops) const;

    QList<TDataCmd*> m_commands;
    QList<TDataCmd*> m_parked;
    QHash<int, TDataCmd*> m_byId;
    QHash<int, int> m_countOfCfg;
    /// Filled at the first question after the list has changed.
    mutable QHash<int, TPlace> m_places;
};
