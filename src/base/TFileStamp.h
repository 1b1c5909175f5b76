#pragma once

#include <QByteArray>
#include <QString>

/// What a file held when it was read or written here: tells whether somebody else has written it since.
/// A value without a thread of its own.
class TFileStamp
{
public:
    /// bytes is all that the file holds now.
    void take(const QString& file, const QByteArray& bytes);
    /// The file is there and holds something else, or cannot be read any more. A file that is gone has
    /// nothing to lose, and neither a device nor a pipe has a content to compare.
    bool isOutdated() const;

private:
    QString m_file; ///< absolute; empty when nothing was taken
    qint64 m_size = 0;
    QByteArray m_hash;
};
