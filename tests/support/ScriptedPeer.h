#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <atomic>
#include <functional>
#include <thread>

/// A whole frame with that command byte and payload, its checksum right. Written for the tests only,
/// so that a mistake in the program's own framing cannot hide.
QByteArray peerFrame(quint8 command, const QByteArray& payload = {});

/// A request and its answer, out of "OP PAYLOAD > REPLY" in hexadecimal; FF*8 is eight of them, and !7 as the
/// reply is the error reply with that code. Without ">" there is no answer.
struct PeerLine
{
    explicit PeerLine(const QString& text);

    QByteArray request; ///< opcode and payload
    QByteArray answer;  ///< a whole frame, or empty
};

/// The programmer's end of a serial line, played from a script on a pseudo-terminal: it takes the
/// frames that were announced, byte by byte the same, and gives the answers that were laid down for
/// them. A frame is cut from the line by its length field, so only whole frames are compared.
///
///     peer.expect(peerFrame(0x81)).send(peerFrame(0x81, "Name"), 50);  // answer after 50 ms
///     peer.start();
///     ... port.open(peer.path(), ...) and exchanges ...
///     QCOMPARE(peer.finish(), QString());
///
/// The script is laid down on the test's thread before start(); the answers come from a thread of its
/// own, which ends with finish() or the destructor.
class ScriptedPeer
{
public:
    /// Makes the answer to a request that the script has no line for; empty is silence.
    using Answer = std::function<QByteArray(const QByteArray& request)>;

    ScriptedPeer();
    ~ScriptedPeer();
    Q_DISABLE_COPY(ScriptedPeer)

    /// Path of the terminal for TSerialPort::open; empty when the system gave none.
    QString path() const { return m_path; }

    /// The next request must be exactly this one; reply is sent back as it is, be it a frame or not.
    ScriptedPeer& expect(const QByteArray& request, const QByteArray& reply = {});
    /// The next requests and their answers, lines of PeerLine between commas.
    ScriptedPeer& expectText(const QString& lines);
    /// Whether one of those lines is a silence, for which a test should not wait long.
    bool hasSilence() const { return m_hasSilence; }
    /// More bytes of the last expected request's answer, after a silence in ms.
    ScriptedPeer& send(const QByteArray& bytes, int silenceMs = 0);
    /// Behind the last answer the line goes away, as when a plug is pulled.
    ScriptedPeer& hangUp();
    /// From the end of the script on, requests are answered by this; it runs on the peer's thread.
    /// Without it such a request is a mismatch.
    void otherwise(const Answer& answer) { m_otherwise = answer; }

    /// Bytes that lie on the line before anybody has asked. The port must be open.
    void sendNow(const QByteArray& bytes) { writeAll(bytes); }

    void start() { m_thread = std::thread(&ScriptedPeer::run, this); }
    /// Takes what still lies on the line, ends the thread, gives the first mismatch: a wrong request,
    /// a request too many, or requests that never came. Empty when all went as laid down.
    QString finish();
    /// All whole requests after finish(), opcodes and payloads: "80 81 83:01".
    QString requestText() const { return m_requests.join(' '); }

private:
    struct Part
    {
        int silenceMs;
        QByteArray bytes;
    };
    struct Step
    {
        QByteArray request;
        QList<Part> answer;
        bool hangUp;
    };

    void run();
    bool readRequest(QByteArray& request);
    bool readBytes(QByteArray& to, int size);
    void take(const QByteArray& request);
    void play(const Step& step);
    void writeAll(const QByteArray& bytes);
    void report(const QString& text);
    void closeLine();

    QString m_path;
    int m_master = -1;
    int m_slave = -1; ///< kept open: the master of a terminal that nobody holds reads an error
    QList<Step> m_steps;
    Answer m_otherwise;
    std::thread m_thread;
    std::atomic<bool> m_stop{false};
    int m_next = 0;
    bool m_hasSilence = false;
    QString m_report;
    QStringList m_requests; ///< of the peer's thread until it has ended
};
