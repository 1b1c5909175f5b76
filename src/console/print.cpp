#include "console/print.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cstdio>

namespace {

void writeAll(FILE* stream, const QByteArray& bytes)
{
    fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    fflush(stream);
}

bool breaksLines(QChar c)
{
    const QChar::Category category = c.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

} // namespace

void printOut(const QByteArray& bytes)
{
    writeAll(stdout, bytes);
}

void printError(const QString& text)
{
    writeAll(stderr, QStringLiteral("velmarkion: %1\n").arg(text).toUtf8());
}

QString printable(const QString& text, const char* kept)
{
    QString clean = text;
    for (QChar& c : clean) {
        if (breaksLines(c) && !QLatin1String(kept).contains(c))
            c = QLatin1Char(' ');
    }
    return clean;
}

QByteArray jsonLine(std::initializer_list<std::pair<const char*, QJsonValue>> members)
{
    QByteArray line;
    for (const auto& [name, value] : members) {
        // A document is an array or an object; the brackets of an array of one come off again.
        const QByteArray text = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
        line += line.isEmpty() ? "{\"" : ",\"";
        line += name + QByteArray("\":") + text.mid(1, text.size() - 2);
    }
    return line + "}\n";
}
