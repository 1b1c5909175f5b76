#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// The progress of all runs on the last line of a terminal, drawn on standard error. Nothing where that
/// is no terminal.
class TProgressLine
{
public:
    TProgressLine();

    /// 0 takes the run off the line.
    void set(const QString& name, int percent);
    /// Wipes the line, so that other text can be written; draw() brings it back.
    void clear();
    void draw();

    /// The line for runs and their percent, not longer than columns.
    static QString text(const QMap<QString, int>& percents, int columns);

private:
    bool m_isTerminal;
    bool m_isDrawn = false;
    QMap<QString, int> m_percents;
};
