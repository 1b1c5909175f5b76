#pragma once

#include "core/types.h"

class IDevice;
class QWidget;

// Recurring parameter shapes of commands: reading, checking, texts and defaults. All functions are
// re-entrant and hold no state; they fail by a zero value, never loudly.

/// The value under key; an invalid variant if it is missing, and a line in the diagnostic log when the
/// setting Debug is 1. source and line tell who asked.
QVariant getParam(const char* source, int line, const TData& data, const QString& key);

/// A memory region of a chip: the last address is begin + size - 1.
struct TRegion
{
    qint64 begin = 0;
    qint64 size = 0;
};
/// Which of a description's three regions.
enum class Region { Whole, Flash, Eeprom };
TRegion regionOf(const IDevice& device, Region region);

// Shape char: addr_device, count, fill_char.
void charParam(const TData& data, qint64& addr, qint64& count, quint8& fill);
bool validChar(const TData& data, qint64 begin, qint64 size);
QString textChar(const TData& data);
void defaultChar(TData& data, qint64 begin, qint64 size, uint fill);

// Shape data: addr_device, data.
void dataParam(const TData& data, qint64& addr, QString& hexText);
bool validData(const TData& data, qint64 begin, qint64 size);
/// form is the command's open form or null; a read command's form shows its result, which then is the text.
QString textData(const TData& data, const QString& cmd, QWidget* form);
void defaultData(TData& data, qint64 addr, const QString& hexText);

// Shape file: format, file, addr_file, addr_device, count.
void fileAddrParam(const TData& data, qint64& addr_file, qint64& addr_device, qint64& count);
bool validFile(const TData& data, qint64 begin, qint64 size);
QString textFile(const TData& data);
void defaultFile(TData& data, qint64 begin, qint64 size);

// Shape leave: state, and with a reset also reset and duration.
QString leaveState(int id_cmd);
QString leaveStateAny(int id_cmd);
QString textLeave(const TData& data, bool withReset);
/// Payload of the leave command: duration in ms as u16 little-endian, then one byte for each pin.
QByteArray leavePayload(int id_cmd, bool withReset);
bool validLeave(const TData& data, bool withReset);
void defaultLeave(TData& data, bool withReset);

// Shape clock: clk in Hz.
QString textClk(const TData& data);
bool validClk(const TData& data);
void defaultClk(TData& data, const QString& section);

/// state cut or padded on the right with '-' to n characters.
QString padState(const QString& state, int n);

// Value texts.
QString textSize(qint64 n);
QString textFreq(qint64 hz);
QString textFreqDuty(qint64 hz, int duty);
QString textRange(qint64 addr, qint64 count, quint8 fill);
QString textRangeHex(qint64 addr, const QString& hexText);
/// Hexadecimal, upper case, at least two digits.
QString hex(int n);
QString hex(uint n);
QString hex(qlonglong n);
uint fromHex(const QString& s);
qlonglong fromHexLong(const QString& s);
/// White space does not count.
QByteArray hexToBytes(const QString& s);
QString bytesToHex(const QByteArray& bytes);
/// bytesToHex with a blank wherever pattern has one.
QString bytesToHexLike(const QString& pattern, const QByteArray& bytes);
QString textCompare(qint64 addr, quint8 expected, quint8 read);
