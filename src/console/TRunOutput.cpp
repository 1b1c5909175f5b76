#include "console/TRunOutput.h"

#include "console/print.h"
#include "exec/TLogText.h"

#include <QTime>

#include <unistd.h>

namespace {

constexpr int red = 31;
constexpr int green = 32;
constexpr int amber = 33;

/// A terminal that the user has not asked to stay without colours.
bool takesColors()
{
    return isatty(STDOUT_FILENO) == 1 && qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb";
}

} // namespace

TRunOutput::TRunOutput(bool asEvents)
    : m_asEvents(asEvents)
    , m_isColoured(takesColors())
{
}

QString TRunOutput::coloured(const QString& text, TCodeExec code, bool isStopped)
{
    if (code != ceSuccess && code != ceFailed)
        return text;
    const int color = code == ceFailed ? red : isStopped ? amber : green;
    return QStringLiteral("\x1B[%1m%2\x1B[0m").arg(QString::number(color), text);
}

void TRunOutput::addConfig(int id_cfg)
{
    m_configs.insert(id_cfg);
}

void TRunOutput::line(const QString& config, TCodeExec code, const QString& text1, const QString& text2)
{
    if (m_asEvents) {
        printOut(jsonLine({{"event", "line"},
                           {"config", config},
                           {"code", static_cast<int>(code)},
                           {"text1", text1},
                           {"text2", text2}}));
        return;
    }
    QString text = printable(TLogText::plain(code, text1, text2, QTime::currentTime()), "\n\t");
    if (m_configs.size() > 1) {
        const QString prefix = QStringLiteral("[%1] ").arg(printable(config));
        text = prefix + text.replace(QLatin1Char('\n'), QLatin1Char('\n') + prefix);
    }
    const bool isStopped = code == ceSuccess && m_stopped.remove(config);
    if (m_isColoured)
        text = coloured(text, code, isStopped);
    m_progress.clear();
    printOut((text + QLatin1Char('\n')).toUtf8());
    m_progress.draw();
}

void TRunOutput::stopped(const QString& config)
{
    m_stopped.insert(config);
}

void TRunOutput::progress(const QString& config, int percent)
{
    if (m_asEvents)
        printOut(jsonLine({{"event", "progress"}, {"config", config}, {"percent", percent}}));
    else
        m_progress.set(config, percent);
}

void TRunOutput::status(const QString& config, int status)
{
    if (m_asEvents)
        printOut(jsonLine({{"event", "status"}, {"config", config}, {"status", status}}));
    else if (!isActive(status))
        m_progress.set(config, 0);
}

void TRunOutput::note(const QString& text)
{
    m_progress.clear();
    printError(text);
    m_progress.draw();
}

void TRunOutput::end(int exitCode)
{
    if (m_asEvents)
        printOut(jsonLine({{"event", "end"}, {"exit", exitCode}}));
}
