#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class TDataCfg;

/// The configurations of the open project in the order of their tabs. Owns them, also those taken out,
/// which a worker may still use. Not locked: part of the project and used under its lock.
class TCfgList
{
public:
    TCfgList() = default;
    ~TCfgList();
    TCfgList(const TCfgList&) = delete;
    TCfgList& operator=(const TCfgList&) = delete;

    const QList<TDataCfg*>& all() const { return m_configurations; }
    /// Null outside the list.
    TDataCfg* value(int index) const { return m_configurations.value(index); }
    /// Null for an unknown id.
    TDataCfg* byId(int id_cfg) const { return value(indexOf(id_cfg)); }
    /// -1 for an unknown id.
    int indexOf(int id_cfg) const;
    /// -1 outside the list.
    int idAt(int index) const;
    QStringList names() const;

    /// Inserts at index, appends for one outside the list; returns the new id.
    int add(const QString& name, const QString& description, int index);
    /// False outside the list.
    bool canMove(int from, int to) const;
    void move(int from, int to) { m_configurations.move(from, to); }
    /// The index must lie in the list.
    void removeAt(int index) { m_parked.append(m_configurations.takeAt(index)); }

    /// Deletes all, also what was taken out; ids begin again.
    void freeAll();

private:
    QList<TDataCfg*> m_configurations;
    QList<TDataCfg*> m_parked;
};
