#include "link/wire/TSerialPort.h"

#include "base/TLang.h"
#include "link/wire/TPatience.h"
#include "link/wire/TPortUsers.h"
#include "link/wire/bytes.h"
#include "link/wire/opcodes.h"

#include <QFileInfo>
#include <QSerialPortInfo>

#include <iterator>
#include <limits>
#include <numeric>

namespace {

constexpr char syncByte = '\xC0';
constexpr quint8 errorReply = 0xFF;
constexpr int headerSize = 4;
constexpr int checksumSize = 1;
constexpr int lengthLimit = 0xFFFF;
constexpr qint64 longestFrame = headerSize + lengthLimit + checksumSize;
/// Of the slowest setting: start, 8 data bits, parity, two stop bits.
constexpr qint64 bitsPerByte = 12;

/// By the code that the programmer answers.
constexpr Text errorTexts[] = {
    Text::ProgUnspecified, Text::ProgUnknownCmd, Text::ProgWrongLength,       Text::ProgWrongParam,
    Text::ProgBadChecksum, Text::ProgNoDevice,   Text::ProgUnsupportedDevice, Text::ProgDeviceNoAnswer,
    Text::ProgDeviceBusy,  Text::ProgVoltage,    Text::ProgOverCurrent,       Text::ProgInternal,
};

struct ParityName
{
    const char* text;
    QSerialPort::Parity value;
};

constexpr ParityName parityNames[] = {
    {"None", QSerialPort::NoParity},   {"Odd", QSerialPort::OddParity},     {"Even", QSerialPort::EvenParity},
    {"Mark", QSerialPort::MarkParity}, {"Space", QSerialPort::SpaceParity},
};

struct FlowName
{
    const char* text;
    QSerialPort::FlowControl value;
};

constexpr FlowName flowNames[] = {
    {"None", QSerialPort::NoFlowControl},
    {"Hardware", QSerialPort::HardwareControl},
    {"Software", QSerialPort::SoftwareControl},
};

constexpr QSerialPort::DataBits dataBitsByIndex[] = {QSerialPort::Data5, QSerialPort::Data6,
                                                     QSerialPort::Data7, QSerialPort::Data8};
constexpr QSerialPort::StopBits stopBitsByIndex[] = {QSerialPort::OneStop, QSerialPort::OneAndHalfStop,
                                                     QSerialPort::TwoStop};

quint8 byteAt(const QByteArray& bytes, int index)
{
    return static_cast<quint8>(bytes.at(index));
}

// Zero over a whole frame, its checksum included.
quint8 byteSum(const QByteArray& bytes)
{
    const auto add = [](quint32 sum, char byte) { return sum + static_cast<quint8>(byte); };
    return static_cast<quint8>(std::accumulate(bytes.cbegin(), bytes.cend(), quint32(0), add));
}

QByteArray makeFrame(quint8 command, const QByteArray& payload)
{
    QByteArray frame;
    frame.reserve(headerSize + payload.size() + checksumSize);
    frame.append(syncByte);
    frame.append(static_cast<char>(command));
    frame.append(wordBytes(payload.size()));
    frame.append(payload);
    frame.append(static_cast<char>(-byteSum(frame)));
    return frame;
}

/// The terminal that a port name leads to, by its one real path: the system's lock is named by the path, so
/// "./sim" of two folders must not be the same, nor two names of one terminal different ones. A name without
/// such a beginning is one of the system's devices. The name itself where it leads nowhere.
QString terminalOf(const QString& portName)
{
    const auto begins = [&portName](const char* text) { return portName.startsWith(QLatin1String(text)); };
    const bool isPath = begins("/") || begins("./") || begins("../");
    const QString path = isPath ? portName : QStringLiteral("/dev/") + portName;
    const QString real = portName.isEmpty() ? QString() : QFileInfo(path).canonicalFilePath();
    return real.isEmpty() ? portName : real;
}

/// The group that may use the serial devices; a device of the administrator's own tells none.
QString groupOf(const QFileInfo& device)
{
    const QString group = device.group();
    return group.isEmpty() || group == QLatin1String("root") ? QStringLiteral("dialout") : group;
}

} // namespace

TSerialPort::TSerialPort()
    : m_port(new QSerialPort(this))
{
    // More than a frame is never wanted, and noise without end must not fill the memory.
    m_port->setReadBufferSize(2 * longestFrame);
}

TSerialPort::~TSerialPort()
{
    close();
}

void TSerialPort::setUser(const QString& user)
{
    m_user = user;
}

