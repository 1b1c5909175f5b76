#pragma once

#include "console/TProgressLine.h"
#include "core/types.h"

#include <QSet>
#include <QString>

/// Where the console shows runs: the log as text with the progress at the foot of a terminal, or events
/// as lines of JSON. Main thread.
class TRunOutput
{
public:
    explicit TRunOutput(bool asEvents);

    /// A configuration takes part; from the second on, lines of the log begin with its name.
    void addConfig(int id_cfg);
    void line(const QString& config, TCodeExec code, const QString& text1, const QString& text2);
    void progress(const QString& config, int percent);
    void status(const QString& config, int status);
    /// A word to the user on standard error, above the progress.
    void note(const QString& text);
    /// The last line.
    void end(int exitCode);

private:
    const bool m_asEvents;
    QSet<int> m_configs;
    TProgressLine m_progress;
};
