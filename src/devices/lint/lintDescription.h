#pragma once

#include "devices/shared/TFamilyRules.h"

#include <QStringList>

/// The faults and doubts in one description, "file:line: text": keys that the family does not know or that
/// are missing, values that do not read or are out of range, sizes that do not fit each other, faulty forms.
/// wholeChip is false for a description that only serves automatic detection.
QStringList lintDescription(const QString& path, bool wholeChip, const TLintLists& lists);
