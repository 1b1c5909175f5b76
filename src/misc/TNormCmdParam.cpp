#include "misc/TNormCmdParam.h"

#include "base/helpers.h"
#include "base/keys.h"
#include "core/model/IDevice.h"
#include "core/model/IFormFactory.h"
#include "core/model/TDataCmd.h"
#include "core/model/TDataPrj.h"
#include "formats/data/TFormat.h"
#include "link/lists/TProg.h"
#include "link/wire/bytes.h"
#include "misc/TParamReader.h"
#include "settings/TAppData.h"

#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace {

constexpr TParamReader param("misc/TNormCmdParam");

/// The piece lies in the region; by subtraction, since numbers from a file may be anything.
bool inRegion(qint64 addr, qint64 count, qint64 begin, qint64 size)
{
    if (begin < 0 || addr < begin || count < 0)
        return false;
    const qint64 offset = addr - begin;
    return offset < size && count <= size - offset;
}

QString withoutBlanks(QString text)
{
    static const QRegularExpression blanks(QStringLiteral("\\s"));
    return text.remove(blanks);
}

TBinding bindingOf(const TData& data)
{
    return project().binding(param(data, key::id_cmd).toInt());
}

QString fittedState(int id_cmd, bool withoutChip)
{
    const TBinding bound = project().binding(id_cmd);
    if (!bound)
        return {};
    QString state = bound.command->param(key::state).toString();
    const IDevice* chip = bound.family;
    if (!bound.prog || (!chip && !withoutChip))
        return state;
    return padState(state, bound.prog->pinList(chip ? chip->section() : QString(), true).size());
}

/// The fill byte is the low part of a number without a sign; one that is none would become 0.
bool validFill(const TData& data)
{
    qint64 fill = 0;
    return readNumber(data.value(key::fill_char), fill) && fill >= 0 &&
           fill <= std::numeric_limits<quint32>::max();
}

/// The sign of the pulse is what the chip wants and its length what the programmer can.
bool validPulse(qint64 duration, bool positive, const TProg& prog)
{
    int min = 0;
    int max = 0;
    prog.resetLimits(min, max);
    const qint64 length = qAbs(duration);
    return duration != 0 && (duration > 0) == positive && length >= min && length <= max;
}

bool validClock(qint64 clk, const QString& section, const TProg& prog)
{
    bool isList = false;
    int min = 0;
    int max = 0;
    QVector<int> values;
    prog.clockParams(section, isList, min, max, values);
    return clk != 0 && clk >= min && clk <= max && (!isList || values.contains(static_cast<int>(clk)));
}

QString hexText(quint64 n)
{
    return QString::number(n, 16).toUpper().rightJustified(2, QLatin1Char('0'));
}

QString rangeText(qint64 first, qint64 last)
{
    return QStringLiteral("0x%1..0x%2").arg(hex(first), hex(last));
}

QString rangeText(qint64 first, qint64 last, const QString& rest)
{
    return rangeText(first, last) + QLatin1String(" :") + rest;
}

/// The last byte of the text. An empty text counts as one byte, half a byte as a whole one.
qint64 lastOfText(qint64 addr, const QString& text)
{
    return lastAddress(addr, qMax(1, (withoutBlanks(text).size() + 1) / 2));
}

} // namespace

QVariant getParam(const char* source, int line, const TData& data, const QString& key)
{
    const auto it = data.constFind(key);
    if (it != data.constEnd())
        return *it;
    if (appData().Debug == 1)
        logError(QStringLiteral("Error"), QStringLiteral("Param %1, %2: %3 not found")
                                              .arg(QLatin1String(source), QString::number(line), key));
    return {};
}

bool readNumber(const QVariant& value, qint64& number)
{
    bool isNumber = true;
    number = value.isValid() ? value.toLongLong(&isNumber) : 0;
    return isNumber;
}

bool readInt(const QVariant& value, qint64& number)
{
    using Int = std::numeric_limits<qint32>;
    return readNumber(value, number) && number >= Int::min() && number <= Int::max();
}

bool isFlag(const QVariant& value)
{
    qint64 number = 0;
    return readInt(value, number) || isFlagSet(value) || value.toString() == QLatin1String("false");
}

