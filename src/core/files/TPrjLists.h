#pragma once

#include "core/files/TJsonListFile.h"

#include <QByteArray>
#include <QList>

/// One project list that the user can choose.
struct TPrjListEntry
{
    QString name;
    QString file;                       ///< as the user gave it; see TPrjListFile::path
    QJsonObject others = QJsonObject(); ///< what else the file says about it; kept and written back
};
bool operator==(const TPrjListEntry& a, const TPrjListEntry& b);

/// The list of project lists, by default "vm.lpl". Main thread.
class TPrjLists : public TJsonListFile
{
public:
    TPrjLists();

    /// False when the file cannot be read or is no list of lists; errorText() tells why. An empty file
    /// is an empty list.
    [[nodiscard]] bool read(const QString& file);
    /// Writes the entries, safely, unless the file holds them just so.
    [[nodiscard]] bool write(const QString& file);
    QByteArray toBytes() const;

    QList<TPrjListEntry> entries() const;
    void setEntries(const QList<TPrjListEntry>& entries);

private:
    QStringList lines() const;

    QList<TPrjListEntry> m_entries;
};
