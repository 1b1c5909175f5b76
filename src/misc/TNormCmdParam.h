#pragma once

#include "base/types.h"

class IDevice;
class QWidget;
class TProg;

// Recurring parameter shapes of commands: reading, checking, texts and defaults. All functions are
// re-entrant and hold no state; they fail by a zero value, never loudly.

/// The value under key; an invalid variant if it is missing, and a line in the diagnostic log when the
/// setting Debug is 1. source and line tell who asked.
QVariant getParam(const char* source, int line, const TData& data, const QString& key);

/// A whole number of any size; a missing one is 0. False for text that is none, and for a number beyond 64
/// bits: conversion alone would make 0 of both.
bool readNumber(const QVariant& value, qint64& number);
/// The same for a number of 32 bits with a sign: the rest would be cut off where it is used.
bool readInt(const QVariant& value, qint64& number);
/// A flag that isFlagSet reads as it is meant: a missing one, a number of 32 bits, "true" or "false". Other
/// text would pass for "no".
bool isFlag(const QVariant& value);
/// Every one of these parameters is a number or missing.
template <typename... Keys> bool areNumbers(const TData& data, const Keys&... keys)
{
    qint64 number = 0;
    return (readNumber(data.value(keys), number) && ...);
}

/// A memory region of a chip: the last address is begin + size - 1.
struct TRegion
{
    qint64 begin = 0;
    qint64 size = 0;
};
/// Which of a description's three regions.
enum class Region { Whole, Flash, Eeprom };
TRegion regionOf(const IDevice& device, Region region);
/// addr + count - 1 without overflow; addr - 1 for a count below 1.
qint64 lastAddress(qint64 addr, qint64 count);

// Shape char: addr_device, count, fill_char.
void charParam(const TData& data, qint64& addr, qint64& count, quint8& fill);
bool validChar(const TData& data, qint64 begin, qint64 size);
QString textChar(const TData& data);
void defaultChar(TData& data, qint64 begin, qint64 size, uint fill);
bool validChar(const TData& data, const IDevice& device, Region region);
/// Fills with 255.
void defaultChar(TData& data, const IDevice& device, Region region);

// Shape data: addr_device, data.
void dataParam(const TData& data, qint64& addr, QString& hexText);
bool validData(const TData& data, qint64 begin, qint64 size);
/// form is the command's open form or null; a read command's form shows its result, which then is the text.
QString textData(const TData& data, const QString& cmd, QWidget* form);
/// The range alone, "0x%1..0x%2".
QString textDataRange(const TData& data);
void defaultData(TData& data, qint64 addr, const QString& hexText);
bool validData(const TData& data, const IDevice& device, Region region);
/// No data, at the begin of the region.
void defaultData(TData& data, const IDevice& device, Region region);

// Shape file: format, file, addr_file, addr_device, count.
void fileAddrParam(const TData& data, qint64& addr_file, qint64& addr_device, qint64& count);
bool validFile(const TData& data, qint64 begin, qint64 size);
QString textFile(const TData& data);
void defaultFile(TData& data, qint64 begin, qint64 size);
bool validFile(const TData& data, const IDevice& device, Region region);
void defaultFile(TData& data, const IDevice& device, Region region);

// Shape leave: state, one letter for each pin; with a reset also reset and duration in ms.
/// The state of the command, fitted to the pins that its programmer has for its chip; as it is without
/// a chip or a programmer.
QString leaveState(int id_cmd);
/// The same, a command without a chip taking the pins of no section.
QString leaveStateAny(int id_cmd);
QString textLeave(const TData& data, bool withReset);
/// Payload of the leave command: duration in ms, or 0 without a reset, and the pins.
QByteArray leavePayload(int id_cmd, bool withReset);
bool validLeave(const TData& data, bool withReset);
void defaultLeave(TData& data, bool withReset);
/// All letters of state are pin states of the programmer.
bool validState(const QString& state, const TProg& prog);
/// A duration in ms as s16 little-endian, then the code of each pin of state.
QByteArray pinPayload(int duration, const QString& state);
/// As it goes on the wire, low byte first. A duration that the field cannot carry becomes the longest
/// of its sign, so that the polarity of a pulse never turns.
QByteArray durationBytes(int duration);

// Shape clock: clk in Hz.
QString textClk(const TData& data);
bool validClk(const TData& data);
void defaultClk(TData& data, const QString& section);

/// state cut or padded on the right with '-' to n characters.
QString padState(const QString& state, int n);

// Value texts.
/// Bytes; powers of two from 1024 on, and 192, 384 and 768 KiB, in the larger units.
QString textSize(qint64 n);
QString textFreq(qint64 hz);
QString textFreqDuty(qint64 hz, int duty);
QString textRange(qint64 addr, qint64 count, quint8 fill);
QString textRangeHex(qint64 addr, const QString& hexText);
/// Bytes that were read, as the log tells them: the first 32, and "..." where there are more.
QString textFirstBytes(const QString& hexText);
/// Hexadecimal, upper case, at least two digits.
QString hex(int n);
QString hex(uint n);
QString hex(qlonglong n);
uint fromHex(const QString& s);
/// Bytes that a hexadecimal text gives, blanks not counting; -1 for an empty one, for half a byte and for
/// text that is none.
int hexLength(const QString& s);
/// White space does not count.
QByteArray hexToBytes(const QString& s);
QString bytesToHex(const QByteArray& bytes);
/// bytesToHex with a blank wherever pattern has one.
QString bytesToHexLike(const QString& pattern, const QByteArray& bytes);
QString textCompare(qint64 addr, quint8 expected, quint8 read);
