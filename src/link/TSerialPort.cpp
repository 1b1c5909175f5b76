#include "link/TSerialPort.h"

#include "core/globals.h"
#include "link/opcodes.h"

#include <QSerialPortInfo>

#include <limits>
#include <numeric>

namespace {

constexpr char syncByte = '\xC0';
constexpr quint8 errorReply = 0xFF;
constexpr int headerSize = 4;
constexpr int checksumSize = 1;
constexpr int lengthLimit = 0xFFFF;

constexpr int linkBroken = 389;
constexpr int portMissing = 393;
constexpr int firstErrorCode = 405;
constexpr int errorCodes = 12;
constexpr int otherErrorCode = 423;

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

int wordAt(const QByteArray& bytes, int index)
{
    return byteAt(bytes, index) | byteAt(bytes, index + 1) << 8;
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
    frame.append(static_cast<char>(payload.size() & 0xFF));
    frame.append(static_cast<char>(payload.size() >> 8 & 0xFF));
    frame.append(payload);
    frame.append(static_cast<char>(-byteSum(frame)));
    return frame;
}

} // namespace

TSerialPort::TSerialPort()
    : m_port(new QSerialPort(this))
{
}

TSerialPort::~TSerialPort()
{
    close();
}

bool TSerialPort::open(const QString& portName, QIODevice::OpenMode mode)
{
    m_hasExtendedAddress = false;
    m_port->setPortName(portName);
    return m_port->open(mode);
}

void TSerialPort::close()
{
    m_hasExtendedAddress = false;
    if (m_port->isOpen())
        m_port->close();
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

bool TSerialPort::exchange(quint8 command, QByteArray& data)
{
    m_errorText.clear();
    m_linkFailed = false;
    if (command == opcode::selectChip)
        m_hasExtendedAddress = false;

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
    const QByteArray frame = makeFrame(command, payload);
    if (m_port->write(frame) != frame.size())
        return false;
    // One wait ends with the first part that the line takes.
    while (m_port->bytesToWrite() > 0) {
        if (!m_port->waitForBytesWritten(static_cast<int>(m_timeout)))
            return false;
    }
    return true;
}

// What is read beyond the end of the frame is dropped here, what comes later by the next request.
bool TSerialPort::receiveFrame(QByteArray& frame)
{
    for (;;) {
        if (!readAvailable(frame))
            return false;
        if (!frame.startsWith(syncByte)) {
            const int sync = frame.indexOf(syncByte);
            frame.remove(0, sync < 0 ? frame.size() : sync);
        }
        if (frame.size() < headerSize)
            continue;
        const int length = wordAt(frame, 2);
        if (m_maxData < length)
            return false;
        const int size = headerSize + length + checksumSize;
        if (frame.size() >= size) {
            frame.truncate(size);
            return byteSum(frame) == 0;
        }
    }
}

// Appends what has arrived, at least one byte.
bool TSerialPort::readAvailable(QByteArray& frame)
{
    if (m_port->bytesAvailable() == 0 && !m_port->waitForReadyRead(static_cast<int>(m_timeout)))
        return false;
    const int had = frame.size();
    frame.resize(had + static_cast<int>(m_port->bytesAvailable()));
    const qint64 got = m_port->read(frame.data() + had, frame.size() - had);
    frame.truncate(had + static_cast<int>(qMax<qint64>(got, 0)));
    return got > 0;
}

bool TSerialPort::failOnWire()
{
    m_linkFailed = true;
    m_errorText = langText(linkBroken);
    return false;
}

// The programmer has answered and refused: the link is sound.
bool TSerialPort::failRefused(const QByteArray& payload)
{
    const int code = payload.size() < 2 ? -1 : wordAt(payload, 0);
    if (code >= 0 && code < errorCodes)
        m_errorText = langText(firstErrorCode + code);
    else
        m_errorText = langText(otherErrorCode).arg(code < 0 ? QStringLiteral("-") : QString::number(code));
    return false;
}

QString TSerialPort::errorString() const
{
    if (!m_errorText.isEmpty())
        return m_errorText;
    const QString text = m_port->errorString();
    return text == QLatin1String("No such file or directory") ? langText(portMissing) : text;
}

bool TSerialPort::isLinkFailed() const
{
    return m_linkFailed;
}

bool TSerialPort::hasExtendedAddress() const
{
    return m_hasExtendedAddress;
}

quint32 TSerialPort::extendedAddress() const
{
    return m_extendedAddress;
}

void TSerialPort::setExtendedAddress(quint32 addr)
{
    m_extendedAddress = addr;
    m_hasExtendedAddress = true;
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
