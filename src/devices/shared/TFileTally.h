#pragma once

#include <QStringList>

/// What a command took from its data file and what it left there, for a line of the log.
class TFileTally
{
public:
    /// n bytes from addr on were taken; addresses may go up only.
    void take(qint64 addr, qint64 n);
    /// n bytes were not.
    void leave(qint64 n) { m_left += n; }
    /// The file has come to an end that may be a cut one, and the range goes on to last.
    void endBefore(qint64 last) { m_wanted = last; }
    /// Anything was taken.
    bool hasTaken() const { return m_taken > 0; }
    /// What the user has to be told about file; none when all of it was taken and nothing was missing.
    QStringList remarks(const QString& file) const;

private:
    qint64 m_taken = 0;
    qint64 m_left = 0;
    qint64 m_first = 0;
    qint64 m_last = 0;
    qint64 m_wanted = 0; ///< last address that the file should have reached; 0 when none is known
};