bool TSerialPort::open(const QString& portName, QIODevice::OpenMode mode)
{
    close();
    m_errorText.clear();
    const QString path = terminalOf(portName);
    QString holder;
    if (!TPortUsers::take(path, m_user, holder)) {
        m_errorText = langText(Text::PortUsedByCfg).arg(holder);
        return false;
    }
    m_port->setPortName(path);
    if (!m_port->open(mode)) {
        TPortUsers::release(path);
        return failToOpen(path);
    }
    m_path = path;
    return true;
}

// The system's words say that it does not work; the user wants to know what to do.
bool TSerialPort::failToOpen(const QString& path)
{
    if (m_port->error() != QSerialPort::PermissionError)
        return false;
    const QFileInfo device(path);
    const QString words = m_port->errorString();
    if (device.isReadable() && device.isWritable())
        m_errorText = langText(Text::PortUsedByProgram).arg(words);
    else
        m_errorText = langText(Text::PortNotAllowed).arg(words, groupOf(device));
    return false;
}

void TSerialPort::close()
{
    m_notes.clear();
    if (m_port->isOpen())
        m_port->close();
    if (!m_path.isEmpty())
        TPortUsers::release(m_path);
    m_path.clear();
}

bool TSerialPort::isOpen() const
{
    return m_port->isOpen();
}

bool TSerialPort::setBaudRate(qint32 value)
{
    return m_port->setBaudRate(value, QSerialPort::AllDirections);
}

bool TSerialPort::setDataBits(int index)
{
    if (index < 0 || index >= static_cast<int>(std::size(dataBitsByIndex)))
        return false;
    return m_port->setDataBits(dataBitsByIndex[index]);
}

// An unknown parity is kept off the port: there the driver would double every received 0xFF.
bool TSerialPort::setParity(const QString& text)
{
    for (const ParityName& parity : parityNames) {
        if (text == QLatin1String(parity.text))
            return m_port->setParity(parity.value);
    }
    return false;
}

bool TSerialPort::setStopBits(int index)
{
    if (index < 0 || index >= static_cast<int>(std::size(stopBitsByIndex)))
        return false;
    return m_port->setStopBits(stopBitsByIndex[index]);
}

bool TSerialPort::setFlowControl(const QString& text)
{
    for (const FlowName& flow : flowNames) {
        if (text == QLatin1String(flow.text))
            return m_port->setFlowControl(flow.value);
    }
    return false;
}

void TSerialPort::setTimeout(quint32 ms)
{
    m_timeout = ms > static_cast<quint32>(std::numeric_limits<int>::max()) ? 0 : ms;
}

void TSerialPort::setMaxData(quint16 bytes)
{
    m_maxData = bytes;
}

void TSerialPort::setWhileWaiting(const std::function<void()>& fn)
{
    m_whileWaiting = fn;
}

bool TSerialPort::exchange(quint8 command, QByteArray& data)
{
    m_errorText.clear();
    m_linkFailed = false;
    if (command == opcode::selectChip)
        m_notes.clear();

    QByteArray reply;
    if (!sendFrame(command, data) || !receiveFrame(reply))
        return failOnWire();
    const QByteArray payload = reply.mid(headerSize, reply.size() - headerSize - checksumSize);
    if (byteAt(reply, 1) == errorReply)
        return failRefused(payload);
    data = payload;
    return true;
}

bool TSerialPort::sendFrame(quint8 command, const QByteArray& payload)
{
    if (!m_port->isOpen() || payload.size() > lengthLimit)
        return false;
    m_port->clear(QSerialPort::AllDirections);
    // What the port has refused to be set to is no fault of this exchange.
    if (m_port->error() != QSerialPort::NoError)
        m_port->clearError();
    const QByteArray frame = makeFrame(command, payload);
    if (m_port->write(frame) != frame.size())
        return false;
    TPatience patience(m_timeout + lineTime(frame.size()));
    // One wait ends with the first part that the line takes.
    while (m_port->bytesToWrite() > 0) {
        if (m_port->waitForBytesWritten(patience.slice()))
            continue;
        if (isBroken() || patience.isOver())
            return false;
        // Noise has filled the buffer: nothing is written until there is room for what comes in.
        if (m_port->bytesAvailable() >= m_port->readBufferSize())
            m_port->clear(QSerialPort::Input);
        if (m_whileWaiting)
            m_whileWaiting();
    }
    return true;
}

// What is read beyond the end of the frame is dropped here, what comes later by the next request.
bool TSerialPort::receiveFrame(QByteArray& frame)
{
    if (!receiveSync(frame))
        return false;
    TPatience patience(m_timeout);
    if (!receiveUpTo(headerSize, frame, patience))
        return false;
    const int length = wordAt(frame, 2);
    if (m_maxData < length)
        return false;
    const int size = headerSize + length + checksumSize;
    patience.extend(lineTime(size));
    if (!receiveUpTo(size, frame, patience))
        return false;
    frame.truncate(size);
    return byteSum(frame) == 0;
}

