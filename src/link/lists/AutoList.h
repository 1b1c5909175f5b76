#pragma once

#include "link/lists/TPairStringList.h"

#include <QList>
#include <QStringList>

// The detections that auto_detect offers, from auto.lst in the folder of devices, which is given. Each call
// reads the file: ask once for a form and once for a command. Any thread. Of entries with one name the first
// counts.

/// One detection.
struct TAutoEntry
{
    QString name;
    QString device;     ///< description file of the family
    QString signatures; ///< file with the chips, relative to the folder of devices
};

/// Empty when the file is missing.
QList<TAutoEntry> autoEntries(const QString& devices);
/// Names of the entries in file order.
QStringList autoNames(const QString& devices);
/// Empty for a name that is not in the file.
QString autoDeviceFile(const QString& devices, const QString& name);
QString autoSignatureFile(const QString& devices, const QString& name);
/// Identification to chip name, in file order; empty when the entry or its file is missing.
TPairStringList autoSignatures(const QString& devices, const QString& name);
