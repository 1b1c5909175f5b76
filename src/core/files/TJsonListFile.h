#pragma once

#include "base/TFileStamp.h"

#include <QJsonObject>
#include <QString>
#include <QStringList>

class QJsonArray;

/// What a project list and the list of lists have in common: a JSON object with an array "list", read with
/// a parser and written line by line. Its other keys are kept. Main thread.
class TJsonListFile
{
public:
    enum Result {
        Ok,    ///< read
        Empty, ///< the file has no byte in it
        Failed ///< not read or no list; errorText() tells why
    };

    QString errorText() const;
    /// Somebody else has written the file since it was read or written here.
    bool isOutdated() const;

protected:
    /// lineEnd closes each line that is written.
    explicit TJsonListFile(QLatin1Char lineEnd);

    [[nodiscard]] Result readList(const QString& file, QJsonArray& list);
    /// Writes the file, safely, unless it holds these lines already; a line for each entry, without commas.
    [[nodiscard]] bool writeList(const QString& file, const QStringList& entries);
    QByteArray bytesOf(const QStringList& entries) const;

private:
    const QLatin1Char m_lineEnd;
    QJsonObject m_others; ///< of the file, but the list
    TFileStamp m_stamp;
    QString m_errorText;
};
