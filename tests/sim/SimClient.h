#pragma once

#include <QByteArray>
#include <QString>

/// What came back for one request.
struct SimReply
{
    QByteArray raw;     ///< all bytes up to the end of the frame, or up to the silence
    QByteArray payload; ///< of a whole frame
    int command = -1;   ///< -1: no whole frame came
    bool sound = false; ///< the frame begins with the sync and its bytes add up to 0

    /// The code of an error reply, -1 for any other.
    int error() const { return command == 0xFF && payload.size() == 2 ? uchar(payload[0]) : -1; }
};

/// A host that knows the wire protocol and nothing else, written for these tests alone.
class SimClient
{
public:
    explicit SimClient(const QString& path);
    ~SimClient();
    SimClient(const SimClient&) = delete;
    SimClient& operator=(const SimClient&) = delete;

    static QByteArray frame(int opcode, const QByteArray& payload = {});

    /// Sends a request and waits for its reply; the limit is the silence before any byte, in milliseconds.
    SimReply ask(int opcode, const QByteArray& payload = {}, int limit = 3000);
    /// The same with the payload in hexadecimal.
    SimReply askHex(int opcode, const char* payload) { return ask(opcode, QByteArray::fromHex(payload)); }
    void send(const QByteArray& bytes);
    SimReply receive(int limit = 3000);
    /// Throws away what lies unread, as a host does before each request.
    void clear();
    /// The other end has closed the line.
    bool isClosed();

private:
    int m_fd;
};
