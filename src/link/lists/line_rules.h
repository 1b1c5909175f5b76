#pragma once

#include <QString>
#include <QStringList>

#include <functional>

// The rules that all text lists of chips share. Any thread.

/// One line of a list "key=value": false for a line that is empty, begins with "#" or has no "=".
/// The line is trimmed first; the key ends at the first "=", and blanks around that belong to the texts.
bool splitPair(const QString& line, QString& key, QString& value);

/// The lines of a UTF-8 text file; line ends of any system. A file that cannot be read, or is larger
/// than 16 MiB and so no list at all, gives none.
QStringList readLines(const QString& file);

/// Gives every pair of a list file to fn, in file order, until fn returns false.
void readPairs(const QString& file, const std::function<bool(const QString& key, const QString& value)>& fn);

/// Absolute path of a file named by a list or a project, relative to the folder of devices that is given. A
/// name with
/// "\" that leads to no file is taken with "/" instead, so that lists may come from another system.
QString deviceFolderFile(const QString& devices, const QString& name);
