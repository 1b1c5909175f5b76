#include "support/SimProcess.h"

#include <QElapsedTimer>

static constexpr int patience = 10000; // ms

SimProcess::SimProcess(const QStringList& options, const QString& devices)
    : m_link(m_dir.filePath("line"))
{
    const QString folder = devices.isEmpty() ? VM_DATA_DIR "/devices" : devices;
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(VM_BUILD_DIR "/velmarkion-sim",
                    QStringList{"--port", m_link, "--devices", folder} + options);
    QElapsedTimer clock;
    clock.start();
    while (!output().contains("ready ") && m_process.state() != QProcess::NotRunning &&
           clock.elapsed() < patience)
        m_process.waitForReadyRead(100);
}

bool SimProcess::stop()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.terminate();
        if (!m_process.waitForFinished(patience))
            m_process.kill();
        m_process.waitForFinished(patience);
    }
    return m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
}

QByteArray SimProcess::output()
{
    m_output += m_process.readAll();
    return m_output;
}