// A programmer that is there has begun its reply within the time-out; noise alone is no answer.
bool TSerialPort::receiveSync(QByteArray& frame)
{
    TPatience patience(m_timeout);
    do {
        frame.clear();
        if (!readAvailable(frame, patience))
            return false;
        const int sync = frame.indexOf(syncByte);
        if (sync >= 0) {
            frame.remove(0, sync);
            return true;
        }
    } while (!patience.isOver());
    return false;
}

bool TSerialPort::receiveUpTo(int size, QByteArray& frame, TPatience& patience)
{
    while (frame.size() < size) {
        if (!readAvailable(frame, patience))
            return false;
        if (frame.size() < size && patience.isOver())
            return false;
    }
    return true;
}

// Appends what has arrived, at least one byte.
bool TSerialPort::readAvailable(QByteArray& frame, TPatience& patience)
{
    TPatience silence(m_timeout);
    // Asked again each time: an owner that lets events in may have brought the bytes.
    while (m_port->bytesAvailable() == 0 &&
           !m_port->waitForReadyRead(qMin(silence.slice(), patience.slice()))) {
        if (isBroken() || silence.isOver() || patience.isOver())
            return false;
        if (m_whileWaiting)
            m_whileWaiting();
    }
    const int had = frame.size();
    frame.resize(had + static_cast<int>(m_port->bytesAvailable()));
    const qint64 got = m_port->read(frame.data() + had, frame.size() - had);
    frame.truncate(had + static_cast<int>(qMax<qint64>(got, 0)));
    return got > 0;
}

// A wait has ended by something else than its time.
bool TSerialPort::isBroken() const
{
    const QSerialPort::SerialPortError error = m_port->error();
    return error != QSerialPort::NoError && error != QSerialPort::TimeoutError;
}

// Milliseconds that the bytes take on the wire.
qint64 TSerialPort::lineTime(int bytes) const
{
    const qint32 baud = m_port->baudRate();
    return baud < 1 ? 0 : bytes * bitsPerByte * 1000 / baud;
}

bool TSerialPort::failOnWire()
{
    m_linkFailed = true;
    m_errorText = langText(Text::NoAnswer);
    return false;
}

// The programmer has answered and refused: the link is sound.
bool TSerialPort::failRefused(const QByteArray& payload)
{
    const int code = payload.size() < 2 ? -1 : wordAt(payload, 0);
    if (code >= 0 && code < int(std::size(errorTexts)))
        m_errorText = langText(errorTexts[code]);
    else
        m_errorText =
            langText(Text::ProgOtherError).arg(code < 0 ? QStringLiteral("-") : QString::number(code));
    return false;
}

QString TSerialPort::errorString() const
{
    if (!m_errorText.isEmpty())
        return m_errorText;
    const QString text = m_port->errorString();
    return text == QLatin1String("No such file or directory") ? langText(Text::PortMissing) : text;
}

bool TSerialPort::isLinkFailed() const
{
    return m_linkFailed;
}

QVariant TSerialPort::note(const QString& key) const
{
    return m_notes.value(key);
}

void TSerialPort::setNote(const QString& key, const QVariant& value)
{
    m_notes.insert(key, value);
}

QStringList TSerialPort::portList()
{
    QStringList texts;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        if (info.description().isEmpty())
            texts.append(info.portName());
        else if (info.manufacturer().isEmpty())
            texts.append(QStringLiteral("%1 (%2)").arg(info.portName(), info.description()));
        else
            texts.append(
                QStringLiteral("%1 (%2 %3)").arg(info.portName(), info.manufacturer(), info.description()));
    }
    return texts;
}

QString TSerialPort::portNameOf(const QString& text)
{
    const int bracket = text.indexOf(QLatin1Char('('));
    return bracket <= 0 ? text : text.left(bracket - 1);
}

QStringList TSerialPort::baudRates()
{
    return {"110",   "300",   "600",   "1200",  "2400",   "4800",   "9600",   "14400",
            "19200", "38400", "56000", "57600", "115200", "230400", "460800", "921600"};
}

QStringList TSerialPort::dataBits()
{
    return {"5", "6", "7", "8"};
}

QStringList TSerialPort::parities()
{
    return {"None", "Odd", "Even", "Mark", "Space"};
}

QStringList TSerialPort::stopBits()
{
    return {"1", "1.5", "2"};
}

QStringList TSerialPort::flowControls()
{
    return {"None", "Hardware", "Software", "Custom"};
}
