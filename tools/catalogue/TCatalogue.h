#pragma once

#include "TChip.h"

/// The whole catalogue: every file that follows from the tables.
class TCatalogue
{
public:
    /// Reads the tables of a folder; false with error() when one is missing or faulty, or a name stands
    /// twice.
    [[nodiscard]] bool read(const QString& tables);
    /// Writes the files into a folder of devices and removes those that an earlier run made and this one does
    /// not. Files without the generator's mark are left alone; one in the way is an error.
    [[nodiscard]] bool write(const QString& devices);
    QString error() const { return m_error; }
    int chipCount() const { return m_chipCount; }

private:
    void addFamily(const QString& folder, const QList<TChip>& chips);
    void addSignatures(const QString& folder, const QList<TChip>& chips, const QString& title);
    void addExtras(const TTable& aliases, const TTable& extras);
    bool addName(const QString& name, const QString& file);
    bool writeFile(const QString& path, const QByteArray& bytes);
    void removeStale(const QString& devices);

    QMap<QString, QByteArray> m_files;         ///< by path under the folder of devices
    QHash<QString, QString> m_names;           ///< chip to description
    QHash<QString, QString> m_extraSignatures; ///< folder to lines
    QByteArray m_list;                         ///< devices.lst
    QString m_error;
    int m_chipCount = 0;
};
