#include "link/lists/TProg.h"

#include "base/TSettings.h"
#include "base/helpers.h"

#include <QMutexLocker>

#include <algorithm>
#include <cmath>

namespace {

struct PinType
{
    char letter;
    const char* text;
};

// The row number plus 1 is the letter's byte on the wire.
constexpr PinType pinTypes[] = {
    {'I', "I (input)"},
    {'l', "l (input - pull-down)"},
    {'h', "h (input - pull-up)"},
    {'L', "L (output - low)"},
    {'H', "H (output - high)"},
    {'o', "o (output open drain - low)"},
    {'O', "O (output open drain - high)"},
    {'Z', "Z (tri-stated)"},
};

QString keyIn(const QString& group, const char* key)
{
    return group + QLatin1Char('/') + QLatin1String(key);
}

/// A description gives the default only where the key is missing; a text that is no number counts as 0.
int readNumber(const TSettings& ini, const QString& key, int def)
{
    return ini.contains(key) ? ini.readInt(key, 0) : def;
}

double readReal(const TSettings& ini, const QString& key)
{
    const double value = ini.value(key, 0.0).toDouble();
    return std::isfinite(value) ? value : 0.0;
}

// The programmer's identity guards against the wrong model, and 0 switches the guard off: a text
// that is no number must not pass unseen.
int readInterfaceId(const TSettings& ini)
{
    bool ok = false;
    const int id = ini.value(QStringLiteral("Main/Interface"), 0).toString().toInt(&ok);
    if (!ok) {
        logError(QStringLiteral("[TProg]"),
                 QStringLiteral("%1: /Main/Interface is no decimal number, any programmer is accepted")
                     .arg(ini.fileName()));
    }
    return id;
}

// Numbers behind the prefix in the key names of a group, ascending; a name without one is no entry.
QVector<int> keyNumbers(TSettings& ini, const QString& group, const QString& prefix)
{
    QVector<int> numbers;
    ini.beginGroup(group);
    const QStringList keys = ini.childKeys();
    ini.endGroup();
    for (const QString& key : keys) {
        bool ok = false;
        const int number = key.startsWith(prefix) ? key.mid(prefix.size()).toInt(&ok) : 0;
        if (ok)
            numbers.append(number);
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

} // namespace

TProg::TProg(const QString& file)
    : m_file(file)
{
    const TSettings ini(file);
    m_interfaceId = readInterfaceId(ini);
    m_baudRate = readNumber(ini, QStringLiteral("Port/BaudRate"), 115200);
    m_dataBits = readNumber(ini, QStringLiteral("Port/DataBits"), 8);
    m_parity = ini.readString(QStringLiteral("Port/Parity"), {});
    m_stopBits = readNumber(ini, QStringLiteral("Port/StopBits"), 1);
    m_flowControl = ini.readString(QStringLiteral("Port/FlowControl"), {});
    m_timeout = readNumber(ini, QStringLiteral("Port/TimeOut"), 1000);
    m_maxData = ini.value(QStringLiteral("Protocol/MAX_DATA"), 64).toString().toUShort();
    m_freqDefault = readNumber(ini, QStringLiteral("Frequency/FQ_DEF"), 100000);
    m_dutyDefault = readNumber(ini, QStringLiteral("Frequency/DT_DEF"), 50);
    m_resetMin = readNumber(ini, QStringLiteral("Reset/MIN"), 10);
    m_resetMax = readNumber(ini, QStringLiteral("Reset/MAX"), 1000);
    m_resetDefault = readNumber(ini, QStringLiteral("Reset/DEF"), -400);
    readPinTypes(ini);
}

TProg::~TProg() = default;

void TProg::readPinTypes(const TSettings& ini)
{
    m_pinLetters = QStringLiteral("-");
    m_pinTexts = QStringList{QStringLiteral("- (not change)")};
    for (const PinType& type : pinTypes) {
        const QString key = QStringLiteral("PinType/") + QLatin1Char(type.letter);
        if (ini.readBool(key, false)) {
            m_pinLetters.append(QLatin1Char(type.letter));
            m_pinTexts.append(QLatin1String(type.text));
        }
    }
}

QString TProg::file() const
{
    return m_file;
}

int TProg::interfaceId() const
{
    const QMutexLocker lock(&m_mutex);
    return m_interfaceId;
}

void TProg::portParams(int& baudRate, int& dataBits, QString& parity, int& stopBits, QString& flowControl,
                       int& timeout) const
{
    const QMutexLocker lock(&m_mutex);
    baudRate = m_baudRate;
    dataBits = m_dataBits;
    parity = m_parity;
    stopBits = m_stopBits;
    flowControl = m_flowControl;
    timeout = m_timeout;
}

int TProg::timeout() const
{
    const QMutexLocker lock(&m_mutex);
    return m_timeout;
}

void TProg::maxData(quint16& bytes) const
{
    const QMutexLocker lock(&m_mutex);
    bytes = m_maxData;
}

QString TProg::pinLetters() const
{
    return m_pinLetters;
}

QStringList TProg::pinTexts() const
{
    return m_pinTexts;
}

quint8 TProg::pinCode(QChar letter)
{
    quint8 code = 0;
    for (const PinType& type : pinTypes) {
        ++code;
        if (letter == QLatin1Char(type.letter))
            return code;
    }
    return 0;
}

void TProg::freqDefaults(int& freq, int& duty) const
{
    freq = m_freqDefault;
    duty = m_dutyDefault;
}

void TProg::resetLimits(int& min, int& max) const
{
    min = m_resetMin;
    max = m_resetMax;
}

int TProg::resetDefault() const
{
    return m_resetDefault;
}

void TProg::limits(const QString& group, double& min, double& max) const
{
    const TSettings ini(m_file);
    min = readReal(ini, keyIn(group, "MIN"));
    max = readReal(ini, keyIn(group, "MAX"));
}

double TProg::groupDefault(const QString& group) const
{
    return readReal(TSettings(m_file), keyIn(group, "DEF"));
}

void TProg::vccLimits(double& min, double& max) const
{
    limits(QStringLiteral("Vcc"), min, max);
}

double TProg::vccDefault() const
{
    return groupDefault(QStringLiteral("Vcc"));
}

void TProg::vppLimits(double& min, double& max) const
{
    limits(QStringLiteral("Vpp"), min, max);
}

double TProg::vppDefault() const
{
    return groupDefault(QStringLiteral("Vpp"));
}

void TProg::iccLimits(double& min, double& max) const
{
    limits(QStringLiteral("Icc"), min, max);
}

double TProg::iccDefault() const
{
    return groupDefault(QStringLiteral("Icc"));
}

void TProg::ippLimits(double& min, double& max) const
{
    limits(QStringLiteral("Ipp"), min, max);
}

double TProg::ippDefault() const
{
    return groupDefault(QStringLiteral("Ipp"));
}

void TProg::freqParams(bool& fqList, int& fqMin, int& fqMax, QVector<int>& fqValues, bool& dtShow,
                       bool& dtList, int& dtMin, int& dtMax, QVector<int>& dtValues) const
{
    const QString group = QStringLiteral("Frequency");
    TSettings ini(m_file);
    fqList = ini.readBool(keyIn(group, "FQ_LIST"), false);
    fqMin = ini.readInt(keyIn(group, "FQ_MIN"), 0);
    fqMax = ini.readInt(keyIn(group, "FQ_MAX"), 0);
    fqValues = keyNumbers(ini, group, QStringLiteral("FQLV_"));
    dtShow = ini.readBool(keyIn(group, "DT_SHOW"), false);
    dtList = ini.readBool(keyIn(group, "DT_LIST"), false);
    dtMin = ini.readInt(keyIn(group, "DT_MIN"), 0);
    dtMax = ini.readInt(keyIn(group, "DT_MAX"), 0);
    dtValues = keyNumbers(ini, group, QStringLiteral("DTLV_"));
}

void TProg::clockParams(const QString& section, bool& isList, int& min, int& max, QVector<int>& values) const
{
    TSettings ini(m_file);
    isList = ini.readBool(keyIn(section, "CLK_LIST"), false);
    min = ini.readInt(keyIn(section, "CLK_MIN"), 0);
    max = ini.readInt(keyIn(section, "CLK_MAX"), 0);
    values = keyNumbers(ini, section, QStringLiteral("CLKLV_"));
}

int TProg::clockDefault(const QString& section) const
{
    return TSettings(m_file).readInt(keyIn(section, "CLK_DEF"), 0);
}

int TProg::clockCode(const QString& section, int clock) const
{
    const TSettings ini(m_file);
    if (!ini.readBool(keyIn(section, "CLK_LIST"), false))
        return clock;
    return readNumber(ini, keyIn(section, "CLKLV_") + QString::number(clock), clock);
}

bool TProg::supportsCommand(const QString& key) const
{
    return TSettings(m_file).readBool(QStringLiteral("Commands/") + key, false);
}

QStringList TProg::pinList(const QString& section, bool filtered) const
{
    TSettings ini(m_file);
    ini.beginGroup(QStringLiteral("Pins"));
    const QStringList keys = ini.childKeys();
    ini.endGroup();
    QStringList pins;
    for (const QString& key : keys) {
        const QStringList entry = ini.readList(QStringLiteral("Pins/") + key);
        if (entry.size() != 2 || (filtered && entry.first() != QLatin1String("1")))
            continue;
        const QString& pin = entry.last();
        const QString label = ini.readString(keyIn(section, "PIN_") + pin, {});
        if (label.isEmpty())
            pins.append(pin);
        else if (filtered)
            pins.append(QStringLiteral("%1 - %2").arg(label, pin));
        else
            pins.append(QStringLiteral("%1 - %2").arg(pin, label));
    }
    return pins;
}
