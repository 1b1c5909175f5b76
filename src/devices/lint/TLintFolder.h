#pragma once

#include "devices/lint/lintDescription.h"

#include <QMap>

/// Reads a folder of devices, its lists and all descriptions under it, and collects what is wrong or
/// doubtful. Any thread.
class TLintFolder
{
public:
    explicit TLintFolder(const QString& folder);

    /// Reads all; false when the folder cannot be read.
    [[nodiscard]] bool run();
    /// "file:line: text", the lists first, then the descriptions by name.
    const QStringList& faults() const { return m_faults; }
    int descriptionCount() const { return m_descriptions.size(); }

private:
    struct Pair
    {
        int line;
        QString key;
        QString value;
    };

    QString path(const QString& file) const;
    void fault(const QString& file, int line, const QString& text);
    /// The pairs of a list, with a fault for each line that gives none and each blank beside the "=".
    QList<Pair> pairs(const QString& file);
    void readTypes();
    void readChips();
    void readFamilies();
    void readSignatures(const QString& file);
    void checkDescriptions();

    QString m_folder;
    QStringList m_descriptions;                ///< all under the folder, relative
    QSet<QString> m_chips;                     ///< those that devices.lst names
    QSet<QString> m_families;                  ///< those that auto.lst names
    QHash<QString, int> m_types;               ///< types.lst
    QMap<QString, QSet<QString>> m_signatures; ///< by signature list
    QStringList m_faults;
};
