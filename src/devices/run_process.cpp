#include "devices/run_process.h"

#include <QCoreApplication>
#include <QProcess>

void runCommandLine(const QString& line, int ms, QObject* owner)
{
    QStringList arguments = QProcess::splitCommand(line);
    if (arguments.isEmpty())
        return;
    auto* process = new QProcess(owner);
    process->setWorkingDirectory(QCoreApplication::applicationDirPath());
    // A talkative program would block on a full pipe, or mix its text into ours.
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    const QString program = arguments.takeFirst();
    process->start(program, arguments, QIODevice::ReadWrite);
    if (process->waitForFinished(ms) || process->state() == QProcess::NotRunning) {
        delete process;
        return;
    }
    // A QProcess kills its program when it is destroyed, so it must outlive the command.
    process->setParent(nullptr);
    QObject::connect(process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), process,
                     &QObject::deleteLater);
    process->moveToThread(QCoreApplication::instance()->thread());
}