TRegion regionOf(const IDevice& device, Region region)
{
    struct Keys
    {
        QLatin1String begin;
        QLatin1String size;
    };
    static constexpr Keys keys[] = {{key::addr_begin, key::size},
                                    {key::flash_addr_begin, key::flash_size},
                                    {key::eeprom_addr_begin, key::eeprom_size}};
    const Keys& k = keys[static_cast<int>(region)];
    return {device.deviceValue(k.begin).toLongLong(), device.deviceValue(k.size).toLongLong()};
}

qint64 lastAddress(qint64 addr, qint64 count)
{
    constexpr qint64 greatest = std::numeric_limits<qint64>::max();
    if (count < 1)
        return addr == std::numeric_limits<qint64>::min() ? addr : addr - 1;
    return addr > 0 && count - 1 > greatest - addr ? greatest : addr + (count - 1);
}

void charParam(const TData& data, qint64& addr, qint64& count, quint8& fill)
{
    addr = param(data, key::addr_device).toLongLong();
    count = param(data, key::count).toLongLong();
    fill = static_cast<quint8>(param(data, key::fill_char).toUInt() & 0xFFU);
}

bool validChar(const TData& data, qint64 begin, qint64 size)
{
    qint64 addr = 0;
    qint64 count = 0;
    quint8 fill = 0;
    charParam(data, addr, count, fill);
    return areNumbers(data, key::addr_device, key::count) && validFill(data) &&
           inRegion(addr, count, begin, size);
}

QString textChar(const TData& data)
{
    qint64 addr = 0;
    qint64 count = 0;
    quint8 fill = 0;
    charParam(data, addr, count, fill);
    return textRange(addr, count, fill);
}

void defaultChar(TData& data, qint64 begin, qint64 size, uint fill)
{
    data[key::addr_device] = begin;
    data[key::count] = size;
    data[key::fill_char] = fill;
}

bool validChar(const TData& data, const IDevice& device, Region region)
{
    const TRegion r = regionOf(device, region);
    return validChar(data, r.begin, r.size);
}

void defaultChar(TData& data, const IDevice& device, Region region)
{
    const TRegion r = regionOf(device, region);
    defaultChar(data, r.begin, r.size, 255);
}

void dataParam(const TData& data, qint64& addr, QString& text)
{
    addr = param(data, key::addr_device).toLongLong();
    text = param(data, key::data).toString();
}

bool validData(const TData& data, qint64 begin, qint64 size)
{
    qint64 addr = 0;
    QString text;
    dataParam(data, addr, text);
    const int bytes = hexLength(text);
    if (bytes < 0 || !areNumbers(data, key::addr_device) || addr < 0 || begin < 0 || size < 0)
        return false;
    // Only the end counts here. Sums of two numbers below 2^63 fit into 64 bits.
    return quint64(addr) + quint64(bytes) <= quint64(begin) + quint64(size);
}

QString textData(const TData& data, const QString& cmd, QWidget* form)
{
    qint64 addr = 0;
    QString text;
    dataParam(data, addr, text);
    if (form && formFactory() && cmd.contains(QLatin1String("read"))) {
        QString result;
        if (formFactory()->resultText(form, param(data, key::id_cmd).toInt(), result))
            text = result;
    }
    return textRangeHex(addr, text);
}

QString textDataRange(const TData& data)
{
    qint64 addr = 0;
    QString text;
    dataParam(data, addr, text);
    return rangeText(addr, lastOfText(addr, text));
}

void defaultData(TData& data, qint64 addr, const QString& text)
{
    data[key::addr_device] = addr;
    data[key::data] = text;
}

bool validData(const TData& data, const IDevice& device, Region region)
{
    const TRegion r = regionOf(device, region);
    return validData(data, r.begin, r.size);
}

void defaultData(TData& data, const IDevice& device, Region region)
{
    defaultData(data, regionOf(device, region).begin, QString());
}

void fileAddrParam(const TData& data, qint64& addr_file, qint64& addr_device, qint64& count)
{
    addr_file = param(data, key::addr_file).toLongLong();
    addr_device = param(data, key::addr_device).toLongLong();
    count = param(data, key::count).toLongLong();
}

