#include "exec/TLogText.h"

#include "base/TLang.h"
#include "settings/TAppData.h"

#include <QTime>

namespace {

using Color = TLogText::Color;
using Piece = TLogText::Piece;

/// The time with the blank behind it; an empty text while times are not shown.
QString stamp(const QTime& time)
{
    const TAppData& settings = appData();
    if (!settings.ExecLogShowTime)
        return QString();
    return time.toString(settings.ExecLogShowTime_ms ? QStringLiteral("hh:mm:ss.zzz ")
                                                     : QStringLiteral("hh:mm:ss "));
}

QList<Piece> stamped(const QTime& time, Color color, const QString& text)
{
    return {{Color::Time, stamp(time)}, {color, text}};
}

/// As wide as the stamp.
QString indented(const QString& text)
{
    const TAppData& settings = appData();
    const int width = !settings.ExecLogShowTime ? 0 : settings.ExecLogShowTime_ms ? 13 : 9;
    return QString(width, QLatin1Char(' ')) + text;
}

QString failureBox(const QString& reason)
{
    const QString rule(60, QLatin1Char('='));
    return QStringLiteral("%1\n%2\n%3\n%4\n").arg(langText(Text::RunFailed), rule, reason, rule);
}

} // namespace

QList<TLogText::Piece> TLogText::paragraph(TCodeExec code, const QString& text1, const QString& text2,
                                           const QTime& time)
{
    switch (code) {
    case ceCmdBegin: {
        QList<Piece> pieces = stamped(time, Color::Command, text1);
        if (!text2.isEmpty())
            pieces.append({Color::Param, QStringLiteral(" (%1)").arg(text2)});
        return pieces;
    }
    case ceTextTime:
        return stamped(time, Color::Text, text1);
    case ceText:
        return {{Color::Text, indented(text1)}};
    case ceWork:
        return {{Color::Work, text1}};
    case ceResult:
        return {{Color::Result, indented(text1)}};
    case ceSuccess:
        return stamped(time, Color::Success, text1);
    case ceFailed:
        return stamped(time, Color::Failed, failureBox(text1));
    }
    return {};
}

QString TLogText::plain(TCodeExec code, const QString& text1, const QString& text2, const QTime& time)
{
    QString text;
    for (const Piece& piece : paragraph(code, text1, text2, time))
        text += piece.text;
    return text;
}
