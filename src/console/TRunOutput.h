#pragma once

#include "base/types.h"
#include "console/TProgressLine.h"

#include <QSet>
#include <QString>

/// Where the console shows runs: the log as text with the progress at the foot of a terminal, or events
/// as lines of JSON. Main thread.
class TRunOutput
{
public:
    explicit TRunOutput(bool asEvents);

    /// A text in the colour of its line for a terminal: how a run has ended is coloured, nothing else.
    static QString coloured(const QString& text, TCodeExec code, bool isStopped);

    /// A configuration takes part; from the second on, lines of the log begin with its name.
    void addConfig(int id_cfg);
    void line(const QString& config, TCodeExec code, const QString& text1, const QString& text2);
    /// The closing line of the configuration, which follows, is that of a run that the user has stopped.
    void stopped(const QString& config);
    void progress(const QString& config, int percent);
    void status(const QString& config, int status);
    /// A word to the user on standard error, above the progress.
    void note(const QString& text);
    /// The last line.
    void end(int exitCode);

private:
    const bool m_asEvents;
    const bool m_isColoured;
    QSet<int> m_configs;
    QSet<QString> m_stopped; ///< configurations whose closing line is still to come
    TProgressLine m_progress;
};
