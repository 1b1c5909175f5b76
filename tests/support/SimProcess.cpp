#include "support/SimProcess.h"

#include <QElapsedTimer>

namespace {

constexpr int patience = 10000; // ms

} // namespace

SimProcess::SimProcess(const QStringList& options, const QString& devices)
    : m_link(m_dir.filePath(QStringLiteral("line")))
{
    const QString folder = devices.isEmpty() ? QStringLiteral(VM_DATA_DIR "/devices") : devices;
    QStringList arguments{QStringLiteral("--port"), m_link, QStringLiteral("--devices"), folder};
    arguments += options;
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(QStringLiteral(VM_BUILD_DIR "/velmarkion-sim"), arguments);
    m_ready = waitForReady();
}

SimProcess::~SimProcess()
{
    stop();
}

bool SimProcess::waitForReady()
{
    QElapsedTimer clock;
    clock.start();
    while (!output().contains("ready ") && m_process.state() != QProcess::NotRunning &&
           clock.elapsed() < patience)
        m_process.waitForReadyRead(100);
    return output().contains("ready ");
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
