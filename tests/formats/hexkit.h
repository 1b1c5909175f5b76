#pragma once

#include "support/tables.h"

// Intel HEX as the tests know it, written apart from the code under test.

inline QByteArray hexLine(int type, int offset, const QByteArray& data)
{
    const char head[] = {char(data.size()), char(offset >> 8), char(offset), char(type)};
    QByteArray bytes = QByteArray(head, sizeof head) + data;
    int sum = 0;
    for (const char c : bytes)
        sum += uchar(c);
    bytes.append(char(256 - sum % 256));
    return ":" + bytes.toHex().toUpper() + "\r\n";
}

inline QByteArray hexUpper(int type, int upper)
{
    return hexLine(type, 0, QByteArray().append(char(upper >> 8)).append(char(upper)));
}

inline const QByteArray hexEnd = ":00000001FF\r\n";
