#pragma once

#include <QByteArray>
#include <QList>

#include <functional>

// The text of an INI file line by line, taken apart as QSettings does, but that every line ends for itself:
// what QSettings would throw away when it writes a file (comments, the order, lines that are no setting)
// stays where it is. Any thread.

/// Numbers, from 1 on, of the lines that are neither a setting, a group, a comment nor empty, or that have a
/// quote which is not closed; at most limit.
QList<int> brokenIniLines(const QByteArray& text, int limit);
/// The text for QSettings, which would take all that follows an open quote for its value: every line is
/// closed where it ends. Text without such lines comes back as it is.
QByteArray closedIni(const QByteArray& text);
/// The value of a key "Group/Key" as it stands in the file, without blanks around it; null without the key.
QByteArray rawIniValue(const QByteArray& text, const QByteArray& key);
/// The settings of fresh in the text of old: a key that is there is replaced on its line, a new one goes
/// behind the others of its group. Keys "Group/Key" that isDropped names and fresh does not have are taken
/// out. fresh is a text that QSettings has written.
QByteArray mergedIni(const QByteArray& old, const QByteArray& fresh,
                     const std::function<bool(const QByteArray& key)>& isDropped);