bool validFile(const TData& data, qint64 begin, qint64 size)
{
    const TFormat::Kind* format = TFormat::find(param(data, key::format).toString());
    if (param(data, key::file).toString().isEmpty() || !format)
        return false;
    qint64 addr_file = 0;
    qint64 addr_device = 0;
    qint64 count = 0;
    fileAddrParam(data, addr_file, addr_device, count);
    return areNumbers(data, key::addr_file, key::addr_device, key::count) && addr_file >= 0 &&
           addr_file <= format->greatestAddr && inRegion(addr_device, count, begin, size);
}

QString textFile(const TData& data)
{
    return QStringLiteral("%1: %2").arg(param(data, key::format).toString().toUpper(),
                                        param(data, key::file).toString());
}

void defaultFile(TData& data, qint64 begin, qint64 size)
{
    data[key::format] = QString(TFormat::kinds().front().name);
    data[key::file] = QString();
    data[key::addr_file] = qint64(0);
    data[key::addr_device] = begin;
    data[key::count] = size;
}

bool validFile(const TData& data, const IDevice& device, Region region)
{
    const TRegion r = regionOf(device, region);
    return validFile(data, r.begin, r.size);
}

void defaultFile(TData& data, const IDevice& device, Region region)
{
    const TRegion r = regionOf(device, region);
    defaultFile(data, r.begin, r.size);
}

QString leaveState(int id_cmd)
{
    return fittedState(id_cmd, false);
}

QString leaveStateAny(int id_cmd)
{
    return fittedState(id_cmd, true);
}

QString textLeave(const TData& data, bool withReset)
{
    QString state = leaveState(param(data, key::id_cmd).toInt());
    if (!withReset || !param(data, key::reset).toBool())
        return state;
    return QStringLiteral("%1 ms, %2").arg(QString::number(param(data, key::duration).toLongLong()), state);
}

QByteArray leavePayload(int id_cmd, bool withReset)
{
    const TDataCmd* command = project().cmdById(id_cmd);
    const bool pulse = withReset && command && command->param(key::reset).toBool();
    return pinPayload(pulse ? command->param(key::duration).toInt() : 0, leaveState(id_cmd));
}

bool validLeave(const TData& data, bool withReset)
{
    const TBinding bound = bindingOf(data);
    if (!bound.prog || !validState(param(data, key::state).toString(), *bound.prog))
        return false;
    if (!withReset || !bound.family)
        return true;
    qint64 duration = 0;
    return readInt(param(data, key::duration), duration) &&
           validPulse(duration, bound.family->deviceValue(key::reset_pol).toBool(), *bound.prog);
}

void defaultLeave(TData& data, bool withReset)
{
    data[key::state] = QString();
    if (!withReset)
        return;
    const TProg* prog = bindingOf(data).prog;
    data[key::reset] = true;
    data[key::duration] = prog ? prog->resetDefault() : 0;
}

bool validState(const QString& state, const TProg& prog)
{
    const QString letters = prog.pinLetters();
    return std::all_of(state.cbegin(), state.cend(), [&letters](QChar c) { return letters.contains(c); });
}

QByteArray pinPayload(int duration, const QString& state)
{
    QByteArray payload = durationBytes(duration);
    for (const QChar letter : state)
        payload.append(static_cast<char>(TProg::pinCode(letter)));
    return payload;
}

QByteArray durationBytes(int duration)
{
    using Field = std::numeric_limits<qint16>;
    return wordBytes(std::clamp<int>(duration, Field::min(), Field::max()));
}

QString textClk(const TData& data)
{
    return textFreq(param(data, key::clk).toLongLong());
}

bool validClk(const TData& data)
{
    const TBinding bound = bindingOf(data);
    qint64 clk = 0;
    return bound.family && bound.prog && readInt(param(data, key::clk), clk) &&
           validClock(clk, bound.family->section(), *bound.prog);
}

void defaultClk(TData& data, const QString& section)
{
    const TProg* prog = bindingOf(data).prog;
    data[key::clk] = prog ? prog->clockDefault(section) : 0;
}

