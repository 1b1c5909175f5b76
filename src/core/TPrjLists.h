#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// One project list that the user can choose.
struct TPrjListEntry
{
    QString name;
    QString file; ///< as the user gave it; see TPrjListFile::path
};

/// The list of project lists, by default "vm.lpl". Main thread.
class TPrjLists
{
public:
    /// False when the file cannot be read or is no list of lists; errorText() tells why. An empty file
    /// is an empty list.
    [[nodiscard]] bool read(const QString& file);
    /// Writes the entries, safely, unless the file holds them just so.
    [[nodiscard]] bool write(const QString& file);
    QByteArray toBytes() const;

    QList<TPrjListEntry> entries() const;
    void setEntries(const QList<TPrjListEntry>& entries);
    QString errorText() const;

private:
    QList<TPrjListEntry> m_entries;
    QString m_errorText;
};
