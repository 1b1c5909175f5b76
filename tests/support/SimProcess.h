#pragma once

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/// The simulated programmer as a process, on a link in a temporary folder of its own. Ends with the
/// object. Several may run side by side.
class SimProcess
{
public:
    /// Starts it with these options ("--chip", "W25Q64", ...) and waits until it is ready; devices is the
    /// folder of description files, empty for the shipped ones. isReady() tells how that went.
    explicit SimProcess(const QStringList& options = {}, const QString& devices = QString());
    ~SimProcess() { stop(); }
    Q_DISABLE_COPY(SimProcess)

    bool isReady() const { return m_output.contains("ready "); }
    /// The port to open.
    QString path() const { return m_link; }
    /// Its number, for signals.
    pid_t id() const { return static_cast<pid_t>(m_process.processId()); }
    /// Asks it to end (an image is written then) and waits; true when it ended well.
    bool stop();
    /// All that it has printed on both channels, for the message of a failing test.
    QByteArray output();

private:
    QTemporaryDir m_dir;
    QString m_link;
    QProcess m_process;
    QByteArray m_output;
};
