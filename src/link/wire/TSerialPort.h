#pragma once

#include <QObject>
#include <QSerialPort>
#include <QStringList>
#include <QVariant>

#include <functional>

class TPatience;

/// The one door to the programmer: sends a request frame, waits for the reply frame, checks it.
/// Used by the thread that created it and by no other; needs that thread's event dispatcher.
class TSerialPort : public QObject
{
    Q_OBJECT

public:
    TSerialPort();
    ~TSerialPort() override;

    /// Who opens: a configuration's name, told to others that find the port in use.
    void setUser(const QString& user);
    /// Opens the port of that name ("ttyUSB0", a path or a link). Whatever name leads to it, a terminal is
    /// open once: in this process, and by the system's lock in all programs that keep to such locks.
    [[nodiscard]] bool open(const QString& portName, QIODevice::OpenMode mode);
    void close();
    bool isOpen() const;

    bool setBaudRate(qint32 value);
    /// Index into 5, 6, 7, 8 data bits; above that false and nothing changes.
    bool setDataBits(int index);
    /// "None", "Odd", "Even", "Mark", "Space". Any other text leaves the port as it is, gives false.
    bool setParity(const QString& text);
    /// Index into one, one and a half, two stop bits; above that false and nothing changes.
    bool setStopBits(int index);
    /// "None", "Hardware", "Software". Any other text leaves the port as it is, gives false.
    bool setFlowControl(const QString& text);
    /// Longest silence in ms before a byte arrives. So long, too, a reply may take to begin, whatever noise
    /// comes meanwhile, and beyond the time of its bytes at the baud rate to end, and a request to be
    /// written. Time in which this process did not run does not count. A number above the range of int,
    /// which is what a negative setting turns into, counts as no waiting at all.
    void setTimeout(quint32 ms);
    /// Largest payload length accepted in a reply, in bytes.
    void setMaxData(quint16 bytes);

    /// Called about every 50 ms of a wait in an exchange, for an owner that has something to keep alive
    /// meanwhile; an empty function, as at first, is not. It must leave this port alone.
    void setWhileWaiting(const std::function<void()>& fn);

    /// One exchange, no retry: blocks until the reply is complete or its time is over. data holds
    /// the request's payload (at most 65535 bytes) on entry and the reply's payload on success; on
    /// failure it keeps what it held. Any command byte in the reply but 0xFF is a success.
    [[nodiscard]] bool exchange(quint8 command, QByteArray& data);

    /// Text of the last exchange or opening that failed, else that of the port.
    QString errorString() const;
    /// The last exchange broke on the wire: nothing more should be sent. False when the programmer
    /// answered, also when it refused.
    bool isLinkFailed() const;

    /// What a chip family has to remember of what it sent for as long as the chip stays selected on this
    /// link, under a key of its own; an invalid variant where nothing is. All notes are forgotten at
    /// open(), at close() and at every exchange that selects a chip.
    QVariant note(const QString& key) const;
    void setNote(const QString& key, const QVariant& value);

    /// One display text for each port of the machine: "name (manufacturer description)".
    static QStringList portList();
    /// The port name inside a display text of portList().
    static QString portNameOf(const QString& text);

    static QStringList baudRates();
    static QStringList dataBits();
    static QStringList parities();
    static QStringList stopBits();
    static QStringList flowControls();

private:
    [[nodiscard]] bool sendFrame(quint8 command, const QByteArray& payload);
    [[nodiscard]] bool receiveFrame(QByteArray& frame);
    [[nodiscard]] bool receiveSync(QByteArray& frame);
    [[nodiscard]] bool receiveUpTo(int size, QByteArray& frame, TPatience& patience);
    [[nodiscard]] bool readAvailable(QByteArray& frame, TPatience& patience);
    bool isBroken() const;
    qint64 lineTime(int bytes) const;
    bool failToOpen(const QString& path);
    bool failOnWire();
    bool failRefused(const QByteArray& payload);

    QSerialPort* m_port;
    QString m_user;
    QString m_path; ///< of the terminal that is open; empty when none is
    quint32 m_timeout = 0;
    quint16 m_maxData = 0;
    std::function<void()> m_whileWaiting;
    bool m_linkFailed = false;
    QString m_errorText;
    QVariantHash m_notes;
};
