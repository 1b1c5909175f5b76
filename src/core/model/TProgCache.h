#pragma once

#include <QHash>
#include <QList>
#include <QString>

class TProg;

/// The programmer descriptions that the commands of the open project are bound to: each file is read once.
/// Owns them. Not locked: part of the project and used under its lock, which also guards the lists of
/// programmers in the settings.
class TProgCache
{
public:
    TProgCache() = default;
    ~TProgCache();
    TProgCache(const TProgCache&) = delete;
    TProgCache& operator=(const TProgCache&) = delete;

    /// The programmer that the settings name so; null when they do not, or when its description is missing.
    TProg* prog(const QString& name);
    /// Whether the settings let commands run on the programmer of that name.
    static bool isUsable(const QString& name);

    /// Takes all out of use; they stay valid objects until freeAll(), since a worker may use them.
    void park();
    void freeAll();

private:
    QHash<QString, TProg*> m_progs;
    QList<TProg*> m_parked;
};
