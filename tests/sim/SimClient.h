#pragma once

#include <QByteArray>
#include <QString>

/// A host that knows the wire protocol and nothing else, written for these tests alone.
class SimClient
{
public:
    explicit SimClient(const QString& path);
    ~SimClient();
    SimClient(const SimClient&) = delete;
    SimClient& operator=(const SimClient&) = delete;

    /// Exchanges lines of PeerLine, with commas between them; gives the first one that was answered
    /// otherwise, and how, and nothing when all is well. SPI, AVR and I2C select a chip of that family.
    QString play(QString lines);
    void send(const QByteArray& bytes);
    /// One whole frame, or the bytes up to a silence of so many milliseconds.
    QByteArray receive(int silence = 3000);
    /// Throws away what lies unread, as a host does before each request.
    void clear();
    /// The other end has closed the line.
    bool isClosed();

private:
    int m_fd;
};
