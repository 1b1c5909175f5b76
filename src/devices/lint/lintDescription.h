#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

/// What the lists of a folder of devices say that a description must agree with.
struct TLintLists
{
    QHash<QString, int> types; ///< families by word
    QSet<QString> signatures;  ///< of the signature.lst beside the description
};

/// The faults and doubts in one description, "file:line: text": keys that the family does not know or that
/// are missing, values that do not read or are out of range, sizes that do not fit each other, faulty forms.
/// wholeChip is false for a description that only serves automatic detection.
QStringList lintDescription(const QString& path, bool wholeChip, const TLintLists& lists);
