#pragma once

#include "base/types.h"

#include <QList>
#include <QString>

class QTime;

/// How a log event reads: the words, stamps and indents of the log, without any way of showing them.
/// Follows the settings of the log. Main thread.
class TLogText
{
public:
    /// Which of the log's colours a piece of text has.
    enum class Color {
        Time,
        Command,
        Param,
        Text,
        Work,
        Result,
        Success,
        Failed,
        Stopped ///< of no kind of event: in the place of Success where the user has stopped the run
    };

    struct Piece
    {
        Color color;
        QString text; ///< may contain line breaks
    };

    /// The pieces of a new paragraph, one behind the other; none for a code that is no event.
    static QList<Piece> paragraph(TCodeExec code, const QString& text1, const QString& text2,
                                  const QTime& time);
    /// The same as one text.
    static QString plain(TCodeExec code, const QString& text1, const QString& text2, const QTime& time);
};
