#pragma once

#include <QString>

/// What a command took from its data file and what it left there, for a line of the log.
class TFileTally
{
public:
    /// n bytes from addr on were taken; addresses may go up only.
    void take(qint64 addr, qint64 n);
    /// n bytes were not.
    void leave(qint64 n) { m_left += n; }
    /// Anything was taken.
    bool hasTaken() const { return m_taken > 0; }
    /// What the user has to be told about file; empty when the whole file was taken.
    QString remark(const QString& file) const;

private:
    qint64 m_taken = 0;
    qint64 m_left = 0;
    qint64 m_first = 0;
    qint64 m_last = 0;
};
