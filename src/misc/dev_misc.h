#pragma once

#include "base/types.h"

// Parameter readers of the executors. They take a command's data; addr_last is inclusive.

void execChar(const TData& data, qint64& addr_first, qint64& addr_last, quint8& fill);
void execData(const TData& data, qint64& addr_first, qint64& addr_last, QByteArray& bytes, QString& hexText);
/// path is absolute (relative ones against the project's folder), format in lower case.
void execFile(const TData& data, qint64& addr_file, qint64& addr_first, qint64& addr_last, QString& path,
              QString& format);
/// What stands on the wire for the command's clock; 0 without a chip or programmer.
int execClk(const TData& data);
