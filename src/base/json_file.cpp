#include "base/json_file.h"

#include "base/TLang.h"
#include "base/helpers.h"
#include "base/platform.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>

#include <algorithm>

namespace {

constexpr qint64 maxFileSize = 256LL * 1024 * 1024;
// The parser takes 16 bytes and more for a value that may be one character long in the file.
constexpr qint64 maxValues = 4LL * 1000 * 1000;

QString parserText(QJsonParseError::ParseError code)
{
    QJsonParseError error;
    error.error = code;
    return error.errorString();
}

qint64 countValues(const QByteArray& bytes)
{
    return std::count_if(bytes.cbegin(), bytes.cend(),
                         [](char c) { return c == ',' || c == '[' || c == '{' || c == ':'; });
}

QString escapedControl(QChar c)
{
    switch (c.unicode()) {
    case '\b':
        return QStringLiteral("\\b");
    case '\f':
        return QStringLiteral("\\f");
    case '\n':
        return QStringLiteral("\\n");
    case '\r':
        return QStringLiteral("\\r");
    case '\t':
        return QStringLiteral("\\t");
    default:
        return QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
    }
}

} // namespace

QString jsonEscaped(const QString& s)
{
    const auto isSpecial = [](QChar c) {
        return c < QLatin1Char(' ') || c == QLatin1Char('"') || c == QLatin1Char('\\');
    };
    if (std::none_of(s.cbegin(), s.cend(), isSpecial))
        return s;
    QString text;
    text.reserve(s.size() + 16);
    for (const QChar c : s) {
        if (c < QLatin1Char(' '))
            text += escapedControl(c);
        else if (isSpecial(c))
            text += QLatin1Char('\\') + QString(c);
        else
            text += c;
    }
    return text;
}

QString jsonPair(const QString& key, const QString& value)
{
    return QStringLiteral("\"%1\": \"%2\"").arg(jsonEscaped(key), jsonEscaped(value));
}

QStringList jsonMembers(const QJsonObject& object)
{
    QStringList members;
    for (auto it = object.begin(); it != object.end(); ++it) {
        // A document holds a list or an object: the value stands between the brackets of a list.
        const QByteArray list = QJsonDocument(QJsonArray{it.value()}).toJson(QJsonDocument::Compact);
        members.append(QStringLiteral("\"%1\": %2")
                           .arg(jsonEscaped(it.key()), QString::fromUtf8(list.mid(1, list.size() - 2))));
    }
    return members;
}

QJsonObject otherMembers(const QJsonObject& object, std::initializer_list<QLatin1String> known)
{
    QJsonObject others = object;
    for (const QLatin1String& key : known)
        others.remove(key);
    return others;
}

bool readWholeFile(const QString& file, QByteArray& bytes, QString& error)
{
    // A named pipe waits for its other end without a limit; one that the shell has opened has that end.
    if (platform::isPipe(file) && !file.startsWith(QLatin1String("/dev/"))) {
        error = langText(Text::PipeNotPlain);
        return false;
    }
    QFile device(file);
    if (!device.open(QIODevice::ReadOnly)) {
        error = device.errorString();
        return false;
    }
    // The size of a device or pipe is 0: what counts is what can be read.
    bytes = device.size() > maxFileSize ? QByteArray() : device.read(maxFileSize + 1);
    if (device.error() != QFileDevice::NoError) {
        error = device.errorString();
        return false;
    }
    if (device.size() > maxFileSize || bytes.size() > maxFileSize) {
        bytes.clear();
        error = parserText(QJsonParseError::DocumentTooLarge);
        return false;
    }
    return true;
}

bool parseJsonObject(const QByteArray& bytes, QJsonObject& object, QString& error)
{
    if (countValues(bytes) > maxValues) {
        error = parserText(QJsonParseError::DocumentTooLarge);
        return false;
    }
    QJsonParseError result;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &result);
    if (result.error != QJsonParseError::NoError) {
        error = result.errorString();
        return false;
    }
    if (!document.isObject()) {
        error = parserText(QJsonParseError::IllegalValue);
        return false;
    }
    object = document.object();
    return true;
}

bool writeFileIfChanged(const QString& file, const QByteArray& bytes, QString& error)
{
    QFile device(file);
    if (device.open(QIODevice::ReadOnly) && device.size() == bytes.size() && device.readAll() == bytes)
        return true;
    device.close();
    return writeFileSafely(file, bytes, error);
}
