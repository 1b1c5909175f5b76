#pragma once

#include <QStringList>

class ICRC;

/// A new computation of the checksum with that name, compared with case; owned by the caller. Null for a name
/// that the catalogue does not have.
ICRC* createCRC(const QString& name);

/// The names that the user is offered, from the file crc.lst in the folder of the executable, in the order of
/// the file; empty when there is no such file.
QStringList crcNames();