QString padState(const QString& state, int n)
{
    return state.left(n).leftJustified(n, QLatin1Char('-'));
}

QString textSize(qint64 n)
{
    static constexpr const char* units[] = {"Kbyte", "Mbyte", "Gbyte", "Tbyte"};
    for (const int kilobytes : {192, 384, 768}) {
        if (n == kilobytes * qint64(1024))
            return QStringLiteral("%1 Kbyte").arg(kilobytes);
    }
    for (int power = 10; power < 50; ++power) {
        if (n == qint64(1) << power)
            return QStringLiteral("%1 %2").arg(1 << (power % 10)).arg(QLatin1String(units[power / 10 - 1]));
    }
    return QStringLiteral("%1 byte").arg(n);
}

QString textFreq(qint64 hz)
{
    struct Unit
    {
        qint64 below;
        double divisor;
        const char* name;
    };
    static constexpr Unit units[] = {{1000, 1.0, "Hz"},
                                     {1000000, 1000.0, "KHz"},
                                     {1000000000, 1e6, "MHz"},
                                     {std::numeric_limits<qint64>::max(), 1.0, ""}};
    const Unit* unit = units;
    while (hz >= unit->below && unit->name[0] != '\0')
        ++unit;
    return QStringLiteral("%1 %2").arg(QString::number(static_cast<double>(hz) / unit->divisor, 'g', 10),
                                       QLatin1String(unit->name));
}

QString textFreqDuty(qint64 hz, int duty)
{
    return QStringLiteral("%1, %2 %").arg(textFreq(hz), QString::number(duty));
}

QString textRange(qint64 addr, qint64 count, quint8 fill)
{
    return rangeText(addr, lastAddress(addr, count), QLatin1String("0x") + hex(int(fill)));
}

QString textRangeHex(qint64 addr, const QString& text)
{
    return rangeText(addr, lastOfText(addr, text), text.simplified().toUpper());
}

QString textFirstBytes(const QString& text)
{
    constexpr int mostDigits = 2 * 32;
    QString line = text.simplified();
    int digits = 0;
    for (int i = 0; i < line.size(); ++i) {
        if (line.at(i) != QLatin1Char(' ') && ++digits > mostDigits)
            return line.left(i).trimmed() + QLatin1String("...");
    }
    return line;
}

QString hex(int n)
{
    return hexText(static_cast<uint>(n));
}

QString hex(uint n)
{
    return hexText(n);
}

QString hex(qlonglong n)
{
    return hexText(static_cast<quint64>(n));
}

uint fromHex(const QString& s)
{
    return s.toUInt(nullptr, 16);
}

int hexLength(const QString& s)
{
    const auto isAllowed = [](QChar c) {
        return c == QLatin1Char(' ') || (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
               (c >= QLatin1Char('A') && c <= QLatin1Char('F')) ||
               (c >= QLatin1Char('a') && c <= QLatin1Char('f'));
    };
    const int digits = s.size() - s.count(QLatin1Char(' '));
    const bool isHex = !s.isEmpty() && digits % 2 == 0 && std::all_of(s.cbegin(), s.cend(), isAllowed);
    return isHex ? digits / 2 : -1;
}

QByteArray hexToBytes(const QString& s)
{
    return QByteArray::fromHex(withoutBlanks(s).toLatin1());
}

QString bytesToHex(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex().toUpper());
}

QString bytesToHexLike(const QString& pattern, const QByteArray& bytes)
{
    const QString digits = bytesToHex(bytes);
    QString text;
    text.reserve(digits.size() + pattern.size());
    int used = 0;
    for (int i = 0; i < pattern.size() && used < digits.size(); ++i)
        text.append(pattern.at(i) == QLatin1Char(' ') ? pattern.at(i) : digits.at(used++));
    return text.append(digits.mid(used));
}

QString textCompare(qint64 addr, quint8 expected, quint8 read)
{
    return QStringLiteral("Address: 0x%1, Data: 0x%2, Read: 0x%3")
        .arg(hex(addr), hex(int(expected)), hex(int(read)));
}
